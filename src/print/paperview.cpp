#include "print/paperview.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace print {

namespace {
constexpr int Gap = 12;
constexpr int Shadow = 4;
}  // namespace

double screenScale(double paperWidth, double paperHeight) {
    double natural = 96.0 / 72.0;
    QScreen* s = QGuiApplication::primaryScreen();
    if (!s) return 1.0;
    QRect r = s->availableGeometry();
    // the whole width, and the height down to the buttons on a 1000-pixel screen at most
    double fitWidth = (r.width() - 120) / paperWidth;
    double fitHeight = (r.height() - 140) / paperHeight;
    double scale = std::min({natural, fitWidth, std::max(fitHeight, 0.9)});
    return std::max(0.5, scale);
}

PaperView::PaperView(std::function<Page()> page, double paperWidth, double paperHeight, QWidget* parent)
    : QWidget(parent), page_(std::move(page)), width_(paperWidth), height_(paperHeight),
      scale_(screenScale(paperWidth, paperHeight)) {
    setObjectName("Papir");
    setAutoFillBackground(false);
    setFixedSize(sizeHint());
}

void PaperView::setPaper(double paperWidth, double paperHeight) {
    width_ = paperWidth;
    height_ = paperHeight;
    scale_ = screenScale(paperWidth, paperHeight);
    setFixedSize(sizeHint());
    update();
}

QSize PaperView::sizeHint() const {
    return QSize(int(std::ceil(width_ * scale_)) + 2 * Gap + Shadow, int(std::ceil(height_ * scale_)) + 2 * Gap + Shadow);
}

void PaperView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(0x80, 0x80, 0x80));
    int w = int(std::lround(width_ * scale_));
    int h = int(std::lround(height_ * scale_));
    p.fillRect(Gap + Shadow, Gap + Shadow, w, h, QColor(0x40, 0x40, 0x40));
    p.fillRect(Gap, Gap, w, h, Qt::white);
    p.translate(Gap, Gap);
    p.scale(scale_, scale_);
    p.setClipRect(QRectF(0, 0, width_, height_));
    paintPage(p, page_());
}

}  // namespace print
