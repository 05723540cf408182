// .dcsv files of route markers run to many thousand points: reading them, putting all
// values back, and reading a source .csv, timed over one large file.
#include <chrono>
#include <cstdio>
#include <string>

#include "bench.h"
#include "simdata/dcsv.h"
#include "simdata/dcsv_process.h"

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

}  // namespace

FERROLUND_BENCH(dcsv) {
    using namespace ferrolund::simdata;
    constexpr int kItems = 50000;
    std::vector<DcsvRow> rows;
    std::string csv;
    for (int i = 0; i < kItems; ++i) {
        const std::string x = std::to_string(-3.0 - i * 1e-5), y = std::to_string(51.0 + i * 1e-5);
        rows.push_back({x.substr(0, 6), y.substr(0, 6), "Marker " + std::to_string(i)});
        csv += x + "," + y + "\r\n";
    }
    const std::string text = NewDcsvText(
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cCSVArray>\r\n\t<CSVItem>\r\n",
        "\t\t<cCSVItem d:id=\"ccccc\">\r\n\t\t\t<X d:type=\"sFloat32\" d:precision=\"string\">aaaa</X>\r\n"
        "\t\t\t<Y d:type=\"sFloat32\" d:precision=\"string\">bbbb</Y>\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">ddddd</Name>\r\n\t\t</cCSVItem>",
        rows);

    auto start = Clock::now();
    std::vector<DcsvPoint> points;
    const std::string fault = ReadDcsvPoints(text, points);
    const double readMs = Milliseconds(start);

    start = Clock::now();
    const std::vector<DcsvPoint> precise = ReadSourceCsv(csv);
    const double csvMs = Milliseconds(start);

    start = Clock::now();
    std::string changed = text;
    const std::string putFault = PutDcsvPoints(changed, precise);
    const double putMs = Milliseconds(start);

    std::printf("dcsv: %d items, %.1f MB: read %.1f ms, source csv %.1f ms, all values put back %.1f ms%s\n", kItems,
                text.size() / 1e6, readMs, csvMs, putMs, fault.empty() && putFault.empty() ? "" : " (failed)");
}
