#include "screens/x11/screen_picture.h"

#include <QHash>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QSet>
#include <QWidget>
#include <cstdlib>

namespace ferrolund::testing {

namespace {

constexpr int kDark = 96;      // grey level below which a pixel counts as text
constexpr int kTolerance = 16; // per channel, between the screen and the painted picture

bool Close(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) <= kTolerance && std::abs(qGreen(a) - qGreen(b)) <= kTolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= kTolerance;
}

}  // namespace

ScreenPicture ScreenPicture::Read(QWidget& window, const QLabel* label) {
    const QRect text = label ? QRect(label->mapTo(&window, QPoint(0, 0)), label->size()) : QRect();
    return Read(*window.screen(), QRect(window.mapToGlobal(QPoint(0, 0)), window.size()), window.grab().toImage(),
                text);
}

ScreenPicture ScreenPicture::Read(QScreen& screen, const QRect& area, const QImage& painted, const QRect& text) {
    ScreenPicture picture;
    // Window 0 is the root: the grab is what the server shows there, whichever window it is.
    const QImage shown =
        screen.grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage().convertToFormat(
            QImage::Format_RGB32);
    const QImage wanted = painted.convertToFormat(QImage::Format_RGB32);
    if (shown.size() != area.size() || wanted.size() != area.size()) return picture;

    // The window's background is left out: a window behind may well have the same colour.
    QHash<QRgb, long> counts;
    for (int y = 0; y < wanted.height(); ++y) {
        for (int x = 0; x < wanted.width(); ++x) ++counts[wanted.pixel(x, y)];
    }
    QRgb background = 0;
    long most = -1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > most) {
            most = it.value();
            background = it.key();
        }
    }

    QSet<QRgb> colours;
    long drawn = 0;
    long same = 0;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            const QRgb pixel = shown.pixel(x, y);
            colours.insert(pixel & 0xffffff);
            if (wanted.pixel(x, y) == background) continue;
            ++drawn;
            if (Close(pixel, wanted.pixel(x, y))) ++same;
        }
    }
    picture.colours = static_cast<int>(colours.size());
    picture.sameAsPainted = drawn ? static_cast<double>(same) / static_cast<double>(drawn) : 0;

    const QRect inside = text.intersected(shown.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (qGray(shown.pixel(x, y)) < kDark) ++picture.darkInLabel;
        }
    }
    return picture;
}

}  // namespace ferrolund::testing
