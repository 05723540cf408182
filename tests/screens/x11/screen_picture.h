#pragma once
// What the X server shows where a window is, read back from the screen (not rendered by
// the widget for itself), measured against what the window paints. The screen is read with
// a plain GetImage of the root window; xwd -root is no judge of this on Xvfb, where its
// per-visual composition shows a window lying over another of the program's windows as black.

#include <QImage>
#include <QRect>

class QLabel;
class QScreen;
class QWidget;

namespace ferrolund::testing {

struct ScreenPicture {
    // Distinct colours on the screen over the window; 1 when it shows as a flat area.
    int colours = 0;
    // Dark (text) pixels on the screen where the label is.
    int darkInLabel = 0;
    // The share of the window's drawn pixels (all but its background colour), 0 to 1, that
    // the screen shows as the window paints them.
    double sameAsPainted = 0;

    // Reads the screen under `window`, a shown top-level widget; `label` is one of its labels.
    static ScreenPicture Read(QWidget& window, const QLabel* label);
    // Reads `area` of the screen (global coordinates) against `painted`, a picture of the
    // same size, with `text` the label's rectangle in it.
    static ScreenPicture Read(QScreen& screen, const QRect& area, const QImage& painted, const QRect& text);
};

}  // namespace ferrolund::testing
