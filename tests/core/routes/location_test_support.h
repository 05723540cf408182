#pragma once
// A game folder for the tests of the asset lists of a route, and the pieces of tile XML
// they are made of, written as the converter writes them.

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/files.h"
#include "tools/serz_convert.h"

namespace ferrolund::testing {

inline constexpr const char* kRealRoute = "ff1ebaa8-82f5-43ca-9816-859956f4d56c";

// A reference: Provider and Product on two lines, the BlueprintID three lines on.
inline std::string Reference(const std::string& provider, const std::string& product, const std::string& blueprintId) {
    return "<BlueprintSetID>\r\n<iBlueprintLibrary-cBlueprintSetID>\r\n<Provider d:type=\"cDeltaString\">" + provider +
           "</Provider>\r\n<Product d:type=\"cDeltaString\">" + product +
           "</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n</BlueprintSetID>\r\n"
           "<BlueprintID d:type=\"cDeltaString\">" +
           blueprintId + "</BlueprintID>\r\n";
}

inline std::string FarCoordinate(const std::string& axis, const std::string& tile, const std::string& offset) {
    return "<" + axis +
           ">\r\n<cFarCoordinate>\r\n<RouteCoordinate>\r\n<cRouteCoordinate>\r\n<Distance d:type=\"sInt32\">" + tile +
           "</Distance>\r\n</cRouteCoordinate>\r\n</RouteCoordinate>\r\n<TileCoordinate>\r\n<cTileCoordinate>\r\n"
           "<Distance d:type=\"cDeltaString\">" +
           offset + "</Distance>\r\n</cTileCoordinate>\r\n</TileCoordinate>\r\n</cFarCoordinate>\r\n</" + axis +
           ">\r\n";
}

// A scenery item placed on tile x, z at the offsets, holding `inside` behind its place.
inline std::string Entity(const std::string& x, const std::string& xOffset, const std::string& z,
                          const std::string& zOffset, const std::string& inside) {
    return "<cDynamicEntity d:id=\"11\">\r\n<RFarPosition>\r\n<cFarVector2 d:id=\"12\">\r\n" +
           FarCoordinate("X", x, xOffset) + FarCoordinate("Z", z, zOffset) + "</cFarVector2>\r\n</RFarPosition>\r\n" +
           inside + "</cDynamicEntity>\r\n";
}

// A track ribbon of Tracks.bin: its tile and the lower left corner of its extent.
inline std::string TrackRibbon(const std::string& x, const std::string& z, const std::string& corner,
                               const std::string& inside) {
    return "<Network-cTrackRibbon d:id=\"21\">\r\n<RouteVector>\r\n<cRouteVector2>\r\n<X>\r\n<cRouteCoordinate>\r\n"
           "<Distance d:type=\"sInt32\">" +
           x +
           "</Distance>\r\n</cRouteCoordinate>\r\n</X>\r\n<Z>\r\n<cRouteCoordinate>\r\n<Distance d:type=\"sInt32\">" +
           z +
           "</Distance>\r\n</cRouteCoordinate>\r\n</Z>\r\n</cRouteVector2>\r\n</RouteVector>\r\n"
           "<RBottomLeft d:type=\"cDeltaString\">" +
           corner + "</RBottomLeft>\r\n" + inside + "</Network-cTrackRibbon>\r\n";
}

// The real route of the test data placed under `game`\Content\Routes, beside an empty
// Assets folder; false when the test data is not beside the checkout.
inline bool PlaceRealRoute(const std::filesystem::path& game) {
    const auto source = std::filesystem::path(FERROLUND_TESTDATA) / "routes" / kRealRoute;
    if (!std::filesystem::exists(source)) return false;
    const auto route = game / "Content/Routes" / kRealRoute;
    std::filesystem::create_directories(game / "Assets");
    std::filesystem::create_directories(route.parent_path());
    std::filesystem::copy(source, route, std::filesystem::copy_options::recursive);
    return true;
}

// The scenario folders of the real route placed under `game`.
inline std::vector<std::string> RealRouteScenarios(const std::filesystem::path& game) {
    std::vector<std::string> scenarios;
    for (const auto& entry : std::filesystem::directory_iterator(game / "Content/Routes" / kRealRoute / "Scenarios"))
        scenarios.push_back(entry.path().filename());
    return scenarios;
}

struct LocationGame {
    TempFolder root;
    ScriptedUi ui;
    app::AppContext ctx;

    LocationGame() {
        std::filesystem::create_directories(root.path() / "app");
        std::filesystem::create_directories(root.path() / "game/Assets");
        ctx.appRoot = root.system() + "/app";
        ctx.prefs.gameRoot = game();
        ctx.ui = &ui;
        ctx.lang.parse(tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Language/Lang_English.txt"));
    }
    std::string game() const { return root.system() + "/game"; }
    void asset(const std::string& relative) const { root.write("game/Assets/" + relative, "x"); }
    // A tile below the game folder, made binary by the converter from the record's XML.
    bool tile(const std::string& relative, const std::string& record) {
        const std::string xml =
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet "
            "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n" +
            record + "</cRecordSet>\r\n";
        const auto source = root.write("tile-source.xml", xml);
        std::string target = game() + "\\" + relative;
        std::replace(target.begin() + static_cast<long>(game().size()), target.end(), '/', '\\');
        root.write("game/" + relative, "");
        return !tools::SerzConvert(ctx, source.string(), target, tools::SerzDirection::ToBinary);
    }
    // The real route of the test data placed in the game folder; false when the test data
    // is not beside the checkout.
    bool copyRealRoute() const { return PlaceRealRoute(root.path() / "game"); }
};

}  // namespace ferrolund::testing
