// Modal dialogues opened from the main menu, as the X server shows them: the pixels are read
// back from the screen at the dialogue's place, over the main window, with no window
// manager running.
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>

#include "app/startup.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "screens/routes/route_screen_fixture.h"
#include "screens/x11/screen_picture.h"
#include "screens/x11/x_session.h"

namespace ferrolund::screens {
namespace {

using testing::ScreenPicture;

// Waits, running the event loop, until the window is exposed on the X server: ten seconds
// at most, however busy the machine is with other tests.
bool WaitExposed(const std::function<QWindow*()>& window) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        if (window() && window()->isExposed()) return true;
        QThread::msleep(5);
    }
    return false;
}
bool WaitExposed(QWidget& widget) {
    return WaitExposed([&widget] { return widget.windowHandle(); });
}

// While a menu command runs, reads the screen under the first modal dialogue of the given
// class once it is exposed, then dismisses it and every modal dialogue after it.
class ModalGrabber {
public:
    ModalGrabber(const char* className, const char* labelName) : className_(className), labelName_(labelName) {
        timer_.setInterval(20);
        QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
        timer_.start();
    }
    bool grabbed() const { return grabbed_; }
    const ScreenPicture& picture() const { return picture_; }

private:
    void tick() {
        QWidget* modal = QApplication::activeModalWidget();
        auto* dialog = qobject_cast<QDialog*>(modal);
        if (!dialog) return;
        if (!grabbed_ && modal->inherits(className_) && ++waited_ < 250) {
            // One more turn after the expose, so the window's first paint has been flushed.
            if (!modal->windowHandle() || !modal->windowHandle()->isExposed()) return;
            if (!exposed_) {
                exposed_ = true;
                return;
            }
            picture_ = ScreenPicture::Read(*modal, modal->findChild<QLabel*>(labelName_));
            grabbed_ = true;
        }
        dialog->reject();
    }

    const char* className_;
    const char* labelName_;
    QTimer timer_;
    bool exposed_ = false;
    bool grabbed_ = false;
    int waited_ = 0;
    ScreenPicture picture_;
};

// The desktop program's main window, shown on the X server, with its Qt dialogs.
struct ShownProgram : testing::RouteScreenFixture {
    QtUi qtUi;
    frmEditor window{ctx, qtUi};
    ShownProgram() {
        app::StartOptions options;
        const std::string gameRoot = game.system();
        options.discoverGameRoot = [gameRoot] { return gameRoot; };
        app::StartUp(ctx, window, options);
        ctx.prefs.gameRoot = gameRoot;
        ctx.ui = &qtUi;
        window.setGeometry(0, 0, 900, 650);
        window.show();
    }
};

void ExpectPainted(const ScreenPicture& picture) {
    EXPECT_GT(picture.colours, 8) << "the dialogue shows as one flat area";
    EXPECT_GE(picture.darkInLabel, 30) << "the label's text is not on the screen";
    EXPECT_GE(picture.sameAsPainted, 0.95) << "the screen differs from what the dialogue paints";
}

TEST(DialogPaint, ModalDialoguesFromTheMenuAreOnTheScreen) {
    FERROLUND_REQUIRE_X_SERVER();
    struct Case {
        const char* what;
        const char* item;
        bool routesIndexed;
        bool writeIndex;
        const char* dialogClass;
        const char* label;
    };
    const Case cases[] = {
        {"route browser notice", "mnuDelRoute", false, true, "ferrolund::screens::dlgIndex", "Label1"},
        {"message when the routes are not indexed", "mnuDelRoute", true, false, "QMessageBox", "qt_msgbox_label"},
        {"about box", "mnuAbout", true, true, "ferrolund::screens::frmAbout", "lblDisclaimer"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ShownProgram program;
        ASSERT_TRUE(WaitExposed(program.window));
        if (c.writeIndex) program.writeIndex("Zeta Line,aaaa-route,1");
        program.ctx.prefs.routesIndexed = c.routesIndexed;
        ModalGrabber grabber(c.dialogClass, c.label);
        program.window.menuAction(c.item)->trigger();
        ASSERT_TRUE(grabber.grabbed());
        ExpectPainted(grabber.picture());
    }
}

// The same reading tells a window that is mapped but never painted from the dialogue it
// stands in for, so a blank dialogue cannot pass unnoticed.
TEST(DialogPaint, AWindowNobodyPaintsIsToldApart) {
    FERROLUND_REQUIRE_X_SERVER();
    ShownProgram program;
    ASSERT_TRUE(WaitExposed(program.window));
    QDialog dialog;
    auto* label = new QLabel("Some words that a dialogue shows to the user", &dialog);
    (new QVBoxLayout(&dialog))->addWidget(label);
    dialog.resize(420, 120);
    dialog.layout()->activate();
    const QImage painted = dialog.grab().toImage();

    QWindow bare;
    bare.setSurfaceType(QSurface::RasterSurface);
    bare.setGeometry(200, 200, 420, 120);
    bare.show();
    ASSERT_TRUE(WaitExposed([&bare] { return &bare; }));
    QApplication::processEvents(QEventLoop::AllEvents, 50);

    const ScreenPicture picture = ScreenPicture::Read(*bare.screen(), bare.geometry(), painted, label->geometry());
    EXPECT_LT(picture.sameAsPainted, 0.95);
    EXPECT_LT(picture.darkInLabel, 30);
}

}  // namespace
}  // namespace ferrolund::screens
