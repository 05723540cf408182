#include "app/menu_table.h"

namespace ferrolund::app {

const std::vector<MenuItem>& MainMenu() {
    // name, parent, caption, shortcut, language text, hidden, disabled, handler
    static const std::vector<MenuItem> items = {
        {"mnuFileS", "", "&Files", "", 1, false, false, ""},
        {"mnuOpenRS", "mnuFileS", "Open TS-Classic File", "Ctrl+O", 2, false, false, "mnuOpenRS_Click"},
        {"mnuSaveRS", "mnuFileS", "SaveTS-Classic File", "Ctrl+S", 3, false, false, "mnuSaveRS_Click"},
        {"mnuItSaveAs", "mnuFileS", "Save TS-Classic File As", "", 278, false, false, "mnuItSaveAs_Click"},
        {"mnu2bin", "mnuFileS", "Open 2nd Window", "", 279, false, false, "mnu2bin_Click"},
        {"mnuFile2", "mnuFileS", "Open 2nd .bin file", "", 280, true, false, "mnuFile2_Click"},
        {"mnuXML", "mnuFileS", "Open .xml/.proxyxml file", "Ctrl+M", 4, false, false, "mnuXML_Click"},
        {"mnuSavexml", "mnuFileS", "Save .xml file", "", 5, false, false, "mnuSavexml_Click"},
        {"mnuSaveAs", "mnuFileS", "Save .xml As", "Ctrl+G", 6, false, false, "mnuSaveAs_Click"},
        {"mnuOpenTex", "mnuFileS", "Open .TgPcDx Texture Files", "Ctrl+T", 7, false, false, "mnuOpenTex_Click"},
        {"mnuFindAllAP", "mnuFileS", "Find all .AP files - full detail", "", 281, false, false, "mnuFindAllAP_Click"},
        {"mnuMC", "mnuFileS", "Find all MainContent.ap files", "", 282, false, false, "mnuMC_Click"},
        {"mnuSce", "mnuFileS", "Find all Scenario.ap files", "", 283, false, false, "mnuSce_Click"},
        {"mnuFA", "mnuFileS", "Find all .ap files in Assets", "", 284, false, false, "mnuFA_Click"},
        {"mnuAP", "mnuFileS", "Open .ap FileManager", "", 285, false, false, "mnuAP_Click"},
        {"mnuListAP", "mnuFileS", "List files in .ap", "", 286, true, false, ""},
        {"mnuPrint", "mnuFileS", "Print", "Ctrl+P", 8, false, false, "mnuPrint_Click"},
        {"mnuBackup", "mnuFileS", "Backup Train Simulator 2019", "Ctrl+B", 287, true, false, "mnuBackup_Click"},
        {"mnuInc", "mnuFileS", "Incremental Backup", "Ctrl+I", 288, true, false, ""},
        {"mnuExit", "mnuFileS", "Exit", "Ctrl+E", 9, false, false, "mnuExit_Click"},

        {"mnuSearch", "", "Search and Replace", "", 10, false, false, ""},
        {"mnuFind", "mnuSearch", "&Find", "Ctrl+F", 11, false, false, "mnuFind_Click"},
        {"mnuFindMult", "mnuSearch", "Find in Multiple Files", "", 12, false, false, "mnuFindMult_Click"},

        {"mnuConv", "", "Graphics Tools", "", 13, false, false, ""},
        {"mnuDDS", "mnuConv", "Convert .TgPcDx to .dds", "", 14, false, false, "mnuDDS_Click"},
        {"mnuView", "mnuConv", "View .dds File", "", 15, false, false, "mnuView_Click"},
        {"mnuEditDDS", "mnuConv", "Edit .dds File", "", 16, false, false, "mnuEditDDS_Click"},
        {"mnuDDStoKrs", "mnuConv", "Convert .dds to .TgPcDx", "", 17, false, false, "mnuDDStoKrs_Click"},
        {"mnuEmpt", "mnuConv", "Empty TempDDS Folder", "", 0, false, false, "mnuEmpt_Click"},
        {"mnuRSBT", "mnuConv", "Run RSBinTool", "", 289, false, false, "mnuRSBT_Click"},
        {"mnubar", "mnuConv", "-", "", 0, false, false, ""},
        {"mnuTgpcdx", "mnuConv", "TgPcDx/DDS Viewer", "", 18, false, false, "mnuTgpcdx_Click"},
        {"mnuTime", "mnuConv", "Convert RW time to hrs/mins", "", 19, false, false, "mnuTime_Click"},

        {"mnuTools", "", "Route Building Tools", "", 20, false, false, ""},
        {"mnuDelRoute", "mnuTools", "Check Routes or Scenarios", "", 21, false, false, "mnuDelRoute_Click"},
        {"mnuERP", "mnuTools", "Extract RouteProperties.xml", "", 22, false, false, "mnuERP_Click"},
        {"mnuIRP", "mnuTools", "Index Route Properties", "", 23, false, false, "mnuIRP_Click"},
        {"mnuAddProv", "mnuTools", "Edit Providers", "", 24, false, false, "mnuAddProv_Click"},
        {"mnuDRS", "mnuTools", "Direct Route Setup", "", 27, false, false, "mnuDRS_Click"},
        {"mnuRouteInfo", "mnuTools", "Add Route Description", "", 25, true, false, ""},
        {"mnuMap", "mnuTools", "Add Route Loading Picture", "", 26, true, false, ""},
        {"mnuMarkers", "mnuTools", "Marker Files", "", 30, false, false, ""},
        {"mnuMultiMarker", "mnuMarkers", "Convert  Marker files", "", 31, false, false, "mnuMultiMarker_Click"},
        {"mnuMkrDCSV", "mnuMarkers", "Convert Markers Direct to DCSV", "", 32, false, false, "mnuMkrDCSV_Click"},
        {"mnuCSV2DCSV", "mnuMarkers", "Convert .csv Direct to DCSV", "", 33, false, false, "mnuCSV2DCSV_Click"},
        {"mnuMkRW", "mnuMarkers", "Set Markers from WorldEditor", "", 34, false, false, "mnuMkRW_Click"},
        {"mnuDeveloper", "mnuTools", "Set Up Developer Folders", "", 35, false, false, "mnuDeveloper_Click"},
        {"mnuDevFolders", "mnuTools", "Set Up Sub- Folders", "", 36, true, false, ""},
        {"mnuIdent", "mnuTools", "Identify Object", "", 28, false, false, "mnuIdent_Click"},
        {"mnuUUID", "mnuTools", "Generate GUID/UUID", "", 29, false, false, "mnuUUID_Click"},

        {"mnuLists", "", "Assets/Content", "", 37, false, false, ""},
        {"mnuAE", "mnuLists", "Asset Editor", "", 290, false, false, "mnuAE_Click"},
        {"mnuAPEdit", "mnuLists", "AP Assets Editor", "", 317, false, false, "mnuAPEdit_Click"},
        {"mnuCnt", "mnuLists", "Content Editor", "", 318, false, false, "mnuCnt_Click"},
        {"mnuAPCont", "mnuLists", "AP Content Editor", "", 319, false, false, "mnuAPCont_Click"},

        {"mnuScen", "", "Scenarios", "", 320, false, false, ""},
        {"mnuClearTemp", "mnuScen", "Clear Railworks\\Temp", "", 322, false, false, "mnuClearTemp_Click"},
        {"mnuKickstart", "mnuScen", "Edit Scenarios", "", 38, false, false, "mnuKickstart_Click"},
        {"mnuESP", "mnuScen", "Extract ScenarioProperties.xml", "", 323, false, false, "mnuESP_Click"},
        {"mnuSDB", "mnuScen", "SDBCache Operations", "", 324, false, false, "mnuSDB_Click"},
        {"mnuEC", "mnuScen", "Compare Consists", "", 325, false, false, "mnuEC_Click"},
        {"mnuBuildCon", "mnuScen", "Build or Edit Consists", "", 326, false, false, "mnuBuildCon_Click"},
        {"mnuListCon", "mnuScen", "List Consists", "", 327, false, false, "mnuListCon_Click"},
        {"mnuRollingStock", "mnuScen", "View Rolling-stock list", "", 328, false, false, "mnuRollingStock_Click"},

        {"mnuQD", "", "QD Files", "", 329, false, false, ""},
        {"mnuBuildQD", "mnuQD", "Build New QD Consists or Fragments", "", 330, false, false, "mnuBuildQD_Click"},
        {"mnuCheckQD", "mnuQD", "Check or Edit existing  QD consists or fragments", "", 331, false, false,
         "mnuCheckQD_Click"},
        {"mnuQDbits", "mnuQD", "Batch Edit QD Scenarios", "", 332, false, false, "mnuQDbits_Click"},

        {"mnuEB", "", "Packaging", "", 39, false, false, ""},
        {"mnuPackAss", "mnuEB", "Package Assets", "", 40, false, false, "mnuPackAss_Click"},
        {"mnuReskin", "mnuEB", "Package Reskins", "", 41, false, false, "mnuReskin_Click"},
        {"mnuPack", "mnuEB", "Package Route", "", 42, false, false, "mnuPack_Click"},
        {"mnuPackSce", "mnuEB", "Package Scenarios", "", 43, false, false, "mnuPackSce_Click"},

        {"mnuReports", "", "Reports", "", 44, false, false, ""},
        {"mnuCSV", "mnuReports", "Open .csv Reports", "", 45, false, false, "mnuCSV_Click"},
        {"mnuExcel", "mnuReports", "Open Excel Reports", "", 333, false, false, "mnuExcel_Click"},
        {"mnuTxt", "mnuReports", "Open Reports", "", 46, false, false, "mnuTxt_Click"},

        {"mnuOpt", "", "Options", "", 47, false, false, ""},
        {"mnuClear", "mnuOpt", "Clear Screen", "", 48, false, false, "mnuClear_Click"},
        {"mnuCTF", "mnuOpt", "Clear Temp Files", "", 49, false, false, "mnuCTF_Click"},
        {"mnuDont", "mnuOpt", "Don't ask on closing down", "", 334, false, false, "mnuDont_Click"},
        {"mnuNewVer", "mnuOpt", "Don't advise of new version on StartUp", "", 335, true, true, ""},
        {"mnuReadWrite", "mnuOpt", "Make all RW files Read/Write", "", 50, false, false, "mnuReadWrite_Click"},
        {"mnuSelRW", "mnuOpt", "Make files in Selected folder Read/Write", "", 336, false, false, "mnuSelRW_Click"},
        {"mnuNoMarkers", "mnuOpt", "No Markers in Scenario Editor", "", 337, true, true, ""},
        {"mnuAcro", "mnuOpt", "PDF Reader Path", "", 51, false, false, "mnuAcro_Click"},
        {"mnuQDPreload", "mnuOpt", "PreLoad Folder", "", 52, false, false, "mnuQDPreload_Click"},
        {"mnuRWPath", "mnuOpt", "Railworks.exe  Path", "", 53, false, false, "mnuRWPath_Click"},
        {"mnuRWB", "mnuOpt", "Railworks  Backup Path", "", 367, true, false, ""},
        {"mnuSP", "mnuOpt", "Register SuperPicture2.ocx", "", 368, false, false, "mnuSP_Click"},
        {"mnuLang", "mnuOpt", "Select Language", "", 54, false, false, "mnuLang_Click"},
        {"mnuEdMax", "mnuOpt", "Start with Editor Maximised", "", 369, false, false, "mnuEdMax_Click"},
        {"mnuIRF", "mnuOpt", "Texture Editor Path", "", 55, false, false, "mnuIRF_Click"},
        {"mnuViewer", "mnuOpt", "Viewer Path", "", 56, false, false, "mnuViewer_Click"},
        {"mnuPaths", "mnuOpt", "View All Paths", "", 386, false, false, "mnuPaths_Click"},
        {"mnuWarn", "mnuOpt", "Warn if Edit not saved", "", 387, false, false, "mnuWarn_Click"},

        {"mnuHelp", "", "Help", "", 57, false, false, ""},
        {"mnuContents", "mnuHelp", "Contents", "", 58, false, false, "mnuContents_Click"},
        {"mnuAbout", "mnuHelp", "About", "", 59, false, false, "mnuAbout_Click"},
        {"mnuWeb", "mnuHelp", "Go to My Web Site", "", 60, false, false, "mnuWeb_Click"},
        {"mnuEmail", "mnuHelp", "Send me Email", "", 388, false, false, "mnuEmail_Click"},

        {"mnuPop1", "", "CopyMenu", "", 0, true, false, ""},
        {"mnuCopy", "mnuPop1", "Copy", "Ctrl+C", 389, false, false, "mnuCopy_Click"},
        {"mnuCut", "mnuPop1", "Cut", "Ctrl+X", 402, false, false, "mnuCut_Click"},
        {"mnuPaste", "mnuPop1", "Paste", "Ctrl+V", 403, false, false, "mnuPaste_Click"},
        {"mnuDelete", "mnuPop1", "Delete", "", 404, false, false, "mnuDelete_Click"},
        {"mnuSelAll", "mnuPop1", "Select All", "Ctrl+A", 405, false, false, "mnuSelAll_Click"},
    };
    return items;
}

const MenuItem* FindMenuItem(std::string_view name) {
    for (const auto& item : MainMenu()) {
        if (item.name == name) return &item;
    }
    return nullptr;
}

}  // namespace ferrolund::app
