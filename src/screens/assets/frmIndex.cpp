#include "screens/assets/frmIndex.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"

namespace ferrolund::screens {

frmIndex::frmIndex(app::AppContext& ctx, Pick pick, QWidget* parent)
    : QDialog(parent), ctx_(ctx), pick_(std::move(pick)) {
    setObjectName("frmIndex");
    setWindowTitle("Rolling-Stock index");
    setSizeGripEnabled(true);
    AssetGridSetup setup;
    setup.headings.assign(assets::kAssetHeadings.begin(), assets::kAssetHeadings.end());
    setup.widthsTwips = {1995, 1995, 6000, 3000, 1020, 2505, 2505, 600};
    setup.printTitle = "Rolling-Stock index";
    grid_ = new AssetGrid(ctx_, setup, this);
    pickButton_ = new QPushButton("Use Selected Stock", this);
    pickButton_->setObjectName("cmdPick");
    pickButton_->setAutoDefault(false);
    pickButton_->setVisible(static_cast<bool>(pick_));
    connect(pickButton_, &QPushButton::clicked, this, &frmIndex::pickSelected);
    connect(grid_->view(), &QTableView::doubleClicked, this, [this] {
        if (pick_) pickSelected();
    });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(pickButton_);
    layout->addLayout(bottom);
    resize(1100, 640);
}

bool frmIndex::openIndex() {
    const assets::LoadedIndex index = assets::OpenRollingStockIndex(ctx_);
    if (!index.found) return false;
    showIndex(index);
    return true;
}

void frmIndex::showIndex(const assets::LoadedIndex& index) {
    rows_.clear();
    std::vector<std::vector<std::string>> cells;
    for (const auto& row : index.rows) {
        if (assets::IsHeadingRow(row)) continue;
        rows_.push_back(row);
        cells.push_back(row.Cells());
    }
    grid_->clearList();
    grid_->appendRows(std::move(cells));
    if (index.problems.empty() || !ctx_.ui) return;
    std::string text = "Some lines of the index could not be read and are not shown:";
    for (std::size_t i = 0; i < index.problems.size() && i < 10; ++i)
        text += "\r\nLine " + std::to_string(index.problems[i].line) + ": " + index.problems[i].text;
    if (index.problems.size() > 10) text += "\r\n... and " + std::to_string(index.problems.size() - 10) + " more.";
    ctx_.ui->message(text, base::Icon::Exclamation);
}

void frmIndex::pickSelected() {
    const std::vector<assets::AssetRow> picked = assets::PickRollingStock(ctx_, rows_, grid_->selectedRows());
    if (picked.empty()) return;
    if (pick_) pick_(picked);
    accept();
}

void ShowStockIndex(app::AppContext& ctx, QWidget* parent) {
    auto* screen = new frmIndex(ctx, {}, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    if (!screen->openIndex()) {
        delete screen;
        return;
    }
    screen->show();
}

}  // namespace ferrolund::screens
