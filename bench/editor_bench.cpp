// Speed of the editor's tools on a generated 30 MB scenario-like XML: reading it into the
// tree, colouring every line as the pane does, one search over the whole text, a Replace
// All with many hits, and the tree's search over its entries.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "bench.h"
#include "editor/text_find.h"
#include "editor/xml_colour.h"
#include "editor/xml_tree.h"

namespace {

using Clock = std::chrono::steady_clock;

// The best of three runs, in seconds.
double BestSeconds(const std::function<void()>& step) {
    auto once = [&] {
        const auto start = Clock::now();
        step();
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    return std::min({once(), once(), once()});
}

// Consists of rail vehicles with their typed values, as the converter writes a scenario.
std::string ScenarioXml(std::size_t megabytes) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n\t<Record>\r\n";
    for (long id = 2; xml.size() < megabytes * 1000000; ++id) {
        const std::string n = std::to_string(id);
        xml += "\t\t<cOwnedEntity d:id=\"" + n + "\">\r\n"
               "\t\t\t<Component>\r\n"
               "\t\t\t\t<cWagon d:id=\"" + n + "1\">\r\n"
               "\t\t\t\t\t<PantographInfo d:type=\"cDeltaString\">eNone</PantographInfo>\r\n"
               "\t\t\t\t\t<Mass d:type=\"sFloat32\" d:alt_encoding=\"000000C0D1A5E540\" d:precision=\"string\">44000</Mass>\r\n"
               "\t\t\t\t\t<Number d:type=\"cDeltaString\">W" + n + "</Number>\r\n"
               "\t\t\t\t\t<!-- vehicle " + n + " -->\r\n"
               "\t\t\t\t</cWagon>\r\n"
               "\t\t\t</Component>\r\n"
               "\t\t\t<BlueprintID d:type=\"cDeltaString\">RailVehicles\\Freight\\Box\\Wagon.xml</BlueprintID>\r\n"
               "\t\t</cOwnedEntity>\r\n";
    }
    return xml + "\t</Record>\r\n</cRecordSet>\r\n";
}

}  // namespace

FERROLUND_BENCH(editor) {
    using namespace ferrolund::editor;
    const std::string xml = ScenarioXml(30);
    const double mb = static_cast<double>(xml.size()) / 1e6;
    std::printf("generated scenario XML        %9.3f MB\n", mb);

    XmlNodeTree tree;
    const double load = BestSeconds([&] { (void)tree.loadText(xml); });
    std::printf("tree: read and index          %9.1f ms  %zu entries  %7.1f MB/s\n", load * 1e3, tree.count(),
                mb / load);

    std::size_t spans = 0;
    const double colour = BestSeconds([&] { spans = ColourText(xml).size(); });
    std::printf("colour spans, whole text      %9.1f ms  %zu spans  %7.1f MB/s\n", colour * 1e3, spans, mb / colour);

    long hit = 0;
    const double find = BestSeconds([&] { hit = FindInText(xml, "CRECORDSET>", 2, false); });
    std::printf("find near the end, no case    %9.1f ms  at %ld  %7.1f MB/s\n", find * 1e3, hit, mb / find);

    ReplaceAllResult replaced;
    const double replaceAll = BestSeconds([&] {
        std::string text = xml;
        replaced = ReplaceAllInText(text, "cDeltaString", "cDeltaString2");
    });
    std::printf("replace all                   %9.1f ms  %ld replacements\n", replaceAll * 1e3, replaced.count);

    // The tree's search walks at most 65500 entries; this is the cost of a full walk.
    std::string small = ScenarioXml(1);
    XmlNodeTree limited;
    (void)limited.loadText(small);
    TreeSearch search;
    std::size_t found = 0;
    const double walk = BestSeconds([&] {
        search.searchText = "no such name";
        found = search.next(limited, TreeSearchField::Characters, 0);
    });
    std::printf("tree search over %6zu entries %8.1f ms  (%s)\n", limited.count(), walk * 1e3,
                found == kNoNode ? "no hit" : "hit");
}
