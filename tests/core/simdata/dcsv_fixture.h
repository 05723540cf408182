#pragma once
// .dcsv texts laid out as the simulator's own: a head, one item per point with the
// value's bits beside it and a name, CR LF line ends.

#include <string>
#include <utility>
#include <vector>

namespace ferrolund::testing {

using DcsvPairs = std::vector<std::pair<std::string, std::string>>;

inline std::string DcsvItem(const std::string& x, const std::string& y, const std::string& name, int id) {
    return "\t\t<cCSVItem d:id=\"" + std::to_string(40000 + id) + "\">\r\n"
           "\t\t\t<X d:type=\"sFloat32\" d:alt_encoding=\"0000000000000000\" d:precision=\"string\">" + x + "</X>\r\n"
           "\t\t\t<Y d:type=\"sFloat32\" d:alt_encoding=\"0000000000000000\" d:precision=\"string\">" + y + "</Y>\r\n"
           "\t\t\t<Name d:type=\"cDeltaString\">" + name + "</Name>\r\n"
           "\t\t</cCSVItem>\r\n";
}

inline std::string DcsvText(const DcsvPairs& points, const std::string& name = "") {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cCSVArray xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"31337\">\r\n"
        "\t<CSVItem>\r\n";
    for (std::size_t i = 0; i < points.size(); ++i)
        text += DcsvItem(points[i].first, points[i].second, name, static_cast<int>(i));
    return text + "\t</CSVItem>\r\n</cCSVArray>\r\n";
}

// A curve of `count` points: X 0, 1, 2, ..., Y ten times X.
inline DcsvPairs RisingPairs(int count) {
    DcsvPairs pairs;
    for (int i = 0; i < count; ++i) pairs.emplace_back(std::to_string(i), std::to_string(10 * i));
    return pairs;
}

}  // namespace ferrolund::testing
