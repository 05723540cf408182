#pragma once
// frmIndex, "Rolling-Stock index": the asset index shown as a list, sorted by provider,
// from which other screens pick rolling stock.

#include <QDialog>
#include <functional>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_index.h"

class QPushButton;

namespace ferrolund::screens {

class AssetGrid;

class frmIndex : public QDialog {
    Q_OBJECT
public:
    // With `pick` set, the pick button and a double click hand the chosen rows over (their
    // Provider, Product, Name, Category and Path are the caller's).
    using Pick = std::function<void(const std::vector<assets::AssetRow>&)>;
    frmIndex(app::AppContext& ctx, Pick pick = {}, QWidget* parent = nullptr);

    AssetGrid* grid() const { return grid_; }
    QPushButton* pickButton() const { return pickButton_; }
    // Asks which index to use and shows it; false when none could be read.
    bool openIndex();
    // Shows an index already read.
    void showIndex(const assets::LoadedIndex& index);
    void pickSelected();

private:
    app::AppContext& ctx_;
    Pick pick_;
    AssetGrid* grid_ = nullptr;
    QPushButton* pickButton_ = nullptr;
    std::vector<assets::AssetRow> rows_;  // as shown, heading rows of appended parts left out
};

// The main menu's "View Rolling-stock list".
void ShowStockIndex(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
