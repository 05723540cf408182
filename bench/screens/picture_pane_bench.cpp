// The texture viewer's picture: a generated 2048 x 2048 DXT5 texture decoded for display
// (the .TgPcDx turned into its .dds in memory, the largest level decoded, made a QImage),
// and the pane drawn at several zooms and pan positions. Bars: 50 ms to decode, 16 ms a
// repaint.
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include "generator/texture_sample.h"
#include "screen_bench.h"
#include "screens/textures/PicturePane.h"
#include "screens/textures/texture_picture.h"
#include "serz/codec.h"
#include "textures/tgpcdx_dds.h"

namespace {

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int PicturePaneBench(int runs) {
    using namespace ferrolund;
    if (runs <= 0) runs = 30;
    std::string binary;
    if (serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", 2048, 2048, 12), binary)) {
        std::printf("picture: the generated texture does not convert\n");
        return 1;
    }
    std::vector<double> decode, decodeCpu;
    QImage image;
    for (int run = 0; run < 9; ++run) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t cpu = std::clock();
        std::string error;
        std::string dds = textures::TgPcDxBytesToDds(binary, error);
        textures::DdsImage read;
        if (!error.empty() || textures::ReadDds(std::move(dds), read)) return 1;
        QString failed;
        image = screens::DdsLevelImage(read, 0, failed);
        decode.push_back(timer.nsecsElapsed() / 1e6);
        decodeCpu.push_back(double(std::clock() - cpu) * 1000.0 / CLOCKS_PER_SEC);
    }
    std::printf("picture: 2048 x 2048 DXT5 .TgPcDx to a shown QImage: median %.1f ms, best %.1f ms; processor time "
                "median %.1f ms (bar 50 ms)\n",
                Median(decode), *std::min_element(decode.begin(), decode.end()), Median(decodeCpu));

    screens::PicturePane pane;
    pane.resize(1280, 900);
    pane.show();
    pane.setImage(image);
    QApplication::processEvents();
    QImage target(pane.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    double worst = 0;
    for (int zoom : {10, 25, 50, 100, 250, 1000}) {
        pane.setZoom(zoom);
        std::vector<double> times;
        for (int run = 0; run < runs; ++run) {
            // A new pan position each time, across the picture.
            pane.horizontalScrollBar()->setValue(pane.horizontalScrollBar()->maximum() * run / runs);
            pane.verticalScrollBar()->setValue(pane.verticalScrollBar()->maximum() * (runs - run) / runs);
            QElapsedTimer timer;
            timer.start();
            pane.viewport()->render(&target);
            times.push_back(timer.nsecsElapsed() / 1e6);
        }
        worst = std::max(worst, *std::max_element(times.begin(), times.end()));
        std::printf("repaint at %4d %%: median %.2f ms, worst %.2f ms\n", zoom, Median(times),
                    *std::max_element(times.begin(), times.end()));
    }
    std::printf("repaint: worst %.2f ms over all zooms and pans (bar 16 ms)\n", worst);
    return 0;
}
