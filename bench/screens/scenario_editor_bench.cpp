// The Scenario Editor on a large generated scenario: from the click that opens it (both
// files read, Scenario.bin converted, the consist and stock tables filled, the window
// shown) to the save (compile, read back, back-ups, replacement).
#include <QApplication>
#include <QElapsedTimer>

#include <cstdio>

#include "../bench_scenario.h"
#include "screen_bench.h"
#include "screens/app/qt_ui.h"
#include "screens/scenarios/frmKickStart.h"

namespace {

// The boxes of the screen say nothing while the bench runs.
class SilentUi : public ferrolund::screens::QtUi {
public:
    void message(const std::string&, ferrolund::base::Icon, const std::string&) override {}
};

}  // namespace

int ScenarioEditorBench(int megabytes) {
    using namespace ferrolund;
    if (megabytes <= 0) megabytes = 30;
    const bench::ScenarioInstallation installation("scenario-editor", megabytes);
    if (!installation.made()) return 1;
    SilentUi ui;
    app::AppContext ctx;
    installation.bind(ctx, &ui);
    QElapsedTimer clock;
    clock.start();
    screens::frmKickStart* editor = screens::ShowScenarioEditor(ctx, nullptr, installation.scenarioFolder());
    if (!editor) {
        std::fprintf(stderr, "the scenario could not be opened\n");
        return 1;
    }
    QApplication::processEvents();
    const double opened = clock.nsecsElapsed() / 1e9;
    clock.restart();
    const bool written = editor->saveChanges();
    QApplication::processEvents();
    const double saved = clock.nsecsElapsed() / 1e9;
    std::printf("Scenario Editor on a %d MB scenario: opened and shown in %.3f s, %s in %.3f s (bar: 1 s each)\n",
                megabytes, opened, written ? "saved" : "NOT saved", saved);
    return written ? 0 : 1;
}
