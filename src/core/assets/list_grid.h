#pragma once
// The list that the asset screens share: a heading row and text rows, with the commands
// every one of those screens offers on it: find, keep what matches, save and load in the
// three forms, restore, and copy. The screens differ in their columns and in what fills
// the rows, not in these commands.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_error.h"
#include "services/report_table.h"

namespace ferrolund::assets {

class ListGrid {
public:
    explicit ListGrid(std::vector<std::string> headings = {});

    const std::vector<std::string>& headings() const { return table_.headings; }
    const std::vector<std::vector<std::string>>& rows() const { return table_.rows; }
    std::size_t rowCount() const { return table_.rows.size(); }
    std::size_t columnCount() const { return table_.headings.size(); }
    // Empty for a cell beyond the row's end.
    const std::string& cell(std::size_t row, std::size_t column) const;
    void setCell(std::size_t row, std::size_t column, std::string value);

    void append(std::vector<std::string> row);
    void append(std::vector<std::vector<std::string>> rows);
    // "Clear List": the heading row alone.
    void clear();
    // Removes the rows (indices in any order; repeats and those past the end ignored).
    void removeRows(std::vector<std::size_t> rows);

    // Hidden columns are only not shown: they stay in every saved file.
    bool hidden(std::size_t column) const { return column < hidden_.size() && hidden_[column]; }
    void setHidden(std::size_t column, bool hide);

    // "Find First Instance": the next row, from the find row on, whose cell in `column`
    // holds `text` with its first letter in either case. A new text starts again at the
    // first row; a hit moves the find row behind it.
    std::optional<std::size_t> findFirstInstance(std::string_view text, std::size_t column);
    // Every row whose cell in `column` holds the text, as Find matches it.
    std::vector<std::size_t> matchingRows(std::string_view text, std::size_t column) const;
    // "Show All": keeps only the matching rows; gives how many are left.
    std::size_t keepMatching(std::string_view text, std::size_t column);

    // "Save List": the form follows the name's last three letters (csv, txt or tab, xls);
    // other endings save nothing and say so.
    base::Status save(const std::string& path) const;
    // "Load List": the same forms read back; the loaded rows replace the list, and the
    // file is noted for "Restore". Headings stay the screen's.
    base::Status load(const std::string& path);
    // "Restore": the file last loaded, again. An error when nothing was loaded yet.
    base::Status restore();
    const std::string& restoreFile() const { return restoreFile_; }

    // The rows as the clipboard takes them: cells joined by tabs, a line each.
    std::string clipboardText(const std::vector<std::size_t>& rows) const;

private:
    services::ReportTable table_;
    std::vector<bool> hidden_;
    std::string findText_;
    std::size_t findRow_ = 0;
    std::string restoreFile_;
};

// A table read from a saved list: comma text, tabbed text or an .xls sheet, by the name's
// last three letters; the first line is the heading row.
base::Status ReadListFile(const std::string& path, services::ReportTable& table);

}  // namespace ferrolund::assets
