#include "routes/route_maintenance.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRealRoute = "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c";

struct Maintenance {
    testing::TempFolder app;
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Maintenance() {
        ctx.appRoot = app.system();
        ctx.prefs.gameRoot = game.system();
        ctx.ui = &ui;
    }
    std::string gamePath(const std::string& relative) const { return game.system() + "\\" + relative; }
    // Writes XML text and makes it binary with the converter; false when that failed.
    bool binary(const std::string& relative, const std::string& xml) {
        const fs::path source = app.write("source.xml", xml);
        game.write(relative, "");
        return !tools::SerzConvert(ctx, source.string(), gamePath(relative), tools::SerzDirection::ToBinary);
    }
    // The real route's file, copied into the game folder; false when the test data is absent.
    bool realFile(const std::string& relative, const std::string& to) const {
        const fs::path from = testing::TestdataPath(std::string(kRealRoute) + "/" + relative);
        if (!fs::exists(from)) return false;
        fs::create_directories((game.path() / to).parent_path());
        fs::copy_file(from, game.path() / to, fs::copy_options::overwrite_existing);
        fs::permissions(game.path() / to, fs::perms::owner_write, fs::perm_options::add);
        return true;
    }
    std::vector<std::string> texts() const { return ui.texts(); }
};

// ---------------------------------------------------------------- Check ScenarioProperties

// Names in several languages, each text its own, as a real scenario holds them.
std::string Names(const std::string& what) {
    std::string names;
    for (const char* language : {"English", "French", "Italian", "German", "Spanish", "Dutch", "Polish", "Russian"})
        names += std::string("<") + language + " d:type=\"cDeltaString\">The " + what + " of a scenario, written in " +
                 language + " for the list of the route</" + language + ">\r\n";
    return names;
}

std::string PaddedProperties(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cScenarioProperties "
           "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n<DisplayName>\r\n"
           "<Localisation-cUserLocalisedString>\r\n" +
           Names("display name") + "</Localisation-cUserLocalisedString>\r\n</DisplayName>\r\n<Description>\r\n"
                                   "<Localisation-cUserLocalisedString>\r\n" +
           Names("description") + "</Localisation-cUserLocalisedString>\r\n</Description>\r\n" + body +
           "</cScenarioProperties>\r\n";
}

TEST(CheckScenarioProperties, FormatFaultsMissingFilesAndTheFinalBox) {
    struct Case {
        const char* what;
        std::string text;  // empty: no file
        bool fault;
    };
    const std::vector<Case> cases = {
        {"a sound file of real size", PaddedProperties(""), false},
        {"broken XML", PaddedProperties("<Broken>\r\n"), true},
        {"valid but far too small", "<?xml version=\"1.0\"?>\r\n<cScenarioProperties d:id=\"1\"/>\r\n", true},
        {"absent", "", false},
    };
    Maintenance m;
    std::vector<ScenarioRow> rows;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const std::string folder = "s" + std::to_string(i);
        rows.push_back({cases[i].what, "dev", folder, "R", ScenarioKind::Standard});
        if (!cases[i].text.empty())
            m.game.write("Content/Routes/R/Scenarios/" + folder + "/ScenarioProperties.xml", cases[i].text);
    }
    const PropertiesCheck check = CheckScenarioProperties(m.ctx, rows);
    EXPECT_EQ(check.checked, 3u);
    EXPECT_EQ(check.faulty, (std::vector<std::string>{"broken XML", "valid but far too small"}));
    ASSERT_EQ(check.missing.size(), 1u);
    const auto texts = m.texts();
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_TRUE(texts[0].starts_with(
        "If you saw a message regarding Line 113, there is a format\nerror in broken XML\n\n"));
    EXPECT_EQ(texts[1], "If you saw a message regarding Line 113, there is a format\nerror in valid but far too small");
    EXPECT_EQ(texts[2], check.missing[0] + "\nis missing.");
    EXPECT_TRUE(texts[2].ends_with("Scenarios\\s3\\ScenarioProperties.xml\nis missing."));
    EXPECT_EQ(texts[3], "All selected ScenarioProperties.xml checked - at least one had a format error.");
    // The scenario files themselves are untouched and no binary is left behind.
    EXPECT_EQ(m.game.read("Content/Routes/R/Scenarios/s0/ScenarioProperties.xml"), cases[0].text);
    EXPECT_FALSE(fs::exists(m.app.path() / "TempFiles" / "ScenarioProperties.bin"));
}

TEST(CheckScenarioProperties, RealScenarioIsOkAndAbortStopsBeforeTheNext) {
    Maintenance m;
    if (!m.realFile("Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/ScenarioProperties.xml",
                    "Content/Routes/R/Scenarios/real/ScenarioProperties.xml"))
        GTEST_SKIP() << "the real route of the shared test data is absent (" << FERROLUND_TESTDATA << ")";
    const std::vector<ScenarioRow> rows{{"Testiajot", "dev", "real", "R", ScenarioKind::Standard}};
    const PropertiesCheck check = CheckScenarioProperties(m.ctx, rows);
    EXPECT_TRUE(check.faulty.empty());
    EXPECT_EQ(m.texts(), std::vector<std::string>{"All selected ScenarioProperties.xml checked - all formats OK."});

    m.ui.shown.clear();
    m.ctx.abortFlag = true;
    const PropertiesCheck stopped = CheckScenarioProperties(m.ctx, rows);
    EXPECT_TRUE(stopped.aborted);
    EXPECT_EQ(stopped.checked, 0u);
    EXPECT_TRUE(m.texts().empty());
}

// ---------------------------------------------------------------- Check Route Template

std::string RouteProperties(const std::string& blueprintId) {
    return "<cRouteProperties>\r\n<InfrastructureModified d:type=\"bool\">1</InfrastructureModified>\r\n"
           "<BlueprintID>\r\n<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n<BlueprintSetID>\r\n"
           "<iBlueprintLibrary-cBlueprintSetID>\r\n<Provider d:type=\"cDeltaString\">Kestrel</Provider>\r\n"
           "<Product d:type=\"cDeltaString\">Moorland</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n"
           "</BlueprintSetID>\r\n<BlueprintID d:type=\"cDeltaString\">" +
           blueprintId + "</BlueprintID>\r\n</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n</BlueprintID>\r\n"
                         "</cRouteProperties>\r\n";
}

std::string Template(const std::string& filter) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader "
           "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n<Blueprint>\r\n"
           "<cRouteBlueprint>\r\n" +
           filter + "<Name d:type=\"cDeltaString\">Moorland</Name>\r\n</cRouteBlueprint>\r\n</Blueprint>\r\n"
                    "</cBlueprintLoader>\r\n";
}

const char* kFilterOff =
    "<BrowseFiltering>\r\n<Europe d:type=\"cDeltaString\">eFalse</Europe>\r\n</BrowseFiltering>\r\n";
const char* kFilterOn =
    "<BrowseFiltering>\r\n<Europe d:type=\"cDeltaString\">eTrue</Europe>\r\n</BrowseFiltering>\r\n";

TEST(CheckRouteTemplate, QuestionsByTheBrowseFilterAndTheirAnswers) {
    struct Case {
        const char* filter;
        base::Answer answer;
        const char* question;
        TemplateChange change;
        TemplateCheckEnd end;
    };
    const char* add =
        "The Route Template file does not include a\nBrowseFiltering section, so will not sort correctly\nin "
        "TS-Classic - Do you wish to add it?";
    const char* update =
        "Although the Route Template has a BrowseFiltering section\nNo location or filtering data is included.\nDo "
        "you wish to update it.";
    const char* ok = "Route Template appears to be OK, but you\nmay edit it if you wish?";
    const std::vector<Case> cases = {
        {"", base::Answer::Yes, add, TemplateChange::AddBrowseFilter, TemplateCheckEnd::NeedsEditor},
        {"", base::Answer::No, add, TemplateChange::None, TemplateCheckEnd::NeedsEditor},
        {kFilterOff, base::Answer::Yes, update, TemplateChange::UpdateBrowseFilter, TemplateCheckEnd::NeedsEditor},
        {kFilterOn, base::Answer::Yes, ok, TemplateChange::Edit, TemplateCheckEnd::NeedsEditor},
        {kFilterOn, base::Answer::No, ok, TemplateChange::None, TemplateCheckEnd::LeftAsItIs},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.question) + (c.answer == base::Answer::Yes ? " Yes" : " No"));
        Maintenance m;
        m.game.write("Content/Routes/R/RouteProperties.xml", RouteProperties("TemplateRoutes\\Moor.xml"));
        ASSERT_TRUE(m.binary("Assets/Kestrel/Moorland/TemplateRoutes/Moor.bin", Template(c.filter)));
        const auto before = fs::last_write_time(m.game.path() / "Assets/Kestrel/Moorland/TemplateRoutes/Moor.bin");
        const std::string bytes = m.game.read("Assets/Kestrel/Moorland/TemplateRoutes/Moor.bin");
        m.ui.answers.push_back(c.answer);
        const TemplateCheck check = CheckRouteTemplate(m.ctx, "R");
        EXPECT_EQ(check.change, c.change);
        EXPECT_EQ(check.end, c.end);
        EXPECT_NE(tools::InStr(check.xml, "<cRouteBlueprint>"), 0);
        const auto texts = m.texts();
        ASSERT_GE(texts.size(), 1u);
        EXPECT_EQ(texts[0], c.question);
        if (c.end == TemplateCheckEnd::NeedsEditor) {
            ASSERT_EQ(texts.size(), 2u);
            EXPECT_TRUE(texts[1].starts_with("Editing the route template comes with the route template screen"));
        } else {
            EXPECT_EQ(texts.size(), 1u);
        }
        // Nothing of the installed template changes.
        EXPECT_EQ(m.game.read("Assets/Kestrel/Moorland/TemplateRoutes/Moor.bin"), bytes);
        EXPECT_EQ(fs::last_write_time(m.game.path() / "Assets/Kestrel/Moorland/TemplateRoutes/Moor.bin"), before);
    }
}

TEST(CheckRouteTemplate, MissingPropertiesMissingTemplateAndUnreadableTemplate) {
    Maintenance m;
    EXPECT_EQ(CheckRouteTemplate(m.ctx, "R").end, TemplateCheckEnd::NoProperties);
    EXPECT_EQ(m.texts(), std::vector<std::string>{"There is no RouteProperties.xml file for this route\ntherefore "
                                                  "the route is invalid and can't be used."});

    m.ui.shown.clear();
    m.game.write("Content/Routes/R/RouteProperties.xml", RouteProperties("TemplateRoutes\\Gone&amp;Lost.xml"));
    m.ui.answers.push_back(base::Answer::Ok);
    EXPECT_EQ(CheckRouteTemplate(m.ctx, "R").end, TemplateCheckEnd::TemplateMissing);
    ASSERT_EQ(m.ui.shown.size(), 1u);
    EXPECT_TRUE(m.ui.shown[0].question);
    EXPECT_EQ(m.ui.shown[0].text, "TemplateRoutes\\Gone&Lost.xml\nCould not be found.");

    // Found after the repair of its name, but no binary the converter can read.
    m.ui.shown.clear();
    m.game.write("Assets/Kestrel/Moorland/TemplateRoutes/Gone&Lost.bin", "not a binary file at all");
    EXPECT_EQ(CheckRouteTemplate(m.ctx, "R").end, TemplateCheckEnd::Unreadable);
    ASSERT_EQ(m.texts().size(), 1u);
    EXPECT_TRUE(m.texts()[0].starts_with("The Route Template "));
    EXPECT_TRUE(m.texts()[0].find("Gone&Lost.bin could not be read:\n") != std::string::npos);
    EXPECT_EQ(m.game.read("Assets/Kestrel/Moorland/TemplateRoutes/Gone&Lost.bin"), "not a binary file at all");
}

// ---------------------------------------------------------------- MixMap clearing

struct MixMapRoute : Maintenance {
    std::string folder;
    MixMapRoute() {
        folder = MixMapFolder(ctx.gameRoot(), "R");
        const fs::path blank = fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates" / "BlankTerrain.txt";
        fs::create_directories(app.path() / "Templates");
        fs::copy_file(blank, app.path() / "Templates" / "BlankTerrain.txt");
    }
    bool real(const std::string& name) { return realFile("MixMap/" + name, "Content/Routes/R/MixMap/" + name); }
    std::string xmlOf(const std::string& name) {
        std::string xml;
        EXPECT_FALSE(tools::SerzReadXml(ctx, folder + "\\" + name, xml));
        return xml;
    }
};

// The hex digits of a blob, without the blanks and line ends between them.
std::string BlobDigits(const std::string& xml) {
    const std::size_t open = xml.find('>', xml.find("<d:blob"));
    std::string digits;
    for (std::size_t i = open + 1; i < xml.size() && xml[i] != '<'; ++i)
        if (!std::isspace(static_cast<unsigned char>(xml[i]))) digits += xml[i];
    return digits;
}

TEST(ClearMixMaps, RealTilesKeepTheirStructureWithABlankMixAndABackUp) {
    MixMapRoute m;
    if (!m.real("+000000+000000.bin") || !m.real("-000001+000001.bin"))
        GTEST_SKIP() << "the real route of the shared test data is absent (" << FERROLUND_TESTDATA << ")";
    m.game.write("Content/Routes/R/MixMap/notes.txt", "left alone");
    const std::string before = m.xmlOf("+000000+000000.bin");
    const std::string original = m.game.read("Content/Routes/R/MixMap/+000000+000000.bin");
    ASSERT_NE(BlobDigits(before).find_first_not_of('0'), std::string::npos) << "the real tile has a painted mix";

    const MixMapClearing done =
        ClearMixMaps(m.ctx, m.folder, {"+000000+000000.bin", "notes.txt", "-000001+000001.bin"});
    EXPECT_EQ(done.modified, (std::vector<std::string>{"+000000+000000.bin", "-000001+000001.bin"}));
    EXPECT_TRUE(done.failed.empty());
    EXPECT_EQ(m.texts().back(), "All selected files have been modified.");

    const std::string after = m.xmlOf("+000000+000000.bin");
    const std::size_t blob = before.find("<d:blob");
    EXPECT_EQ(after.substr(0, blob), before.substr(0, blob)) << "the text in front of the mix is kept";
    EXPECT_EQ(after.substr(after.find("</d:blob>")), before.substr(before.find("</d:blob>")));
    const std::string digits = BlobDigits(after);
    EXPECT_EQ(digits.size(), BlobDigits(before).size());
    EXPECT_EQ(digits.find_first_not_of('0'), std::string::npos) << "the mix is blank";
    // The same length as the untouched tile taken through the converter both ways.
    const fs::path roundTrip = m.app.write("round.xml", before);
    ASSERT_FALSE(tools::SerzConvert(m.ctx, roundTrip.string(), m.app.system() + "\\round.bin",
                                    tools::SerzDirection::ToBinary));
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/+000000+000000.bin").size(), m.app.read("round.bin").size());
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/+000000+000000.bin.bak"), original);
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/notes.txt"), "left alone");
    EXPECT_FALSE(m.ui.progressSteps.empty());
}

TEST(ClearMixMaps, FailuresLeaveFilesAsTheyWereAndAbortStops) {
    MixMapRoute m;
    m.game.write("Content/Routes/R/MixMap/broken.bin", "SERZ and then nothing useful");
    ASSERT_TRUE(m.binary("Content/Routes/R/MixMap/noblob.bin",
                         "<?xml version=\"1.0\"?>\r\n<cHeightmap d:id=\"1\"><Width d:type=\"sUInt32\">4</Width>"
                         "</cHeightmap>\r\n"));
    ASSERT_TRUE(m.binary("Content/Routes/R/MixMap/small.bin",
                         "<?xml version=\"1.0\"?>\r\n<cMixMap d:id=\"1\"><d:blob d:size=\"6\">067C00000000</d:blob>"
                         "</cMixMap>\r\n"));
    const std::string noblob = m.game.read("Content/Routes/R/MixMap/noblob.bin");
    const std::string small = m.game.read("Content/Routes/R/MixMap/small.bin");
    const MixMapClearing done = ClearMixMaps(m.ctx, m.folder, {"broken.bin", "noblob.bin", "small.bin"});
    EXPECT_TRUE(done.modified.empty());
    EXPECT_EQ(done.failed, (std::vector<std::string>{"broken.bin", "noblob.bin", "small.bin"}));
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/small.bin"), small);
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/broken.bin"), "SERZ and then nothing useful");
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/noblob.bin"), noblob);
    EXPECT_FALSE(fs::exists(m.game.path() / "Content/Routes/R/MixMap/broken.bin.bak"));
    const auto texts = m.texts();
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_NE(texts[1].find("holds no terrain mix data"), std::string::npos);
    EXPECT_NE(texts[2].find("small.bin holds a terrain mix of 6 bytes, the blank template one of 98304 bytes."),
              std::string::npos);
    EXPECT_EQ(texts[3], "0 of the 3 selected files have been modified; the others were left as they were.");

    m.ui.shown.clear();
    m.ctx.abortFlag = true;
    EXPECT_TRUE(ClearMixMaps(m.ctx, m.folder, {"noblob.bin"}).aborted);
    EXPECT_EQ(m.texts(), std::vector<std::string>{"Stopped: 0 of the 1 selected files have been modified."});
}

TEST(ClearMixMaps, WithoutTheTemplateOrABinNothingIsTouched) {
    MixMapRoute m;
    m.game.write("Content/Routes/R/MixMap/a.bin", "x");
    EXPECT_TRUE(ClearMixMaps(m.ctx, m.folder, {"a.txt"}).modified.empty());
    EXPECT_EQ(m.texts(), std::vector<std::string>{"No .bin file was selected, so no file was changed."});
    fs::remove(m.app.path() / "Templates" / "BlankTerrain.txt");
    m.ui.shown.clear();
    EXPECT_TRUE(ClearMixMaps(m.ctx, m.folder, {"a.bin"}).modified.empty());
    ASSERT_EQ(m.texts().size(), 1u);
    EXPECT_TRUE(m.texts()[0].ends_with("BlankTerrain.txt is missing, so no file was changed."));
    EXPECT_EQ(m.game.read("Content/Routes/R/MixMap/a.bin"), "x");
}

TEST(FolderFileNames, FilesOnlySortedWithoutRegardToCase) {
    testing::TempFolder folder;
    folder.write("b.bin", "");
    folder.write("A.bin", "");
    folder.write("sub/c.bin", "");
    EXPECT_EQ(FolderFileNames(folder.system()), (std::vector<std::string>{"A.bin", "b.bin"}));
    EXPECT_TRUE(FolderFileNames(folder.system() + "\\nowhere").empty());
}

}  // namespace
}  // namespace ferrolund::routes
