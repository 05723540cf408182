// The editor window on a large game file: opening (copy, conversion, reading, showing)
// and typing into the pane.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "app/startup.h"
#include "screen_bench.h"
#include "editor/document.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "serz/codec.h"
#include "tools/host_path.h"

namespace {

namespace fs = std::filesystem;

// Seconds of processor time this process has used: on a busy machine a fairer figure
// than the clock on the wall.
double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// A scenario-like XML of about `megabytes` MB: many consists of vehicles.
std::string LargeScenarioXml(int megabytes) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n\t<Record>\r\n";
    long id = 100;
    while (xml.size() < static_cast<std::size_t>(megabytes) * 1000000) {
        xml += "\t\t<cConsist d:id=\"" + std::to_string(id++) + "\">\r\n\t\t\t<RailVehicles>\r\n";
        for (int v = 0; v < 8; ++v) {
            xml += "\t\t\t\t<cOwnedEntity d:id=\"" + std::to_string(id++) +
                   "\">\r\n"
                   "\t\t\t\t\t<Name d:type=\"cDeltaString\">Class 47 Diesel</Name>\r\n"
                   "\t\t\t\t\t<BlueprintID>\r\n\t\t\t\t\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n"
                   "\t\t\t\t\t\t\t<BlueprintSetID>\r\n\t\t\t\t\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n"
                   "\t\t\t\t\t\t\t\t\t<Provider d:type=\"cDeltaString\">Kuju</Provider>\r\n"
                   "\t\t\t\t\t\t\t\t\t<Product d:type=\"cDeltaString\">RailSimulator</Product>\r\n"
                   "\t\t\t\t\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n\t\t\t\t\t\t\t</BlueprintSetID>\r\n"
                   "\t\t\t\t\t\t\t<BlueprintID d:type=\"cDeltaString\">RailVehicles\\Diesel\\Class47\\Engine\\Class47.xml</BlueprintID>\r\n"
                   "\t\t\t\t\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n\t\t\t\t\t</BlueprintID>\r\n"
                   "\t\t\t\t\t<Mass d:type=\"sFloat32\" d:alt_encoding=\"0000000000C05240\" d:precision=\"string\">75</Mass>\r\n"
                   "\t\t\t\t</cOwnedEntity>\r\n";
        }
        xml += "\t\t\t</RailVehicles>\r\n\t\t</cConsist>\r\n";
    }
    xml += "\t</Record>\r\n</cRecordSet>\r\n";
    return xml;
}

}  // namespace

int EditorOpenBench(int megabytes) {
    using namespace ferrolund;
    if (megabytes <= 0) megabytes = 30;

    const fs::path root = fs::temp_directory_path() / "ferrolund-screen-bench";
    fs::remove_all(root);
    fs::create_directories(root / "TempFiles");
    std::string binary;
    const std::string xml = LargeScenarioXml(megabytes);
    if (serz::XmlToBinary(xml, binary)) {
        std::fprintf(stderr, "could not make the large file\n");
        return 1;
    }
    const fs::path file = root / "Scenario.bin";
    std::ofstream(file, std::ios::binary) << binary;
    std::printf("scenario: %.1f MB of XML, %.1f MB binary\n", xml.size() / 1e6, binary.size() / 1e6);

    screens::QtUi ui;
    app::AppContext ctx;
    ctx.appRoot = tools::SystemPath(root);
    ctx.ui = &ui;
    screens::frmEditor window(ctx, ui);
    window.show();
    QApplication::processEvents();

    ctx.commandFile = tools::SystemPath(file);
    ctx.commandLineOpen = true;
    QElapsedTimer timer;
    timer.start();
    const double cpuBefore = CpuSeconds();
    editor::OpenGameFile(ctx, window.document(), window);
    QApplication::processEvents();
    const double openSeconds = timer.nsecsElapsed() / 1e9;
    std::printf("open (copy, convert, read, show): %.2f s on the clock, %.2f s of processor, for %lld characters\n",
                openSeconds, CpuSeconds() - cpuBefore,
                static_cast<long long>(window.textPane()->document()->characterCount()));

    // Typing in the middle of the text: a key press, its edit and the repaint.
    QPlainTextEdit* pane = window.textPane();
    QTextCursor cursor(pane->document()->findBlockByNumber(pane->document()->blockCount() / 2));
    pane->setTextCursor(cursor);
    pane->centerCursor();
    QApplication::processEvents();
    constexpr int kKeys = 200;
    double worst = 0;
    timer.start();
    for (int i = 0; i < kKeys; ++i) {
        QElapsedTimer one;
        one.start();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
        QApplication::sendEvent(pane, &press);
        pane->viewport()->repaint();
        QApplication::processEvents();
        worst = std::max(worst, one.nsecsElapsed() / 1e6);
    }
    std::printf("typing: %d keys, %.2f ms each on average, %.2f ms at worst\n", kKeys,
                timer.nsecsElapsed() / 1e6 / kKeys, worst);

    timer.start();
    const std::string text = window.paneText(editor::Pane::Main);
    std::printf("taking the text back for a save: %.2f s\n", timer.nsecsElapsed() / 1e9);
    window.document().editedFlag = false;
    ctx.prefs.noAskOnExit = true;
    fs::remove_all(root);
    return text.empty() ? 1 : 0;
}
