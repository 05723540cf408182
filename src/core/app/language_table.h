#pragma once
// The table of translatable texts, Lang(n), read from "Language\Lang_<Language>.txt".

#include <optional>
#include <string>
#include <vector>

#include "base/run_error.h"

namespace ferrolund::app {

class LanguageTable {
public:
    // Record i of the text goes to text i, whatever number the record carries; a record
    // numbered 0 ends the table.
    void parse(const std::string& fileText);
    // Text n, counted from 1; a number outside the table is the subscript error.
    std::optional<std::string> text(int n) const;
    int count() const { return static_cast<int>(texts_.size()); }

private:
    std::vector<std::string> texts_;
};

}  // namespace ferrolund::app
