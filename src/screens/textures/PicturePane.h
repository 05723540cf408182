#pragma once
// The texture viewer's picture pane: one picture, zoomed from 10 to 1000 %, scrolled or
// dragged about, with alpha shown over a checkerboard, and the pane's own operations on
// the picture (greyscale, flip, rotate). Only the visible part is scaled and drawn.

#include <QAbstractScrollArea>
#include <QImage>
#include <QPoint>

class QToolBar;

namespace ferrolund::screens {

class PicturePane : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int kMinZoom = 10;
    static constexpr int kMaxZoom = 1000;

    explicit PicturePane(QWidget* parent = nullptr);

    void setImage(const QImage& image);
    void clear();
    // The picture as it now stands, after the operations.
    const QImage& image() const { return image_; }
    bool hasImage() const { return !image_.isNull(); }

    int zoom() const { return zoom_; }
    // Kept within 10..1000; zoomChanged is told when the zoom changes.
    void setZoom(int percent);
    void zoomIn();   // +10 while under 1000
    void zoomOut();  // -10 while over 10

    // Dragging the picture with the mouse moves it.
    void setPanning(bool on) { panning_ = on; }
    bool panning() const { return panning_; }
    void setQuickBarVisible(bool shown);
    QToolBar* quickBar() const { return quickBar_; }

    void greyscale();
    void flip();      // upside down
    void rotate90();  // a quarter turn clockwise

signals:
    void zoomChanged(int percent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void updateScrollBars();
    void placeQuickBar();
    QRect pictureRect() const;  // the whole scaled picture, in viewport coordinates

    QImage image_;
    QImage checker_;
    int zoom_ = 100;
    bool panning_ = false;
    bool dragging_ = false;
    QPoint dragFrom_;
    QToolBar* quickBar_ = nullptr;
};

}  // namespace ferrolund::screens
