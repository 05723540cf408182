#pragma once
// The state and commands of the consist builder ("Saved Consists"): the saved consists as
// flat rows, the stock to choose from (an asset index or a pool of wagons), and the
// consist being made. The screen shows this and passes its selections in; every question
// and message goes through the context's Ui.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "consists/consist_rows.h"
#include "consists/consist_templates.h"

namespace ferrolund::consists {

inline constexpr const char* kNoStockMessage = "You do not appear to have selected any rolling stock";
inline constexpr const char* kNoPlaceMessage = "You do not appear to have selected somewhere to place rolling stock";
inline constexpr const char* kNoDeleteMessage = "You do not appear to have selected an item to delete?";
inline constexpr const char* kNoRenameMessage = "You do not appear to have selected a Consist to rename?";
inline constexpr const char* kNewNamePrompt = "Name of new consist";
inline constexpr const char* kNewNameTitle = "Consist Name";
inline constexpr const char* kNewConsistHint =
    "Select rolling stock for new consist from the box below, they will be added to the \n"
    "top box in order. When finished click the 'Save' button.";
inline constexpr const char* kRenamePrompt =
    "Enter new name for selected Consist (make sure you have select all lines of consist)";
inline constexpr const char* kRenameTitle = "Rename Consist";
inline constexpr const char* kMultiplePrompt = "How many instances do you wish to install?";
inline constexpr const char* kMultipleTitle = "Install multiple times";
inline constexpr const char* kSearchFailedMessage = "Search did not find that item.";
inline constexpr const char* kNoIndexHint =
    "A new one can be generated from the Asset Editor, or select one from the 'Files menu'.";
// Told when stock is added with no consist being made.
inline constexpr const char* kPlaceStockHint =
    "Start a consist with 'Add New Consist', or place the stock with 'Insert after Selected'\n"
    "or 'Replace Item(s)' on the consists above.";

inline constexpr const char* kIndexDialogTitle = "Open Index file";
inline constexpr const char* kIndexFilter = "Index Files(*.csv)|*.csv";
inline constexpr const char* kPoolDialogTitle = "Load Pool of Wagons";
inline constexpr const char* kPoolFilter =
    "Pool of Wagons (*.csv *.txt *.tab *.xls)|*.csv;*.txt;*.tab;*.xls|All Files (*.*)|*.*";

class ConsistBuilder {
public:
    explicit ConsistBuilder(app::AppContext& ctx) : ctx_(ctx) {}

    // Reads the saved consists (or starts a new file when there are none and the person
    // wants one), then the main index as the stock. False when the screen is not to open.
    bool open(bool suppressMissing);

    std::vector<TemplateRow>& rows() { return file_.rows; }
    const std::vector<TemplateRow>& rows() const { return file_.rows; }
    const std::vector<assets::AssetRow>& stock() const { return stock_; }
    bool newConsistMode() const { return newMode_; }
    const ConsistIdentity& newConsist() const { return newConsist_; }

    // IndexFiles\index.csv as the stock; told when it is absent (the stock is then empty).
    void loadMainIndex();
    // "Select Index File" and "Load Pool of Wagons": a file chosen in AppRoot\Reports
    // replaces the stock. False when nothing was chosen or it could not be read (told).
    bool selectIndexFile();
    bool loadPool();
    // Replaces the stock (a file already read).
    void setStock(std::vector<assets::AssetRow> stock) { stock_ = std::move(stock); }

    // "Add New Consist": asks the name and starts the consist, telling how to go on.
    bool addNewConsist();
    // The first step of "Generate Consist": asks the name and starts the consist.
    bool beginNewConsist();
    // "Generate Consist" once the number of wagons and the randomness are known: each draw
    // adds its pool row to the consist being made. Gives the number of rows added.
    std::size_t generate(long wagons, long randomness, const RandomSource& random);

    // Command2: adds the chosen stock rows to the consist being made.
    bool addSelectedStock(const std::vector<std::size_t>& stockRows);
    // "Insert after Selected" (`times` 1) and "Insert Multiple Times" (asks how many).
    // Gives the rows added.
    std::vector<std::size_t> insertAfter(std::optional<std::size_t> row, const std::vector<std::size_t>& stockRows,
                                         bool askTimes);
    // "Replace Item(s)". Gives the rows now in the selected rows' places.
    std::vector<std::size_t> replaceItems(const std::vector<std::size_t>& selected,
                                          const std::vector<std::size_t>& stockRows);
    bool deleteItems(const std::vector<std::size_t>& selected);
    bool flipItems(const std::vector<std::size_t>& selected);
    bool renameConsist(const std::vector<std::size_t>& selected);
    // "Search for Name:" from the row after `current`; told when nothing is found.
    std::optional<std::size_t> search(const std::string& typed, std::optional<std::size_t> current);
    // The same search in the stock's Name column.
    std::optional<std::size_t> searchStock(const std::string& typed, std::optional<std::size_t> current);
    // "Clear Grid": no saved consists left in the grid (the file changes only at a save).
    void clearGrid();

    // Command8. The new-consist mode ends with a save that wrote the file.
    SaveResult save();

private:
    std::vector<assets::AssetRow> chosenStock(const std::vector<std::size_t>& stockRows) const;
    bool startConsist(const std::optional<std::string>& typed);
    // Whether a place in the rows is chosen and stock to put there (then in `chosen`);
    // tells what is missing.
    bool placeAndStock(bool placed, const std::vector<std::size_t>& stockRows, std::vector<assets::AssetRow>& chosen);

    app::AppContext& ctx_;
    TemplateFile file_;
    std::vector<assets::AssetRow> stock_;
    bool newMode_ = false;
    ConsistIdentity newConsist_;
};

}  // namespace ferrolund::consists
