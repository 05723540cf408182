#include "simdata/dcsv.h"

#include <algorithm>
#include <utility>

#include "tools/files.h"
#include "tools/numbers.h"
#include "tools/tags.h"
#include "tools/template_text.h"
#include "tools/text_search.h"

namespace ferrolund::simdata {

namespace {

using tools::InStr;

constexpr std::string_view kItemOpen = "<cCSVItem";
constexpr std::string_view kItemClose = "</cCSVItem";

std::string ItemFault(long item, const std::string& what) {
    return "The .dcsv file is damaged: item " + std::to_string(item) + " " + what + ".";
}

// Where the values of one item lie in the file: 0-based offsets, X then Y, each from its
// first character to one past its last.
struct ValueSpans {
    std::size_t begin[2] = {0, 0};
    std::size_t end[2] = {0, 0};
};

// Every item of the text, checked: each is closed before the next opens, and holds a
// closed X and Y of its own.
std::string ScanItems(std::string_view text, std::vector<ValueSpans>* spans, std::vector<DcsvPoint>* points) {
    long number = 0;
    for (long open = InStr(text, kItemOpen); open > 0;) {
        ++number;
        const long close = InStr(open, text, kItemClose);
        const long next = InStr(open + 1, text, kItemOpen);
        if (close == 0 || (next > 0 && next < close)) return ItemFault(number, "is not closed");
        const auto itemStart = static_cast<std::size_t>(open - 1);
        const std::string_view item = text.substr(itemStart, static_cast<std::size_t>(close - open));
        DcsvPoint point;
        ValueSpans at;
        int k = 0;
        for (auto [tag, value] : {std::pair{"X", &point.x}, std::pair{"Y", &point.y}}) {
            long pos = 1;
            if (tools::GetDetail(item, pos, tag, *value))
                return ItemFault(number, std::string("has an unclosed <") + tag + "> element");
            if (pos == 0) return ItemFault(number, std::string("has no <") + tag + "> element");
            // pos is the closing tag's; the value stands right before it.
            at.end[k] = itemStart + static_cast<std::size_t>(pos) - 1;
            at.begin[k] = at.end[k] - value->size();
            ++k;
        }
        if (spans) spans->push_back(at);
        if (points) points->push_back(std::move(point));
        open = next;
    }
    return {};
}

bool BreaksXml(std::string_view value) { return value.find_first_of("<>&") != std::string_view::npos; }

}  // namespace

std::string ReadDcsvPoints(std::string_view text, std::vector<DcsvPoint>& points) {
    points.clear();
    std::string fault = ScanItems(text, nullptr, &points);
    if (!fault.empty()) points.clear();
    return fault;
}

std::string PutDcsvPoints(std::string& text, const std::vector<DcsvPoint>& points) {
    std::vector<ValueSpans> items;
    if (std::string fault = ScanItems(text, &items, nullptr); !fault.empty()) return fault;
    const std::size_t count = std::min(items.size(), points.size());
    std::size_t written = 0;
    while (written < count && !points[written].x.empty()) ++written;
    // The values to replace, in the order they stand in the text.
    struct Replacement {
        std::size_t begin, end;
        std::string_view value;
    };
    std::vector<Replacement> replacements;
    for (std::size_t i = 0; i < written; ++i) {
        for (int k = 0; k < 2; ++k) {
            const std::string& value = k == 0 ? points[i].x : points[i].y;
            if (BreaksXml(value)) return "The value " + value + " cannot be written into a .dcsv file.";
            replacements.push_back({items[i].begin[k], items[i].end[k], tools::TrimBlanks(value)});
        }
    }
    std::sort(replacements.begin(), replacements.end(),
              [](const Replacement& a, const Replacement& b) { return a.begin < b.begin; });
    // One pass over the text, so that a file of many thousand markers takes no longer
    // than reading it.
    std::string out;
    out.reserve(text.size() + 64);
    std::size_t from = 0;
    for (const Replacement& r : replacements) {
        out.append(text, from, r.begin - from).append(r.value);
        from = r.end;
    }
    out.append(text, from, std::string::npos);
    text = std::move(out);
    return {};
}

double DcsvNumber(std::string_view text) { return tools::VbVal(text); }

double FindMax(const std::vector<double>& values) {
    return values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
}

double FindMin(const std::vector<double>& values) {
    return values.empty() ? 0.0 : *std::min_element(values.begin(), values.end());
}

std::string NewDcsvText(std::string_view header, std::string_view body, const std::vector<DcsvRow>& rows) {
    std::string text(header);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::string item(body);
        tools::ReplaceAll(item, "ccccc", std::to_string(i));
        tools::ReplaceAll(item, "aaaa", rows[i].x);
        tools::ReplaceAll(item, "bbbb", rows[i].y);
        tools::ReplaceAll(item, "ddddd", rows[i].name);
        text += item;
        text += "\r\n";
    }
    text += "\t</CSVItem>\r\n</cCSVArray>\r\n";
    return text;
}

base::Status LoadDcsvTemplates(const base::RunContext& ctx, std::string& header, std::string& body) {
    for (auto [name, text] : {std::pair{"Templates\\DCSVHeader.txt", &header}, std::pair{"Templates\\DCSVBody.txt", &body}}) {
        const std::string path = ctx.appPath(name);
        *text = tools::ReadTextFile(path);
        if (text->empty()) return base::err::FileNotFound(path);
    }
    return {};
}

base::Status WriteDcsvText(const std::string& path, const std::string& text, std::string& backup) {
    return tools::WriteWithBackup(path, text, kDcsvBackupRule, backup);
}

}  // namespace ferrolund::simdata
