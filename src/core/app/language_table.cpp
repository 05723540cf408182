#include "app/language_table.h"

#include "app/value_reader.h"
#include "tools/names.h"

namespace ferrolund::app {

void LanguageTable::parse(const std::string& fileText) {
    texts_.clear();
    ValueReader reader(fileText);
    while (true) {
        const auto number = reader.next();
        if (!number) break;
        std::int16_t n = 0;
        if (ToInt16(*number, n) || n == 0) break;  // a record numbered 0 ends the table
        const auto text = reader.next();
        if (!text) break;                          // a number without its text is no record
        // A table written as Windows-1252 text reads the same as one written in UTF-8.
        texts_.push_back(tools::ShownText(text->text));
    }
}

std::optional<std::string> LanguageTable::text(int n) const {
    if (n < 1 || n > count()) return std::nullopt;
    return texts_[static_cast<std::size_t>(n - 1)];
}

}  // namespace ferrolund::app
