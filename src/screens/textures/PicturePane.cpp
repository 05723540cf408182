#include "screens/textures/PicturePane.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolBar>
#include <algorithm>

namespace ferrolund::screens {

namespace {

constexpr int kCheckerSquare = 8;

QImage CheckerTile() {
    QImage tile(2 * kCheckerSquare, 2 * kCheckerSquare, QImage::Format_RGB32);
    tile.fill(QColor(204, 204, 204));
    QPainter p(&tile);
    p.fillRect(0, 0, kCheckerSquare, kCheckerSquare, QColor(255, 255, 255));
    p.fillRect(kCheckerSquare, kCheckerSquare, kCheckerSquare, kCheckerSquare, QColor(255, 255, 255));
    return tile;
}

}  // namespace

PicturePane::PicturePane(QWidget* parent) : QAbstractScrollArea(parent), checker_(CheckerTile()) {
    setObjectName("PicturePane");
    viewport()->setAutoFillBackground(false);
    quickBar_ = new QToolBar(this);
    quickBar_->setObjectName("QuickBar");
    quickBar_->addAction("Zoom In", this, &PicturePane::zoomIn)->setObjectName("QuickZoomIn");
    quickBar_->addAction("Zoom Out", this, &PicturePane::zoomOut)->setObjectName("QuickZoomOut");
    quickBar_->addAction("100%", this, [this] { setZoom(100); })->setObjectName("QuickActualSize");
    quickBar_->addAction("Rotate", this, &PicturePane::rotate90)->setObjectName("QuickRotate");
    quickBar_->hide();
}

void PicturePane::setImage(const QImage& image) {
    image_ = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    updateScrollBars();
    viewport()->update();
}

void PicturePane::clear() {
    image_ = QImage();
    updateScrollBars();
    viewport()->update();
}

void PicturePane::setZoom(int percent) {
    percent = std::clamp(percent, kMinZoom, kMaxZoom);
    if (percent == zoom_) return;
    // The point in the middle of the view stays in the middle.
    const QSize view = viewport()->size();
    const double cx = (horizontalScrollBar()->value() + view.width() / 2.0) / zoom_;
    const double cy = (verticalScrollBar()->value() + view.height() / 2.0) / zoom_;
    zoom_ = percent;
    updateScrollBars();
    horizontalScrollBar()->setValue(static_cast<int>(cx * zoom_ - view.width() / 2.0));
    verticalScrollBar()->setValue(static_cast<int>(cy * zoom_ - view.height() / 2.0));
    viewport()->update();
    emit zoomChanged(zoom_);
}

void PicturePane::zoomIn() {
    if (zoom_ < kMaxZoom) setZoom(zoom_ + 10);
}

void PicturePane::zoomOut() {
    if (zoom_ > kMinZoom) setZoom(zoom_ - 10);
}

void PicturePane::setQuickBarVisible(bool shown) {
    quickBar_->setVisible(shown);
    setViewportMargins(0, shown ? quickBar_->sizeHint().height() : 0, 0, 0);
    placeQuickBar();
}

void PicturePane::greyscale() {
    if (image_.isNull()) return;
    for (int y = 0; y < image_.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image_.scanLine(y));
        for (int x = 0; x < image_.width(); ++x) {
            // Premultiplied channels stay premultiplied: the grey of each is at most alpha.
            const int grey = qGray(line[x]);
            line[x] = qRgba(grey, grey, grey, qAlpha(line[x]));
        }
    }
    viewport()->update();
}

void PicturePane::flip() {
    if (image_.isNull()) return;
    image_ = image_.mirrored(false, true);
    viewport()->update();
}

void PicturePane::rotate90() {
    if (image_.isNull()) return;
    image_ = image_.transformed(QTransform().rotate(90));
    updateScrollBars();
    viewport()->update();
}

QRect PicturePane::pictureRect() const {
    const QSize scaled(static_cast<int>(qint64(image_.width()) * zoom_ / 100),
                       static_cast<int>(qint64(image_.height()) * zoom_ / 100));
    const QSize view = viewport()->size();
    // A picture smaller than the view stands in its middle; a larger one moves with the bars.
    const int x = scaled.width() < view.width() ? (view.width() - scaled.width()) / 2 : -horizontalScrollBar()->value();
    const int y =
        scaled.height() < view.height() ? (view.height() - scaled.height()) / 2 : -verticalScrollBar()->value();
    return QRect(QPoint(x, y), scaled);
}

void PicturePane::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Mid));
    if (image_.isNull()) return;
    const QRect whole = pictureRect();
    const QRect visible = whole.intersected(event->rect());
    if (visible.isEmpty()) return;
    painter.setBrushOrigin(whole.topLeft());
    painter.fillRect(visible, QBrush(checker_));
    // Only the part of the picture under `visible` is scaled.
    const double scale = zoom_ / 100.0;
    if (zoom_ <= 100) {
        const QRectF source((visible.left() - whole.left()) / scale, (visible.top() - whole.top()) / scale,
                            visible.width() / scale, visible.height() / scale);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom_ < 100);
        painter.drawImage(QRectF(visible), image_, source);
        return;
    }
    // Enlarged: the whole source pixels under the view, each made a block of screen pixels.
    const int left = static_cast<int>((visible.left() - whole.left()) / scale);
    const int top = static_cast<int>((visible.top() - whole.top()) / scale);
    const int right = std::min(image_.width(), static_cast<int>((visible.right() + 1 - whole.left()) / scale) + 1);
    const int bottom = std::min(image_.height(), static_cast<int>((visible.bottom() + 1 - whole.top()) / scale) + 1);
    const QRect source(left, top, right - left, bottom - top);
    const QRect target(whole.left() + static_cast<int>(left * scale), whole.top() + static_cast<int>(top * scale),
                       static_cast<int>(right * scale) - static_cast<int>(left * scale),
                       static_cast<int>(bottom * scale) - static_cast<int>(top * scale));
    painter.setClipRect(visible);
    painter.drawImage(target.topLeft(), image_.copy(source).scaled(target.size(), Qt::IgnoreAspectRatio,
                                                                   Qt::FastTransformation));
}

void PicturePane::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
    placeQuickBar();
}

void PicturePane::mousePressEvent(QMouseEvent* event) {
    dragging_ = panning_ && event->button() == Qt::LeftButton;
    dragFrom_ = event->position().toPoint();
    if (dragging_) viewport()->setCursor(Qt::ClosedHandCursor);
}

void PicturePane::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) return;
    const QPoint at = event->position().toPoint();
    const QPoint moved = at - dragFrom_;
    dragFrom_ = at;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void PicturePane::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
    viewport()->unsetCursor();
}

void PicturePane::scrollContentsBy(int, int) { viewport()->update(); }

void PicturePane::updateScrollBars() {
    const QSize scaled = image_.isNull() ? QSize() : pictureRect().size();
    const QSize view = viewport()->size();
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setRange(0, std::max(0, scaled.width() - view.width()));
    verticalScrollBar()->setRange(0, std::max(0, scaled.height() - view.height()));
}

void PicturePane::placeQuickBar() {
    const QRect inner = contentsRect();
    quickBar_->setGeometry(inner.left(), inner.top(), inner.width(), quickBar_->sizeHint().height());
}

}  // namespace ferrolund::screens
