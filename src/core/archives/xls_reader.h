#pragma once
// Reading a worksheet saved as .xls back into grid rows, for "Open Excel Reports". The
// form read is the plain BIFF stream (BIFF2 to BIFF5, and BIFF8 cells): text cells
// (LABEL), numbers (NUMBER, RK) and, for BIFF2, integers. A workbook inside an OLE
// compound file, shared strings and formulas are not read: such a file, like a broken or
// cut one, gives an error value and no rows.

#include <string_view>
#include <variant>

#include "base/run_error.h"
#include "services/report_table.h"

namespace ferrolund::archives {

// The first row becomes the heading row, as for comma text.
std::variant<services::ReportTable, base::RunError> ParseXls(std::string_view bytes);

}  // namespace ferrolund::archives
