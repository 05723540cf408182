#include "app/menu_table.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "app/language_table.h"
#include "tools/files.h"

namespace ferrolund::app {
namespace {

// The menu as users know it, one item a line: name|caption|shortcut|H for hidden.
const char* const kExpectedMenu = R"(mnuFileS|&Files||
mnuOpenRS|Open TS-Classic File|Ctrl+O|
mnuSaveRS|SaveTS-Classic File|Ctrl+S|
mnuItSaveAs|Save TS-Classic File As||
mnu2bin|Open 2nd Window||
mnuFile2|Open 2nd .bin file||H
mnuXML|Open .xml/.proxyxml file|Ctrl+M|
mnuSavexml|Save .xml file||
mnuSaveAs|Save .xml As|Ctrl+G|
mnuOpenTex|Open .TgPcDx Texture Files|Ctrl+T|
mnuFindAllAP|Find all .AP files - full detail||
mnuMC|Find all MainContent.ap files||
mnuSce|Find all Scenario.ap files||
mnuFA|Find all .ap files in Assets||
mnuAP|Open .ap FileManager||
mnuListAP|List files in .ap||H
mnuPrint|Print|Ctrl+P|
mnuBackup|Backup Train Simulator 2019|Ctrl+B|H
mnuInc|Incremental Backup|Ctrl+I|H
mnuExit|Exit|Ctrl+E|
mnuSearch|Search and Replace||
mnuFind|&Find|Ctrl+F|
mnuFindMult|Find in Multiple Files||
mnuConv|Graphics Tools||
mnuDDS|Convert .TgPcDx to .dds||
mnuView|View .dds File||
mnuEditDDS|Edit .dds File||
mnuDDStoKrs|Convert .dds to .TgPcDx||
mnuEmpt|Empty TempDDS Folder||
mnuRSBT|Run RSBinTool||
mnubar|-||
mnuTgpcdx|TgPcDx/DDS Viewer||
mnuTime|Convert RW time to hrs/mins||
mnuTools|Route Building Tools||
mnuDelRoute|Check Routes or Scenarios||
mnuERP|Extract RouteProperties.xml||
mnuIRP|Index Route Properties||
mnuAddProv|Edit Providers||
mnuDRS|Direct Route Setup||
mnuRouteInfo|Add Route Description||H
mnuMap|Add Route Loading Picture||H
mnuMarkers|Marker Files||
mnuMultiMarker|Convert  Marker files||
mnuMkrDCSV|Convert Markers Direct to DCSV||
mnuCSV2DCSV|Convert .csv Direct to DCSV||
mnuMkRW|Set Markers from WorldEditor||
mnuDeveloper|Set Up Developer Folders||
mnuDevFolders|Set Up Sub- Folders||H
mnuIdent|Identify Object||
mnuUUID|Generate GUID/UUID||
mnuLists|Assets/Content||
mnuAE|Asset Editor||
mnuAPEdit|AP Assets Editor||
mnuCnt|Content Editor||
mnuAPCont|AP Content Editor||
mnuScen|Scenarios||
mnuClearTemp|Clear Railworks\Temp||
mnuKickstart|Edit Scenarios||
mnuESP|Extract ScenarioProperties.xml||
mnuSDB|SDBCache Operations||
mnuEC|Compare Consists||
mnuBuildCon|Build or Edit Consists||
mnuListCon|List Consists||
mnuRollingStock|View Rolling-stock list||
mnuQD|QD Files||
mnuBuildQD|Build New QD Consists or Fragments||
mnuCheckQD|Check or Edit existing  QD consists or fragments||
mnuQDbits|Batch Edit QD Scenarios||
mnuEB|Packaging||
mnuPackAss|Package Assets||
mnuReskin|Package Reskins||
mnuPack|Package Route||
mnuPackSce|Package Scenarios||
mnuReports|Reports||
mnuCSV|Open .csv Reports||
mnuExcel|Open Excel Reports||
mnuTxt|Open Reports||
mnuOpt|Options||
mnuClear|Clear Screen||
mnuCTF|Clear Temp Files||
mnuDont|Don't ask on closing down||
mnuNewVer|Don't advise of new version on StartUp||H
mnuReadWrite|Make all RW files Read/Write||
mnuSelRW|Make files in Selected folder Read/Write||
mnuNoMarkers|No Markers in Scenario Editor||H
mnuAcro|PDF Reader Path||
mnuQDPreload|PreLoad Folder||
mnuRWPath|Railworks.exe  Path||
mnuRWB|Railworks  Backup Path||H
mnuSP|Register SuperPicture2.ocx||
mnuLang|Select Language||
mnuEdMax|Start with Editor Maximised||
mnuIRF|Texture Editor Path||
mnuViewer|Viewer Path||
mnuPaths|View All Paths||
mnuWarn|Warn if Edit not saved||
mnuHelp|Help||
mnuContents|Contents||
mnuAbout|About||
mnuWeb|Go to My Web Site||
mnuEmail|Send me Email||
mnuPop1|CopyMenu||H
mnuCopy|Copy|Ctrl+C|
mnuCut|Cut|Ctrl+X|
mnuPaste|Paste|Ctrl+V|
mnuDelete|Delete||
mnuSelAll|Select All|Ctrl+A|
)";

std::vector<std::string> Split(const std::string& line, char sep) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(line);
    while (std::getline(in, part, sep)) parts.push_back(part);
    if (!line.empty() && line.back() == sep) parts.emplace_back();
    return parts;
}

TEST(MenuTable, EveryItemInOrderWithCaptionShortcutAndVisibility) {
    std::istringstream in(kExpectedMenu);
    std::string line;
    std::size_t i = 0;
    const auto& menu = MainMenu();
    while (std::getline(in, line)) {
        const auto f = Split(line, '|');
        ASSERT_EQ(f.size(), 4u) << line;
        ASSERT_LT(i, menu.size()) << "missing from the menu: " << line;
        EXPECT_EQ(menu[i].name, f[0]);
        EXPECT_EQ(menu[i].caption, f[1]) << f[0];
        EXPECT_EQ(menu[i].shortcut, f[2]) << f[0];
        EXPECT_EQ(menu[i].hidden, f[3] == "H") << f[0];
        ++i;
    }
    EXPECT_EQ(i, menu.size());
}

TEST(MenuTable, StructureIsSound) {
    std::set<std::string_view> names;
    std::set<int> texts;
    for (const auto& item : MainMenu()) {
        EXPECT_TRUE(names.insert(item.name).second) << "twice: " << item.name;
        if (!item.parent.empty()) {
            EXPECT_TRUE(names.count(item.parent)) << item.name << " before its menu";
        }
        if (item.langIndex != 0) {
            EXPECT_TRUE(texts.insert(item.langIndex).second) << item.name;
        }
        if (!item.handler.empty()) {
            EXPECT_EQ(item.handler, std::string(item.name) + "_Click");
        }
    }
    // The items that stay hidden and greyed.
    EXPECT_TRUE(FindMenuItem("mnuNewVer")->disabled);
    EXPECT_TRUE(FindMenuItem("mnuNoMarkers")->disabled);
    EXPECT_TRUE(FindMenuItem("mnuInc")->handler.empty());
    EXPECT_EQ(FindMenuItem("mnuNothing"), nullptr);
}

TEST(MenuTable, EnglishLanguageFileCarriesTheMenuCaptions) {
    const std::string path = std::string(FERROLUND_SOURCE_DIR) + "/data/Language/Lang_English.txt";
    const std::string text = tools::ReadTextFile(path);
    ASSERT_FALSE(text.empty()) << path;
    LanguageTable table;
    table.parse(text);
    for (const auto& item : MainMenu()) {
        if (item.langIndex == 0) continue;
        ASSERT_TRUE(table.text(item.langIndex)) << item.name;
        EXPECT_EQ(*table.text(item.langIndex), item.caption) << item.name << " text " << item.langIndex;
    }
}

}  // namespace
}  // namespace ferrolund::app
