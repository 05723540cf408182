#include "assets/clone_provider.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/clone_designer.h"
#include "stock_fixture.h"
#include "tools/files.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using Verdict = TransformResult::Verdict;

TEST(CorrectProviderText, TheOldWordAsAWholeValueOrPathElement) {
    struct Case {
        std::string geometry;
        std::string extra;  // another element's value
        Verdict verdict;
        std::string geometryAfter, extraAfter;
    };
    const Case cases[] = {
        {"OldCo\\Prod\\Coach\\[00]coach", "OldCo", Verdict::Changed, "NewCo\\Prod\\Coach\\[00]coach", "NewCo"},
        {"oldco\\Prod\\Coach\\coach", "OldCompany\\OldCo\\x", Verdict::Changed, "NewCo\\Prod\\Coach\\coach",
         "OldCompany\\NewCo\\x"},  // any case; the longer word stays
        {"NewCo\\Prod\\Coach\\coach", "OldCo", Verdict::Nothing, "", ""},  // already its own
        {"", "", Verdict::Nothing, "", ""},                                // names no provider
    };
    for (const Case& c : cases) {
        std::vector<testing::Child> children;
        if (!c.geometry.empty()) children.push_back({"Lamp", testing::Upright("0", "1", "2")});
        std::string xml = CoachXml("Coach", children, c.geometry);
        xml.insert(xml.find("</Blueprint>"), "<Extra d:type=\"cDeltaString\">" + c.extra + "</Extra>\r\n");
        const TransformResult result = CorrectProviderText(xml, "NewCo");
        EXPECT_EQ(result.verdict, c.verdict) << c.geometry;
        if (c.verdict != Verdict::Changed) continue;
        EXPECT_NE(result.text.find(">" + c.geometryAfter + "</GeometryID>"), std::string::npos) << c.geometry;
        EXPECT_NE(result.text.find(">" + c.extraAfter + "</Extra>"), std::string::npos) << c.geometry;
        EXPECT_NE(result.text.find(">Kuju</Provider>"), std::string::npos);
    }
    // Without a model the first provider named counts.
    EXPECT_EQ(OwnProvider("<Provider d:type=\"cDeltaString\"></Provider><Provider d:type=\"cDeltaString\">Ab</Provider>"),
              "Ab");
}

TEST(CorrectProvider, AMovedItemPointsAtItselfUnderAssetsOrContent) {
    for (const std::string top : {"Assets", "Content"}) {
        Game game;
        const std::string relative = "NewCo\\Prod\\RailVehicles\\Coach\\coach.bin";
        const fs::path file = game.folder.path() / "game" / top / "NewCo/Prod/RailVehicles/Coach/coach.bin";
        const fs::path made = game.put(relative, CoachXml("Coach", {}, "OldCo\\Prod\\RailVehicles\\Coach\\coach"));
        if (made != file) {
            fs::create_directories(file.parent_path());
            fs::rename(made, file);
        }
        game.okToWarning();
        const TransformOutcome out = CorrectProvider(game.ctx, {game.gameRoot() + "\\" + top + "\\" + relative});
        ASSERT_EQ(out.rows.size(), 1u) << top;
        EXPECT_EQ(out.rows[0].written, game.gameRoot() + "\\" + top + "\\" + relative) << out.report;
        EXPECT_TRUE(fs::exists(file.string() + ".bak")) << top;
        EXPECT_EQ(game.ui.texts().back(), std::string(kProviderCorrected));
    }
}

TEST(BlueprintDesigner, TheBoxesFillTheTemplateAndTheFileIsWritten) {
    Game game;
    fs::create_directories(game.folder.path() / "app" / "BluePrints");
    for (const char* name : {"Blue_Named.xml", "Blue_Series.xml", "Blue_Route.xml"})
        ASSERT_FALSE(tools::CopyFileReplacing(std::string(FERROLUND_SOURCE_DIR) + "/data/BluePrints/" + name,
                                              game.ctx.appPath(std::string("BluePrints\\") + name)));
    struct Case {
        DesignerForm form;
        std::vector<std::string> texts;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {DesignerForm::Named, {"Ostvale", "Dún Laoghaire"}, {">Ostvale</Name>", ">Dún Laoghaire</Name>"}},
        {DesignerForm::Series, {"Class 58", "58001"}, {">Class 58</Name>", ">58001</X>"}},
        {DesignerForm::Route, {"Signal box", "-1.25", "52.5"}, {">Signal box</Name>", ">-1.25</X>", ">52.5</Y>"}},
    };
    const std::string folder = game.folder.system() + "\\out";
    fs::create_directories(game.folder.path() / "out");
    for (const Case& c : cases) {
        const std::optional<std::string> written = MakeBlueprint(game.ctx, c.form, folder, "list", c.texts);
        ASSERT_TRUE(written);
        const std::string text = tools::ReadTextFile(*written);
        for (const std::string& part : c.expected) EXPECT_NE(text.find(part), std::string::npos) << part;
        for (const char* marker : {"ZZZZZZ", "XXXXXX", "YYYYYY"}) EXPECT_EQ(text.find(marker), std::string::npos);
        EXPECT_EQ(game.ui.texts().back(), std::string(kTemplateWritten) + "\r\n" + folder + "\\list.xml");
    }
    // The earlier files were kept by the back-up rule.
    EXPECT_TRUE(fs::exists(game.folder.path() / "out" / "list.xml.bak"));
    EXPECT_TRUE(fs::exists(game.folder.path() / "out" / "list.xml.bak1"));
    // Markers are replaced in their own case only.
    const DesignerLayout named = LayoutOf(DesignerForm::Named);
    EXPECT_EQ(FillDesignerTemplate("ZZZZZZ zzzzzz XXXXXX", named, {"a"}), "a zzzzzz ");
    // Without a name nothing is written.
    EXPECT_FALSE(MakeBlueprint(game.ctx, DesignerForm::Named, folder, "  ", {}));
    EXPECT_EQ(game.ui.texts().back(), "Give the blueprint a file name first.");
}

}  // namespace
}  // namespace ferrolund::assets
