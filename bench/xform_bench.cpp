// Speed of the blueprint transform frame: rows per second of a name change over many
// coaches (convert, change, compile, read back, compare, replace with back-up), the time
// of a level-of-detail change on a geometry carrying a large vertex blob, and the rate at
// which the read-back check compares two XML texts.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "assets/stock_transforms.h"
#include "assets/transform_frame.h"
#include "bench.h"
#include "serz/codec.h"

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;
namespace base = ferrolund::base;

double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// Answers OK and types "# (renamed)".
class AgreeingUi : public base::Ui {
public:
    void message(const std::string&, base::Icon, const std::string&) override {}
    base::Answer ask(const std::string&, base::Buttons, base::Icon, const std::string&) override { return base::Answer::Ok; }
    std::optional<std::string> input(const std::string&, const std::string&, const std::string&) override {
        return std::string("# (renamed)");
    }
    std::optional<std::string> chooseOpenFile(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> chooseSaveFile(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> chooseFolder(const std::string&, const std::string&) override { return {}; }
    void progress(int, const std::string&) override {}
    void status(int, const std::string&) override {}
    void busy(bool) override {}
    void pump() override {}
};

std::string Element(const std::string& tabs, const std::string& tag, const std::string& type, const std::string& value) {
    return tabs + "<" + tag + " d:type=\"" + type + "\">" + value + "</" + tag + ">\r\n";
}

// A coach with a display name and `children` child entries, each with its matrix.
std::string Coach(int n, int children) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n\t<Blueprint>\r\n\t\t<cWagonBlueprint>\r\n";
    xml += Element("\t\t\t", "Name", "cDeltaString", "Coach " + std::to_string(n));
    xml += "\t\t\t<DisplayName>\r\n\t\t\t\t<Localisation-cUserLocalisedString>\r\n";
    for (const char* lang : {"English", "French", "Italian", "German", "Spanish", "Dutch", "Polish", "Russian"})
        xml += Element("\t\t\t\t\t", lang, "cDeltaString", "Coach " + std::to_string(n));
    xml += "\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t</DisplayName>\r\n\t\t\t<Children>\r\n";
    for (int c = 0; c < children; ++c) {
        xml += "\t\t\t\t<cEntityContainerBlueprint-sChild>\r\n";
        xml += Element("\t\t\t\t\t", "ChildName", "cDeltaString", "Child" + std::to_string(c));
        xml += "\t\t\t\t\t<Element>\r\n";
        for (int e = 0; e < 16; ++e) xml += Element("\t\t\t\t\t\t", "e", "sFloat32", e % 5 == 0 ? "1" : "0.25");
        xml += "\t\t\t\t\t</Element>\r\n\t\t\t\t</cEntityContainerBlueprint-sChild>\r\n";
    }
    return xml + "\t\t\t</Children>\r\n\t\t</cWagonBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

std::string Geometry(std::size_t blobBytes) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cHcRGeometry xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n\t<Hierarchy>\r\n\t\t<LOD>\r\n";
    for (const char* v : {"150", "400", "900", "2500"}) xml += Element("\t\t\t", "e", "sFloat32", v);
    xml += "\t\t</LOD>\r\n\t</Hierarchy>\r\n\t<Vertices>\r\n\t\t<d:blob d:size=\"" + std::to_string(blobBytes) + "\">";
    for (std::size_t i = 0; i < blobBytes / 8; ++i) xml += (i % 4 == 0 ? (i ? "\r\n" : "") : " ") + std::string("0123456789ABCDEF");
    return xml + "</d:blob>\r\n\t</Vertices>\r\n</cHcRGeometry>\r\n";
}

ferrolund::assets::AssetRow Row(const std::string& path) {
    ferrolund::assets::AssetRow row;
    row.provider = "P";
    row.product = "Q";
    row.path = path;
    row.name = "Coach";
    return row;
}

void Write(const fs::path& file, const std::string& xml) {
    std::string binary;
    (void)ferrolund::serz::XmlToBinary(xml, binary);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << binary;
}

}  // namespace

FERROLUND_BENCH(xform) {
    const fs::path root = fs::temp_directory_path() / "ferrolund-xform-bench";
    fs::remove_all(root);
    AgreeingUi ui;
    ferrolund::app::AppContext ctx;
    ctx.ui = &ui;
    ctx.appRoot = (root / "app").string();
    ctx.prefs.gameRoot = (root / "game").string();
    fs::create_directories(root / "app" / "TempFiles");

    constexpr int kRows = 300;
    std::vector<ferrolund::assets::AssetRow> rows;
    for (int n = 0; n < kRows; ++n) {
        const std::string name = "Coach" + std::to_string(n) + ".bin";
        Write(root / "game" / "Assets" / "P" / "Q" / "Coaches" / name, Coach(n, 12));
        rows.push_back(Row("Coaches\\" + name));
    }
    auto start = Clock::now();
    const auto renamed = ferrolund::assets::ChangeName(ctx, rows);
    double seconds = Since(start);
    std::size_t written = 0;
    for (const auto& row : renamed.rows) written += row.written.empty() ? 0 : 1;
    std::printf("change name: %zu of %d coaches (12 children each) in %.3f s, %.0f rows/s, %.2f ms a row\n", written,
                kRows, seconds, kRows / seconds, seconds * 1e3 / kRows);

    for (const std::size_t blob : {std::size_t(1) << 20, std::size_t(8) << 20}) {
        fs::remove_all(root / "game" / "Assets" / "P" / "Q" / "Body");
        Write(root / "game" / "Assets" / "P" / "Q" / "Body" / "coach.GeoPcDx", Geometry(blob));
        Write(root / "game" / "Assets" / "P" / "Q" / "Body.bin",
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n" +
                  Element("\t", "GeometryID", "cDeltaString", "P\\Q\\Body\\[00]coach") + "</cBlueprintLoader>\r\n");
        start = Clock::now();
        const auto lods = ferrolund::assets::ChangeLods(ctx, {Row("Body.bin")}, 0, 4000);
        seconds = Since(start);
        std::printf("change LODs: geometry with a %4.1f MB blob in %.3f s%s\n", static_cast<double>(blob) / (1 << 20),
                    seconds, lods.rows.size() == 1 && !lods.rows[0].written.empty() ? "" : " -- NOT WRITTEN");
    }

    const std::string big = Geometry(std::size_t(16) << 20);
    start = Clock::now();
    const bool same = ferrolund::assets::SameXmlContent(big, big);
    seconds = Since(start);
    std::printf("read-back check: %.1f MB compared in %.3f s, %.0f MB/s%s\n", static_cast<double>(big.size()) / 1e6,
                seconds, static_cast<double>(big.size()) / 1e6 / seconds, same ? "" : " -- DIFFERS");
    fs::remove_all(root);
}
