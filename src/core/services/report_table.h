#pragma once
// A grid's rows as files: comma text, tabbed text and an .xls spreadsheet, and comma
// text read back. Any screen with a grid saves through these.

#include <string>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::services {

struct ReportTable {
    std::vector<std::string> headings;            // the heading row; may be empty
    std::vector<std::vector<std::string>> rows;   // Windows-1252 cells
};

// One line a row, the heading row first, lines ended by CR LF. A comma-text cell holding
// a comma, a double quote or a line end is quoted, its quotes doubled.
std::string CsvText(const ReportTable& table);
std::string TabText(const ReportTable& table);
// A worksheet in the binary Excel form (BIFF records with the Windows-1252 code page), one
// text cell a field; cells longer than 255 characters are cut.
std::string XlsBytes(const ReportTable& table);

// The form is chosen by the name's last three letters: "csv", "txt" or "tab", "xls";
// anything else is comma text. The file is written whole and replaced only when that worked.
base::Status SaveReportTable(const std::string& path, const ReportTable& table);

// Comma text back into rows; the first line is the heading row. `rowLines`, when given,
// receives the line number (from 1) on which each data row starts.
ReportTable ParseCsv(const std::string& text, std::vector<long>* rowLines = nullptr);

}  // namespace ferrolund::services
