// The screen's sheet: white paper with a shadow and the page drawn by paintPage at the screen's
// scale, so that the preview is drawn by the same code as the printer and the PDF.
#pragma once

#include <QWidget>
#include <functional>

#include "print/page.h"

namespace print {

class PaperView : public QWidget {
    Q_OBJECT
public:
    PaperView(std::function<Page()> page, double paperWidth, double paperHeight, QWidget* parent = nullptr);
    void setPaper(double paperWidth, double paperHeight);
    double scale() const { return scale_; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;

private:
    std::function<Page()> page_;
    double width_, height_, scale_;
};

// A scale that fits the paper's width on the screen and shows a good part of its height.
double screenScale(double paperWidth, double paperHeight);

}  // namespace print
