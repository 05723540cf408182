#include "services/report_table.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::services {

namespace fs = std::filesystem;

namespace {

std::string CsvCell(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
    std::string quoted = "\"";
    for (char c : cell) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

std::string Join(const ReportTable& table, char separator, bool csv) {
    std::string text;
    auto line = [&](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i) text += separator;
            text += csv ? CsvCell(cells[i]) : cells[i];
        }
        text += "\r\n";
    };
    if (!table.headings.empty()) line(table.headings);
    for (const auto& row : table.rows) line(row);
    return text;
}

void Record(std::string& out, std::uint16_t id, const std::string& data) {
    auto put16 = [&](std::uint16_t v) {
        out.push_back(static_cast<char>(v & 0xff));
        out.push_back(static_cast<char>(v >> 8));
    };
    put16(id);
    put16(static_cast<std::uint16_t>(data.size()));
    out += data;
}

std::string Le16(std::uint16_t v) { return {static_cast<char>(v & 0xff), static_cast<char>(v >> 8)}; }

}  // namespace

std::string CsvText(const ReportTable& table) { return Join(table, ',', true); }
std::string TabText(const ReportTable& table) { return Join(table, '\t', false); }

std::string XlsBytes(const ReportTable& table) {
    std::string out;
    // Beginning of a worksheet, its code page, then a text cell per field, then the end.
    Record(out, 0x0809, Le16(0x0500) + Le16(0x0010) + Le16(0) + Le16(0));
    Record(out, 0x0042, Le16(1252));
    std::uint16_t row = 0;
    auto cells = [&](const std::vector<std::string>& fields) {
        for (std::size_t col = 0; col < fields.size() && col < 256; ++col) {
            const std::string text = fields[col].substr(0, 255);
            if (text.empty()) continue;
            Record(out, 0x0204,
                   Le16(row) + Le16(static_cast<std::uint16_t>(col)) + Le16(0x000f) +
                       Le16(static_cast<std::uint16_t>(text.size())) + text);
        }
        ++row;
    };
    if (!table.headings.empty()) cells(table.headings);
    for (const auto& r : table.rows) {
        if (row == 0xffff) break;
        cells(r);
    }
    Record(out, 0x000a, "");
    return out;
}

base::Status SaveReportTable(const std::string& path, const ReportTable& table) {
    const std::string kind = tools::LowerCp1252(path.size() >= 3 ? path.substr(path.size() - 3) : path);
    const std::string bytes = kind == "xls" ? XlsBytes(table) : kind == "txt" || kind == "tab" ? TabText(table)
                                                                                               : CsvText(table);
    const fs::path host = tools::HostPath(path);
    fs::path scratch = host;
    scratch += ".ferrolund-part";
    {
        std::ofstream out(scratch, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out) {
            std::error_code ec;
            fs::remove(scratch, ec);
            return base::err::PathFileAccess(path);
        }
    }
    std::error_code ec;
    fs::rename(scratch, host, ec);
    tools::ForgetPath(path);
    if (ec) {
        fs::remove(scratch, ec);
        return base::err::PathFileAccess(path);
    }
    return {};
}

ReportTable ParseCsv(const std::string& text, std::vector<long>* rowLines) {
    ReportTable table;
    std::vector<std::string> fields;
    std::string cell;
    bool quoted = false, first = true, any = false;
    long line = 1, rowStart = 1;
    auto endRow = [&] {
        fields.push_back(cell);
        cell.clear();
        if (first) {
            table.headings = fields;
        } else {
            table.rows.push_back(fields);
            if (rowLines) rowLines->push_back(rowStart);
        }
        rowStart = line;
        first = false;
        fields.clear();
        any = false;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n') ++line;
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                cell += '"';
                ++i;
            } else if (c == '"') {
                quoted = false;
            } else {
                cell += c;
            }
            continue;
        }
        if (c == '"') {
            quoted = true;
            any = true;
        } else if (c == ',') {
            fields.push_back(cell);
            cell.clear();
            any = true;
        } else if (c == '\n') {
            endRow();
        } else if (c != '\r') {
            cell += c;
            any = true;
        }
    }
    if (any || !cell.empty() || !fields.empty()) endRow();
    return table;
}

}  // namespace ferrolund::services
