#include "screens/assets/clone_commands.h"

#include <QMenu>

#include "assets/clone_provider.h"
#include "assets/clone_reskin.h"
#include "screens/app/qt_text.h"
#include "screens/assets/dlgNewName.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {

namespace {

constexpr const char* kModule = "frmAssets";

std::string CaptionOf(app::AppContext& ctx, const std::string& name) {
    for (const CloneEntry& e : kCloneEntries)
        if (name == e.name) return ctx.langText(e.lang, e.caption, kModule);
    return name;
}

}  // namespace

void RunCloneEntry(app::AppContext& ctx, QWidget* parent, const std::string& name, const CloneSources& sources,
                   const assets::CloneAsk& ask) {
    const std::string caption = CaptionOf(ctx, name);
    ctx.abortFlag = false;
    if (name == "mnuProvider") {
        std::vector<std::string> files;
        // The blueprint where it is installed: an unpacked copy is not what the game reads.
        for (assets::CloneSource source : sources(assets::CloneLevel::Blueprint)) {
            source.root = source.cloneRoot();
            files.push_back(source.file());
        }
        const assets::TransformOutcome outcome = assets::CorrectProvider(ctx, files);
        if (outcome.ran && !outcome.report.empty()) ShowReport(ctx, parent, caption, outcome.report);
        return;
    }
    const bool reskin = name == "mnuCloneScenery" || name == "mnuReskinBP";
    const assets::CloneAsk asker = ask ? ask : [&ctx, parent, reskin](const assets::CloneNames& offered) {
        return dlgNewName::Ask(ctx, offered, reskin, parent);
    };
    assets::CloneOutcome outcome;
    if (name == "mnuCloneAsset") {
        outcome = assets::CloneAssets(ctx, sources(assets::CloneLevel::Asset), assets::CloneLevel::Asset, asker);
    } else if (name == "mnuCloneRS") {
        outcome = assets::CloneAssets(ctx, sources(assets::CloneLevel::RollingStock), assets::CloneLevel::RollingStock,
                                      asker);
    } else if (name == "mnuCloneScenery") {
        outcome = assets::CloneSceneryForReskin(ctx, sources(assets::CloneLevel::Blueprint), asker);
    } else if (name == "mnuReskinBP") {
        outcome = assets::CloneForReskinBlueprint(ctx, sources(assets::CloneLevel::Blueprint), asker);
    }
    if (outcome.ran && !outcome.report.empty()) ShowReport(ctx, parent, caption, outcome.report);
}

QPushButton* CloneButton(app::AppContext& ctx, QWidget* parent, CloneSources sources) {
    auto* button = new QPushButton("Clone", parent);
    button->setObjectName("cmdClone");
    button->setAutoDefault(false);
    auto* menu = new QMenu(button);
    menu->setObjectName("mnuClone");
    for (const CloneEntry& e : kCloneEntries) {
        QAction* action = menu->addAction(ToQt(ctx.langText(e.lang, e.caption, kModule)));
        action->setObjectName(e.name);
        QObject::connect(action, &QAction::triggered, parent, [&ctx, parent, name = std::string(e.name), sources] {
            RunCloneEntry(ctx, parent, name, sources);
        });
    }
    button->setMenu(menu);
    return button;
}

}  // namespace ferrolund::screens
