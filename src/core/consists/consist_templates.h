#pragma once
// The player's saved consists, GameRoot\Content\ConsistTemplates.bin: the named trains the
// simulator's own editor offers. The file is read through its XML text into flat rows, one
// a vehicle, and written anew from such rows: a consist is a run of neighbouring rows with
// the same name, and nothing else of the file's structure is kept. The text is built from
// three templates of AppRoot\Templates with markers:
//   ConsistHeader.txt         qqqqq  the record set's id
//   ConsistName.txt           zzzzz  the consist's id, xxxxx its name, yyyyy its Key
//   ConsistTemplateEntry.txt  aaaaa  the entry's id, bbbbb Provider, ccccc Product,
//                             ddddd BlueprintID, eeeee Flipped
// Every id is a nine-digit delta id; ids read from the file are kept on a rewrite.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::consists {

inline constexpr const char* kNoSavedConsistsMessage = "You currently don't have any saved consists.";
inline constexpr const char* kCreateQuestion = "Do you wish to create some?";
inline constexpr const char* kInvalidFileMessage = "This Consist Template file appears to be invalid.";
inline constexpr const char* kNotWrittenMessage =
    "Your new ConsistTemplate.bin file was not written.\nNo changes have been made to the original.";
inline constexpr const char* kReadyMessage = "Your new ConsistTemplate.bin file is now ready for use.";
// A file without consists could not be opened again: an empty grid is not saved.
inline constexpr const char* kNothingToSaveMessage = "There are no consists to save, so the file has not been changed.";
inline constexpr const char* kSuppressQuestion =
    "Do you wish to suppress 'Missing item' error messages\nwhile this screen loads?";
inline constexpr const char* kMissingStockMessage = "The following rolling-stock listed in the consist is missing";
inline constexpr const char* kMissingStockTitle = "Missing rolling-stock";

// What follows the last consist: the record and the record set closed.
inline constexpr std::string_view kTemplatesTail = "\t</Record>\r\n</cRecordSet>";
// What follows the last vehicle of a consist.
inline constexpr std::string_view kConsistClose = "\t\t\t</ConsistEntry>\r\n\t\t</cConsistTemplate>\r\n";

inline constexpr std::size_t kTemplateColumns = 8;
inline constexpr std::array<std::string_view, kTemplateColumns> kTemplateHeadings{
    "Consist Name", "Key", "Consist ID", "Provider", "Product", "BlueprintID", "Flipped", "Entry ID"};

// One vehicle of a saved consist, with the consist it belongs to. Texts are as the XML
// holds them (names with their entities and UTF-8 pairs).
struct TemplateRow {
    std::string name;         // the consist's name
    std::string key;          // the consist's Key, a GUID in text form
    std::string consistId;    // the consist's d:id
    std::string provider;
    std::string product;
    std::string blueprintId;  // relative to Provider\Product, ending in .xml
    std::string flipped;      // "0" or "1"
    std::string entryId;      // the entry's d:id

    std::vector<std::string> Cells() const {
        return {name, key, consistId, provider, product, blueprintId, flipped, entryId};
    }
    bool operator==(const TemplateRow&) const = default;
};

// The file in the builder's form: the text ahead of the first consist, and the rows.
struct TemplateFile {
    std::string head;
    std::vector<TemplateRow> rows;
};

// The three template texts.
struct TemplateTexts {
    std::string header;
    std::string name;
    std::string entry;
};

// GameRoot\Content\ConsistTemplates.bin.
std::string ConsistTemplatesPath(const app::AppContext& ctx);

// Reads the three templates of AppRoot\Templates; an error names a missing or empty one.
base::Status ReadTemplateTexts(const base::RunContext& ctx, TemplateTexts& texts);

// The head of a new file: the header template with a fresh id.
std::string NewHead(const TemplateTexts& texts);

// The rows of the XML text. False when the text holds no "<cConsistTemplate" or a consist
// is not closed: the file is then not one this program can rewrite. The head is the text
// ahead of the first consist, up to the end of its last line.
bool ParseConsistTemplates(std::string_view xml, TemplateFile& file);

// The XML text of a file: the head, each run of same-named neighbouring rows as one
// consist (the first row of the run gives its id and Key), the tail.
std::string ConsistTemplatesXml(const TemplateFile& file, const TemplateTexts& texts);
// One consist's text: the name template, an entry per row, the closing lines.
std::string ConsistXml(const std::vector<TemplateRow>& rows, std::size_t first, std::size_t end,
                       const TemplateTexts& texts);

// The file's text with one more consist behind the others: the XML of the existing file
// up to its "</Record" (a new head when `existing` is null), the rows as one consist, the
// tail. False when the existing text has no "</Record".
bool WithConsistAdded(const std::string* existing, const std::vector<TemplateRow>& rows, const TemplateTexts& texts,
                      std::string& xml);

// The vehicle's blueprint file under GameRoot\Assets, and whether it is absent under its
// plain and its decoded name.
std::string StockFile(const std::string& gameRoot, const TemplateRow& row);
bool StockMissing(const std::string& gameRoot, const TemplateRow& row);

// A consist of the rows: [first, end) with one name.
struct ConsistSpan {
    std::size_t first = 0;
    std::size_t end = 0;
};
// The runs of neighbouring rows with the same name, in order.
std::vector<ConsistSpan> ConsistSpans(const std::vector<TemplateRow>& rows);

// A name as a person typed it (UTF-8) in the form the XML holds.
std::string FileFormName(std::string_view typed);

enum class LoadState {
    Loaded,    // the file was read
    New,       // there was none, and the person wants to make one: an empty file with a new head
    Declined,  // there was none, and the person does not want one
    Invalid,   // the file could not be read as saved consists (the person was told)
};

struct LoadedTemplates {
    LoadState state = LoadState::Invalid;
    TemplateFile file;
    std::vector<bool> missing;  // per row: its blueprint is not installed
};

// Opens the saved consists as the builder does: asks about creating a file when there is
// none, refuses an invalid one, and tells each vehicle whose blueprint is missing unless
// `suppressMissing`; such rows are kept all the same.
LoadedTemplates LoadConsistTemplates(app::AppContext& ctx, bool suppressMissing);

struct SaveResult {
    bool written = false;
    std::string backup;  // the old file's new name; empty when there was none
};

// Compiles `xml` in AppRoot\TempFiles (ConsistTemplates.xml to ConsistTemplates.bin) and,
// when that gave a file with length, puts it in place of the saved consists, the old file
// renamed to ConsistTemplates.bak (or .bak1 ...). The person is told the outcome; nothing
// is changed when any step fails.
SaveResult WriteConsistTemplates(app::AppContext& ctx, const std::string& xml);

// The builder's Save: the file's text from the rows, then WriteConsistTemplates. Without
// rows nothing is written.
SaveResult SaveConsistTemplates(app::AppContext& ctx, const TemplateFile& file);

}  // namespace ferrolund::consists
