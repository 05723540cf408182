#pragma once
// frmAPConsists, "Build List of Routes & Scenarios  in .AP files": the .ap archives below
// a folder, the ScenarioProperties.xml files inside the chosen ones, and the main grid (the
// asset screens' shared grid) with the route and scenario of each chosen file. The logic
// is the ApConsists model's; this form holds the widgets.

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/ap_consists.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace ferrolund::screens {

class AssetGrid;

class frmAPConsists : public QDialog {
    Q_OBJECT
public:
    explicit frmAPConsists(app::AppContext& ctx, QWidget* parent = nullptr);

    assets::ApConsists& model() { return model_; }
    AssetGrid* grid() const { return grid_; }
    QListWidget* archiveList() const { return archives_; }
    QListWidget* propertiesList() const { return properties_; }
    QPushButton* button(const std::string& name) const;
    QLineEdit* folder() const { return folder_; }

    void findArchives();
    void findScenarioProperties();
    void addDetails();

private:
    QPushButton* addButton(const std::string& name, const char* caption);
    static std::vector<std::size_t> Chosen(const QListWidget* list);

    app::AppContext& ctx_;
    assets::ApConsists model_;
    AssetGrid* grid_;
    QLineEdit* folder_;
    QListWidget* archives_;
    QListWidget* properties_;
    std::map<std::string, QPushButton*> buttons_;
};

// Opens the screen, not modal, deleted when closed.
frmAPConsists* ShowApConsists(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
