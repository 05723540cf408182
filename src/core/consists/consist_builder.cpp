#include "consists/consist_builder.h"

#include <algorithm>

#include "assets/asset_index.h"

namespace ferrolund::consists {

namespace {

// The most copies "Insert Multiple Times" makes in one go.
constexpr long kMostInstances = 1000;

void Tell(app::AppContext& ctx, const std::string& text, base::Icon icon = base::Icon::Exclamation) {
    ctx.ui->message(text, icon);
}

std::vector<assets::AssetRow> WithoutHeadings(std::vector<assets::AssetRow> rows) {
    std::erase_if(rows, [](const assets::AssetRow& row) { return assets::IsHeadingRow(row); });
    return rows;
}

}  // namespace

bool ConsistBuilder::open(bool suppressMissing) {
    LoadedTemplates loaded = LoadConsistTemplates(ctx_, suppressMissing);
    if (loaded.state == LoadState::Declined || loaded.state == LoadState::Invalid) return false;
    file_ = std::move(loaded.file);
    newMode_ = false;
    loadMainIndex();
    return true;
}

void ConsistBuilder::loadMainIndex() {
    assets::LoadedIndex index = assets::LoadAssetIndex(assets::IndexFilePath(ctx_));
    stock_.clear();
    if (!index.found) {
        Tell(ctx_, std::string(assets::kNoIndexFileMessage) + "\n" + kNoIndexHint, base::Icon::Information);
        return;
    }
    stock_ = WithoutHeadings(std::move(index.rows));
}

bool ConsistBuilder::selectIndexFile() {
    const std::optional<std::string> path = ctx_.ui->chooseOpenFile(kIndexDialogTitle, kIndexFilter, ctx_.appPath("Reports"));
    if (!path || path->empty()) return false;
    assets::LoadedIndex index = assets::LoadAssetIndex(*path);
    if (!index.found) {
        Tell(ctx_, "The index file " + *path + " could not be read.");
        return false;
    }
    stock_ = WithoutHeadings(std::move(index.rows));
    return true;
}

bool ConsistBuilder::loadPool() {
    const std::optional<std::string> path = ctx_.ui->chooseOpenFile(kPoolDialogTitle, kPoolFilter, ctx_.appPath("Reports"));
    if (!path || path->empty()) return false;
    std::vector<assets::AssetRow> pool;
    if (base::Status failed = ReadStockList(*path, pool)) {
        Tell(ctx_, failed->description);
        return false;
    }
    stock_ = std::move(pool);
    return true;
}

bool ConsistBuilder::startConsist(const std::optional<std::string>& typed) {
    if (!typed || typed->empty()) return false;
    newConsist_ = NewConsistIdentity(FileFormName(*typed));
    newMode_ = true;
    return true;
}

bool ConsistBuilder::addNewConsist() {
    if (!startConsist(ctx_.ui->input(kNewNameTitle, kNewNamePrompt, ""))) return false;
    Tell(ctx_, kNewConsistHint, base::Icon::Information);
    return true;
}

bool ConsistBuilder::beginNewConsist() { return startConsist(ctx_.ui->input(kNewNameTitle, kNewNamePrompt, "")); }

std::size_t ConsistBuilder::generate(long wagons, long randomness, const RandomSource& random) {
    if (!newMode_) return 0;
    if (stock_.empty()) {
        Tell(ctx_, kNoStockMessage);
        return 0;
    }
    const std::vector<std::size_t> draws = GenerateDraws(stock_.size(), wagons, randomness, random);
    for (std::size_t draw : draws) file_.rows.push_back(EntryFor(stock_[draw], newConsist_));
    return draws.size();
}

std::vector<assets::AssetRow> ConsistBuilder::chosenStock(const std::vector<std::size_t>& stockRows) const {
    std::vector<std::size_t> chosen = stockRows;
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    std::vector<assets::AssetRow> out;
    for (std::size_t r : chosen)
        if (r < stock_.size()) out.push_back(stock_[r]);
    return out;
}

bool ConsistBuilder::placeAndStock(bool placed, const std::vector<std::size_t>& stockRows,
                                   std::vector<assets::AssetRow>& chosen) {
    if (!placed) {
        Tell(ctx_, kNoPlaceMessage);
        return false;
    }
    chosen = chosenStock(stockRows);
    if (chosen.empty()) Tell(ctx_, kNoStockMessage);
    return !chosen.empty();
}

bool ConsistBuilder::addSelectedStock(const std::vector<std::size_t>& stockRows) {
    const std::vector<assets::AssetRow> chosen = chosenStock(stockRows);
    if (chosen.empty()) {
        Tell(ctx_, kNoStockMessage);
        return false;
    }
    if (!newMode_) {
        Tell(ctx_, kPlaceStockHint, base::Icon::Information);
        return false;
    }
    AppendStock(file_.rows, newConsist_, chosen);
    return true;
}

std::vector<std::size_t> ConsistBuilder::insertAfter(std::optional<std::size_t> row,
                                                     const std::vector<std::size_t>& stockRows, bool askTimes) {
    std::vector<assets::AssetRow> chosen;
    if (!placeAndStock(row && *row < file_.rows.size(), stockRows, chosen)) return {};
    long times = 1;
    if (askTimes) {
        const std::optional<std::string> typed = ctx_.ui->input(kMultipleTitle, kMultiplePrompt, "");
        if (!typed) return {};
        times = std::min(WholeNumber(*typed), kMostInstances);
        if (times < 1) return {};
    }
    return InsertAfter(file_.rows, *row, chosen, static_cast<int>(times));
}

std::vector<std::size_t> ConsistBuilder::replaceItems(const std::vector<std::size_t>& selected,
                                                      const std::vector<std::size_t>& stockRows) {
    const bool placed =
        std::any_of(selected.begin(), selected.end(), [this](std::size_t r) { return r < file_.rows.size(); });
    std::vector<assets::AssetRow> chosen;
    if (!placeAndStock(placed, stockRows, chosen)) return {};
    return ReplaceRows(file_.rows, selected, chosen);
}

bool ConsistBuilder::deleteItems(const std::vector<std::size_t>& selected) {
    const std::size_t before = file_.rows.size();
    DeleteRows(file_.rows, selected);
    if (file_.rows.size() == before) {
        Tell(ctx_, kNoDeleteMessage);
        return false;
    }
    return true;
}

bool ConsistBuilder::flipItems(const std::vector<std::size_t>& selected) {
    if (selected.empty()) return false;
    FlipRows(file_.rows, selected);
    return true;
}

bool ConsistBuilder::renameConsist(const std::vector<std::size_t>& selected) {
    if (std::none_of(selected.begin(), selected.end(), [this](std::size_t r) { return r < file_.rows.size(); })) {
        Tell(ctx_, kNoRenameMessage);
        return false;
    }
    const std::optional<std::string> typed = ctx_.ui->input(kRenameTitle, kRenamePrompt, "");
    if (!typed || typed->empty()) return false;
    RenameRows(file_.rows, selected, FileFormName(*typed));
    return true;
}

std::optional<std::size_t> ConsistBuilder::search(const std::string& typed, std::optional<std::size_t> current) {
    const std::optional<std::size_t> found = FindName(file_.rows, typed, current);
    if (!found) Tell(ctx_, kSearchFailedMessage, base::Icon::Information);
    return found;
}

std::optional<std::size_t> ConsistBuilder::searchStock(const std::string& typed, std::optional<std::size_t> current) {
    const std::optional<std::size_t> found = FindStockName(stock_, typed, current);
    if (!found) Tell(ctx_, kSearchFailedMessage, base::Icon::Information);
    return found;
}

void ConsistBuilder::clearGrid() { file_.rows.clear(); }

SaveResult ConsistBuilder::save() {
    const SaveResult result = SaveConsistTemplates(ctx_, file_);
    if (result.written) newMode_ = false;
    return result;
}

}  // namespace ferrolund::consists
