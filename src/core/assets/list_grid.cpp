#include "assets/list_grid.h"

#include <algorithm>

#include "archives/xls_reader.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/names.h"

namespace ferrolund::assets {

namespace {

const std::string kEmpty;

// The length in bytes of the character that starts the text (a UTF-8 sequence, or one
// byte of anything else).
std::size_t FirstCharacterLength(std::string_view text) {
    if (text.empty()) return 0;
    const auto lead = static_cast<unsigned char>(text[0]);
    std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    length = std::min(length, text.size());
    return tools::IsValidUtf8(text.substr(0, length)) ? length : 1;
}

// The first character in a form where its capital and small letter are equal.
std::string FoldedCharacter(std::string_view character) {
    if (character.size() == 1) return std::string(1, static_cast<char>(tools::FoldCp1252(character[0])));
    return tools::FoldUtf8(character);
}

// The text with its first letter in either case, the rest as typed.
bool CellHolds(std::string_view cell, std::string_view text) {
    if (text.empty()) return true;
    const std::size_t firstLength = FirstCharacterLength(text);
    const std::string first = FoldedCharacter(text.substr(0, firstLength));
    const std::string_view rest = text.substr(firstLength);
    for (std::size_t at = 0; at < cell.size(); ++at) {
        const std::size_t length = FirstCharacterLength(cell.substr(at));
        if (cell.substr(at + length, rest.size()) == rest && FoldedCharacter(cell.substr(at, length)) == first)
            return true;
        at += length - 1;
    }
    return false;
}

std::string LastThree(const std::string& path) {
    return tools::LowerCp1252(path.size() >= 3 ? std::string_view(path).substr(path.size() - 3) : path);
}

std::vector<std::string> SplitTabs(std::string_view line) {
    std::vector<std::string> cells;
    std::size_t from = 0;
    for (std::size_t tab; (tab = line.find('\t', from)) != std::string_view::npos; from = tab + 1)
        cells.emplace_back(line.substr(from, tab - from));
    cells.emplace_back(line.substr(from));
    return cells;
}

services::ReportTable ParseTabText(std::string_view text) {
    services::ReportTable table;
    bool first = true;
    for (std::size_t from = 0; from < text.size();) {
        std::size_t end = text.find('\n', from);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(from, end - from);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        from = end + 1;
        if (line.empty()) continue;
        if (first) table.headings = SplitTabs(line);
        else table.rows.push_back(SplitTabs(line));
        first = false;
    }
    return table;
}

}  // namespace

ListGrid::ListGrid(std::vector<std::string> headings) { table_.headings = std::move(headings); }

const std::string& ListGrid::cell(std::size_t row, std::size_t column) const {
    if (row >= table_.rows.size() || column >= table_.rows[row].size()) return kEmpty;
    return table_.rows[row][column];
}

void ListGrid::setCell(std::size_t row, std::size_t column, std::string value) {
    if (row >= table_.rows.size()) return;
    auto& cells = table_.rows[row];
    if (column >= cells.size()) cells.resize(column + 1);
    cells[column] = std::move(value);
}

void ListGrid::append(std::vector<std::string> row) { table_.rows.push_back(std::move(row)); }

void ListGrid::append(std::vector<std::vector<std::string>> rows) {
    table_.rows.insert(table_.rows.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
}

void ListGrid::clear() {
    table_.rows.clear();
    findRow_ = 0;
}

void ListGrid::removeRows(std::vector<std::size_t> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        if (*it < table_.rows.size()) table_.rows.erase(table_.rows.begin() + static_cast<std::ptrdiff_t>(*it));
    }
    findRow_ = std::min(findRow_, table_.rows.size());
}

void ListGrid::setHidden(std::size_t column, bool hide) {
    if (column >= hidden_.size()) hidden_.resize(column + 1, false);
    hidden_[column] = hide;
}

std::optional<std::size_t> ListGrid::findFirstInstance(std::string_view text, std::size_t column) {
    if (text != findText_) {
        findText_ = std::string(text);
        findRow_ = 0;
    }
    for (std::size_t row = findRow_; row < table_.rows.size(); ++row) {
        if (CellHolds(cell(row, column), text)) {
            findRow_ = row + 1;
            return row;
        }
    }
    return std::nullopt;
}

std::vector<std::size_t> ListGrid::matchingRows(std::string_view text, std::size_t column) const {
    std::vector<std::size_t> hits;
    for (std::size_t row = 0; row < table_.rows.size(); ++row) {
        if (CellHolds(cell(row, column), text)) hits.push_back(row);
    }
    return hits;
}

std::size_t ListGrid::keepMatching(std::string_view text, std::size_t column) {
    std::vector<std::vector<std::string>> kept;
    for (std::size_t row : matchingRows(text, column)) kept.push_back(std::move(table_.rows[row]));
    table_.rows = std::move(kept);
    findRow_ = 0;
    return table_.rows.size();
}

base::Status ListGrid::save(const std::string& path) const {
    const std::string form = LastThree(path);
    if (form != "csv" && form != "txt" && form != "tab" && form != "xls")
        return base::RunError{base::err::kPathFileAccess,
                              "Nothing was saved: a list is saved as .csv, .txt, .tab or .xls, not as " + path};
    return services::SaveReportTable(path, table_);
}

base::Status ListGrid::load(const std::string& path) {
    services::ReportTable loaded;
    if (auto status = ReadListFile(path, loaded)) return status;
    table_.rows = std::move(loaded.rows);
    findRow_ = 0;
    restoreFile_ = path;
    return {};
}

base::Status ListGrid::restore() {
    if (restoreFile_.empty())
        return base::RunError{base::err::kFileNotFound, "No list has been loaded yet, so there is nothing to restore."};
    return load(restoreFile_);
}

std::string ListGrid::clipboardText(const std::vector<std::size_t>& rows) const {
    std::string text;
    for (std::size_t row : rows) {
        if (row >= table_.rows.size()) continue;
        const auto& cells = table_.rows[row];
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (c) text += '\t';
            text += cells[c];
        }
        text += "\r\n";
    }
    return text;
}

base::Status ReadListFile(const std::string& path, services::ReportTable& table) {
    const std::string form = LastThree(path);
    if (form != "csv" && form != "txt" && form != "tab" && form != "xls")
        return base::RunError{base::err::kPathFileAccess, "A list is read from .csv, .txt, .tab or .xls files, not from " + path};
    if (tools::FileLength(path) < 0) return base::err::FileNotFound(path);
    const std::string bytes = tools::ReadTextFile(path);
    if (form == "csv") {
        table = services::ParseCsv(bytes);
    } else if (form == "xls") {
        auto parsed = archives::ParseXls(bytes);
        if (auto* error = std::get_if<base::RunError>(&parsed)) return *error;
        table = std::get<services::ReportTable>(std::move(parsed));
    } else {
        table = ParseTabText(bytes);
    }
    return {};
}

}  // namespace ferrolund::assets
