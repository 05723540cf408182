#pragma once
// frmMix, "Clear MixMap Files": the files of a route's MixMap folder with a mark each;
// "Process" replaces the terrain mix of every marked .bin by a blank one.

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_maintenance.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace ferrolund::screens {

class frmMix : public QDialog {
    Q_OBJECT
public:
    // Runs long work; the route browser's runLong shows the progress and "&Abort". By
    // default the work is simply run.
    using LongRun = std::function<bool(const std::function<void()>&)>;

    frmMix(app::AppContext& ctx, std::string folder, LongRun runLong = {}, QWidget* parent = nullptr);

    QListWidget* files() const { return list1_; }
    // The names of the marked files, in list order.
    std::vector<std::string> markedFiles() const;

    // Lists the folder's files again, none marked.
    void loadFiles();
    // "Select All".
    void selectAll();
    // "Process": the marked files cleared, then the list again.
    void process();

    const routes::MixMapClearing& lastRun() const { return last_; }

private:
    app::AppContext& ctx_;
    std::string folder_;
    LongRun runLong_;
    QLabel* folderLabel_;
    QListWidget* list1_;
    QPushButton* selectAll_;
    QPushButton* process_;
    QPushButton* close_;
    routes::MixMapClearing last_;
};

}  // namespace ferrolund::screens
