// ferrolund-screen-bench [editor [MB] | assets [N] | details [MB] | scenario [MB] | picture [RUNS]]: times screens with a real
// window (offscreen unless QT_QPA_PLATFORM says otherwise) and prints the figures. With
// no argument the editor is timed.
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "screen_bench.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication application(argc, argv);
    const std::string which = argc > 1 ? argv[1] : "editor";
    const int size = argc > 2 ? std::atoi(argv[2]) : 0;
    if (which == "editor") return EditorOpenBench(size);
    if (which == "assets") return AssetListBench(size);
    if (which == "details") return ScenarioDetailsBench(size);
    if (which == "scenario") return ScenarioEditorBench(size);
    if (which == "picture") return PicturePaneBench(size);
    std::fprintf(stderr,
                 "usage: ferrolund-screen-bench [editor [MB] | assets [BLUEPRINTS] | details [MB] | scenario [MB] |\n"
                 "                             picture [RUNS]]\n");
    return 2;
}
