#include "simdata/physics_grid.h"

#include "assets/blueprint.h"
#include "serz/codec.h"
#include "serz/xml_text.h"
#include "tools/codepage.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::simdata {

namespace {

using tools::InStr;

std::string Open(std::string_view tag) { return "<" + std::string(tag); }
std::string Close(std::string_view tag) { return "</" + std::string(tag); }

bool Within(long at, long bound) { return at > 0 && (bound == 0 || at < bound); }

// The end of the element whose "<tag" stands at `at`: its "</tag>", 0 when it has none.
long ElementEnd(std::string_view text, long at, std::string_view tag) {
    return InStr(at, text, Close(tag) + ">");
}

bool SelfClosed(std::string_view text, long at, std::string_view tag) {
    return tools::Mid(text, at + 1 + static_cast<long>(tag.size()), 2) == "/>";
}

const char* const kTripleTags[] = {"Provider", "Product", "BlueprintID"};

// The three values of a reference that starts at `at`, each searched on from the last,
// within `end` (0: anywhere). `pos` is left behind the last one found.
void ReadTripleValues(std::string_view text, long at, long end, std::string (&values)[3], long& pos) {
    long from = at;
    for (int i = 0; i < 3; ++i) {
        const long hit = FindElement(text, from, kTripleTags[i], end);
        if (hit == 0) continue;
        long p = hit;
        tools::GetDetail(text, p, kTripleTags[i], values[i], tools::kPhysicsTagOptions);
        if (p > 0) from = pos = p;
    }
}

bool IsSection(const GridTag& tag) { return tag.kind == RowKind::Heading || tag.kind == RowKind::Block; }

struct Reader {
    std::string_view text;
    std::span<const GridTag> tags;
    bool steam = false;
    const std::string& gameRoot;
    GridRead out;
    long pos = 1;

    // The entries that belong to tags[i]: up to the next one at its level or lower.
    std::size_t OwnEnd(std::size_t i, std::size_t to) const {
        std::size_t end = i + 1;
        while (end < to && tags[end].level > tags[i].level) ++end;
        return end;
    }

    // A value that stands between sections ends where the next listed section of the
    // text begins: one the file lacks is then an empty row, and the search for it does
    // not run on into a later section's value of the same name.
    long NextSection(std::size_t i, std::size_t to, long bound) const {
        for (std::size_t j = i + 1; j < to; ++j) {
            if (tags[j].level != tags[i].level || !IsSection(tags[j])) continue;
            if (const long at = FindElement(text, pos, tags[j].tag, bound)) return at;
        }
        return bound;
    }

    void Value(const GridTag& tag, long bound) {
        const long from = pos;
        std::optional<GridRow> row = ReadRow(text, pos, tag, bound);
        if (!row) {
            out.rows.push_back({tag.tag, {}, from, tag.kind});
            return;
        }
        if (tag.kind == RowKind::CsvFile && !row->data.empty()) {
            const int curve = CurveForFile(row->data);
            if (curve >= 0 && kCurves[static_cast<std::size_t>(curve)].steam == steam)
                out.curves[static_cast<std::size_t>(curve)] = CurveFilePath(gameRoot, row->data);
        }
        out.rows.push_back(std::move(*row));
    }

    // A section or a repeating block: nothing when it is missing or written "<tag/>".
    void Section(std::size_t i, std::size_t to, long bound) {
        const GridTag& tag = tags[i];
        const long at = FindElement(text, pos, tag.tag, bound);
        if (at == 0 || SelfClosed(text, at, tag.tag)) return;
        out.rows.push_back({tag.tag, {}, std::nullopt, tag.kind});
        long end = ElementEnd(text, at, tag.tag);
        if (end == 0 || (bound > 0 && end > bound)) end = bound;
        pos = at;
        if (tag.kind == RowKind::Heading) {
            Range(i + 1, to, end);
            // What follows the section stands behind it.
            if (end > pos) pos = end;
            return;
        }
        // A block: its rows again for every entry whose first tag lies before its end.
        if (i + 1 == to) return;
        while (Within(FindElement(text, pos, tags[i + 1].tag, end), end)) {
            const long before = pos;
            Range(i + 1, to, end);
            if (pos <= before) break;  // nothing read: the entry would repeat for ever
        }
        if (end > 0) pos = end;
    }

    void Range(std::size_t from, std::size_t to, long bound) {
        for (std::size_t i = from; i < to;) {
            const std::size_t end = OwnEnd(i, to);
            if (IsSection(tags[i])) {
                Section(i, end, bound);
            } else {
                Value(tags[i], NextSection(i, to, bound));
            }
            i = end;
        }
    }
};

// Moves the keys behind `at` by `shift` characters.
void ShiftKeys(std::vector<GridRow>& rows, std::size_t edited, long at, long shift) {
    if (shift == 0) return;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i != edited && rows[i].key && *rows[i].key > at) *rows[i].key += shift;
    }
}

}  // namespace

long FindElement(std::string_view text, long from, std::string_view tag, long bound) {
    const std::string open = Open(tag);
    for (long at = InStr(from, text, open); Within(at, bound); at = InStr(at + 1, text, open)) {
        const std::string_view next = tools::Mid(text, at + static_cast<long>(open.size()), 1);
        if (next.empty() || next == ">" || next == "/" || next == " " || next == "\t" || next == "\r" || next == "\n")
            return at;
    }
    return 0;
}

std::optional<GridRow> ReadRow(std::string_view text, long& pos, const GridTag& tag, long bound) {
    const long at = FindElement(text, pos, tag.tag, bound);
    if (at == 0) return std::nullopt;
    GridRow row{tag.tag, {}, at, tag.kind};
    if (tag.kind == RowKind::Triple) {
        if (SelfClosed(text, at, tag.tag)) {
            pos = at;
            return row;
        }
        std::string values[3];
        long end = ElementEnd(text, at, tag.tag);
        if (bound > 0 && (end == 0 || end > bound)) end = bound;
        long after = at;
        ReadTripleValues(text, at, end, values, after);
        if (!(values[0].empty() && values[1].empty() && values[2].empty()))
            row.data = values[0] + "\\" + values[1] + "\\" + values[2];
        pos = end > 0 ? end : after;
        return row;
    }
    long p = at;
    if (tools::GetDetail(text, p, tag.tag, row.data, tools::kPhysicsTagOptions) || p == 0) {
        row.data.clear();  // an element without its end: shown empty, its edit refused
        return row;
    }
    // An element that holds others ("<Name>" around the localised names) is a head.
    if (row.data.find('<') != std::string::npos) {
        row.data.clear();
        row.key.reset();
        row.kind = RowKind::Heading;
        pos = at;
        return row;
    }
    pos = p;
    return row;
}

GridRead ReadGrid(std::string_view text, GridKind grid, const std::string& gameRoot) {
    Reader reader{text, GridTags(grid), grid == GridKind::Steam, gameRoot, {}};
    const std::string classWord = assets::ClassWord(text);
    if (!classWord.empty()) reader.out.rows.push_back({"c" + classWord, {}, std::nullopt, RowKind::Heading});
    reader.Range(0, reader.tags.size(), 0);
    return std::move(reader.out);
}

std::string KeyNotFoundMessage(std::string_view tag) { return "The Key " + std::string(tag) + " was not found"; }

EditOutcome EditRow(std::string& text, std::vector<GridRow>& rows, std::size_t index, std::string_view typed) {
    EditOutcome outcome;
    if (index >= rows.size() || rows[index].heading()) return outcome;
    GridRow& row = rows[index];
    const long at = FindElement(text, *row.key, row.item);
    if (at == 0) {
        outcome.message = KeyNotFoundMessage(row.item);
        return outcome;
    }
    if (SelfClosed(text, at, row.item)) {
        outcome.message = "The Key " + row.item + " is an empty element in this file and takes no value here";
        return outcome;
    }
    const std::size_t before = text.size();
    std::string stored;
    if (row.kind == RowKind::Triple) {
        std::string parts[3];
        if (!typed.empty()) {
            const std::size_t first = typed.find('\\');
            const std::size_t second = first == std::string_view::npos ? first : typed.find('\\', first + 1);
            if (second == std::string_view::npos) {
                outcome.message = assets::InvalidPathMessage(std::string(typed));
                return outcome;
            }
            parts[0] = typed.substr(0, first);
            parts[1] = typed.substr(first + 1, second - first - 1);
            parts[2] = typed.substr(second + 1);
        }
        const long end = ElementEnd(text, at, row.item);
        for (int i = 0; i < 3; ++i) {
            if (FindElement(text, at, kTripleTags[i], end) == 0) {
                outcome.message = KeyNotFoundMessage(kTripleTags[i]);
                return outcome;
            }
        }
        long from = at;
        for (int i = 0; i < 3; ++i) {
            long p = FindElement(text, from, kTripleTags[i]);
            if (tools::PutDetail(text, p, kTripleTags[i], serz::XmlText(parts[i]), tools::kPhysicsTagOptions) || p == 0) {
                outcome.message = KeyNotFoundMessage(kTripleTags[i]);
                outcome.changed = text.size() != before;
                return outcome;
            }
            from = p;
        }
        stored = parts[0].empty() && parts[1].empty() && parts[2].empty()
                     ? std::string()
                     : serz::XmlText(parts[0]) + "\\" + serz::XmlText(parts[1]) + "\\" + serz::XmlText(parts[2]);
    } else {
        long p = at;
        stored = serz::XmlText(tools::TrimBlanks(typed));
        if (tools::PutDetail(text, p, row.item, stored, tools::kPhysicsTagOptions) || p == 0) {
            outcome.message = KeyNotFoundMessage(row.item);
            return outcome;
        }
    }
    ShiftKeys(rows, index, at, static_cast<long>(text.size()) - static_cast<long>(before));
    row.key = at;
    row.data = stored;
    outcome.changed = true;
    return outcome;
}

std::string ShownData(std::string_view data) {
    std::string out;
    std::size_t bad = 0;
    if (!serz::Unescape(data, out, bad)) return std::string(data);
    return out;
}

std::string CurveFilePath(const std::string& gameRoot, std::string_view csvFile) {
    std::string_view value = csvFile;
    for (std::string_view extension : {".dcsv", ".csv"}) {
        if (value.size() > extension.size() &&
            tools::EqualsIgnoreCase(value.substr(value.size() - extension.size()), extension)) {
            value.remove_suffix(extension.size());
            break;
        }
    }
    return gameRoot + "\\Assets\\" + std::string(value) + ".dcsv";
}

}  // namespace ferrolund::simdata
