// The asset list screen filling from a large installation: how long "Add to List" takes,
// how long the window goes without handling its events while the list grows (a timer
// that should fire every 10 ms measures it), and how soon "&Abort" ends the walk.
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "generator/make_sample.h"
#include "screen_bench.h"
#include "screens/app/qt_ui.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAssets.h"
#include "tools/host_path.h"

namespace {

namespace fs = std::filesystem;

struct Run {
    double seconds = 0;
    double longestEventGapMs = 0;
    std::size_t rows = 0;
    double abortLatencyMs = -1;
};

// Clicks "Add to List" (answering the closing box by itself) and watches the event loop.
Run Fill(ferrolund::app::AppContext& ctx, int abortAfterMs) {
    using namespace ferrolund;
    screens::frmAssets screen(ctx);
    screen.show();
    QApplication::processEvents();
    Run run;
    QElapsedTimer sinceTick;
    sinceTick.start();
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        run.longestEventGapMs = std::max(run.longestEventGapMs, sinceTick.nsecsElapsed() / 1e6);
        sinceTick.restart();
    });
    QElapsedTimer clock;
    QElapsedTimer sinceAbort;
    if (abortAfterMs > 0) {
        QTimer::singleShot(abortAfterMs, [&] {
            sinceAbort.start();
            screen.findChild<QPushButton*>("cmdAbort")->click();
        });
    }
    tick.start(10);
    clock.start();
    screen.addToList();
    run.seconds = clock.nsecsElapsed() / 1e9;
    if (sinceAbort.isValid()) run.abortLatencyMs = sinceAbort.nsecsElapsed() / 1e6;
    tick.stop();
    run.rows = screen.grid()->grid().rowCount();
    return run;
}

// The boxes of the screen say nothing and ask nothing while the bench runs.
class SilentUi : public ferrolund::screens::QtUi {
public:
    void message(const std::string&, ferrolund::base::Icon, const std::string&) override {}
};

}  // namespace

int AssetListBench(int blueprints) {
    using namespace ferrolund;
    if (blueprints <= 0) blueprints = 50000;
    const fs::path root = fs::temp_directory_path() / "ferrolund-asset-list-bench";
    fs::remove_all(root);
    sample::SampleOptions options;
    options.stock = blueprints;
    sample::SampleResult made;
    if (auto failure = sample::MakeSample(root / "game", options, made)) {
        std::fprintf(stderr, "the sample could not be made: %s\n", failure->c_str());
        return 1;
    }
    fs::create_directories(root / "app");
    SilentUi ui;
    app::AppContext ctx;
    ctx.appRoot = tools::SystemPath(root / "app");
    ctx.prefs.gameRoot = tools::SystemPath(root / "game");
    ctx.ui = &ui;

    const Run whole = Fill(ctx, 0);
    std::printf("Add to List over %d generated blueprints: %zu rows in %.2f s; the window went at most %.1f ms "
                "without handling its events\n",
                blueprints, whole.rows, whole.seconds, whole.longestEventGapMs);
    const Run aborted = Fill(ctx, 300);
    std::printf("&Abort clicked after 0.3 s: the walk ended %.1f ms later, keeping %zu rows\n",
                aborted.abortLatencyMs, aborted.rows);
    fs::remove_all(root);
    return 0;
}
