#include "print/page.h"

#include <QFileDialog>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <filesystem>

#include "db/database.h"

namespace print {

std::vector<std::string> Page::texts() const {
    std::vector<std::string> out;
    for (const auto& item : items)
        if (auto* t = std::get_if<TextItem>(&item)) out.push_back(t->text);
    return out;
}

namespace {

// The font of a page font, sized so that one painter unit (a point) holds `size` units: a point
// size is turned into device pixels by the device's dpi, which the painter's scale already does.
QFont qfont(const PageFont& f, const QPaintDevice* device) {
    QFont q(f.serif ? "DejaVu Serif" : "DejaVu Sans");
    q.setStyleHint(f.serif ? QFont::Serif : QFont::SansSerif);
    q.setHintingPreference(QFont::PreferNoHinting);
    q.setKerning(false);
    double dpi = device ? device->logicalDpiY() : 72.0;
    q.setPointSizeF(f.size * 72.0 / (dpi > 0 ? dpi : 72.0));
    q.setBold(f.bold);
    q.setItalic(f.italic);
    return q;
}

QColor grayColor(double gray) {
    int v = int(std::clamp(gray, 0.0, 1.0) * 255 + 0.5);
    return QColor(v, v, v);
}

// Texts are laid out with fonts K times the size in a painter space K times finer, so that the
// metrics are those of a large font on every device (no rounding of tiny pixel sizes) and the
// screen, the printer and the PDF cut and align a text alike.
constexpr double K = 100;

// The text cut at the box's right edge, as a label without word wrap shows it (width in K units).
QString fit(const QString& s, const QFontMetricsF& fm, double width) {
    if (width <= 0 || fm.horizontalAdvance(s) <= width) return s;
    int lo = 0, hi = int(s.size());
    while (lo < hi) {  // the longest prefix that fits
        int mid = (lo + hi + 1) / 2;
        if (fm.horizontalAdvance(s.left(mid)) <= width) lo = mid;
        else hi = mid - 1;
    }
    return s.left(lo);
}

void drawText(QPainter& p, const TextItem& t) {
    if (t.text.empty()) return;
    PageFont big = t.font;
    big.size *= K;
    QFont f = qfont(big, p.device());
    QFontMetricsF fm(f, p.device());
    QString s = fit(QString::fromStdString(t.text), fm, t.width * K);
    double w = fm.horizontalAdvance(s) / K;
    double x = t.x;
    if (t.align == Align::Center) x = t.x + (t.width - w) / 2;
    else if (t.align == Align::Right) x = t.x + t.width - w;
    p.save();
    p.scale(1 / K, 1 / K);
    p.setFont(f);
    p.setPen(Qt::black);
    p.drawText(QPointF(x * K, t.y * K + fm.ascent()), s);
    p.restore();
}

PrintSink& sinkSlot() {
    static PrintSink s;
    return s;
}
PdfFileChooser& chooserSlot() {
    static PdfFileChooser c;
    return c;
}

bool defaultSink(const std::vector<Page>& pages) {
    if (QPrinterInfo::defaultPrinter().isNull()) return false;
    QPrinter printer(QPrinter::HighResolution);
    return printPages(pages, printer);
}

std::string defaultChooser(const std::string& suggested) {
    QString start = QString::fromStdString((db::workingFolder() / suggested).string());
    QString f = QFileDialog::getSaveFileName(nullptr, QStringLiteral("PDF mentés"), start, QStringLiteral("PDF (*.pdf)"));
    return f.toStdString();
}

}  // namespace

double textWidth(const std::string& text, const PageFont& font) {
    static QImage device = [] {
        QImage img(1, 1, QImage::Format_RGB32);
        img.setDotsPerMeterX(2835);  // 72 dpi
        img.setDotsPerMeterY(2835);
        return img;
    }();
    PageFont big = font;
    big.size *= K;
    QFont f = qfont(big, &device);
    return QFontMetricsF(f, &device).horizontalAdvance(QString::fromStdString(text)) / K;
}

PageFont fitted(const std::string& text, PageFont font, double width, double minSize) {
    while (font.size > minSize && textWidth(text, font) > width) font.size = std::max(minSize, font.size - 0.25);
    return font;
}

void paintPage(QPainter& p, const Page& page) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    for (const auto& item : page.items) {
        if (auto* l = std::get_if<LineItem>(&item)) {
            p.setPen(QPen(grayColor(l->gray), l->stroke));
            p.drawLine(QPointF(l->x1, l->y1), QPointF(l->x2, l->y2));
        } else if (auto* b = std::get_if<BoxItem>(&item)) {
            p.setPen(QPen(grayColor(b->gray), b->stroke));
            p.setBrush(Qt::NoBrush);
            p.drawRect(QRectF(b->x, b->y, b->width, b->height));
        } else {
            drawText(p, std::get<TextItem>(item));
        }
    }
    p.restore();
}

namespace {
// Pages onto a paged device at `resolution` dots per inch, the whole sheet drawable.
bool paintAll(const std::vector<Page>& pages, QPagedPaintDevice& device, double resolution,
              const std::function<bool()>& newPage) {
    QPainter p;
    if (!p.begin(&device)) return false;
    double scale = resolution / 72.0;
    bool first = true;
    for (const Page& page : pages) {
        if (!first && !newPage()) {
            p.end();
            return false;
        }
        first = false;
        p.save();
        p.scale(scale, scale);
        paintPage(p, page);
        p.restore();
    }
    return p.end();
}

QPageLayout layoutOf(const std::vector<Page>& pages) {
    bool landscape = !pages.empty() && pages.front().landscape();
    return QPageLayout(QPageSize(QPageSize::A4), landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(0, 0, 0, 0));
}
}  // namespace

bool printPages(const std::vector<Page>& pages, QPrinter& printer) {
    if (pages.empty()) return true;
    printer.setFullPage(true);
    printer.setPageLayout(layoutOf(pages));
    return paintAll(pages, printer, printer.resolution(), [&] { return printer.newPage(); });
}

void setPrintSink(PrintSink sink) { sinkSlot() = std::move(sink); }

bool sendToPrinter(const std::vector<Page>& pages) {
    try {
        return sinkSlot() ? sinkSlot()(pages) : defaultSink(pages);
    } catch (...) {
        return false;
    }
}

bool writePdf(const std::vector<Page>& pages, const std::string& path) {
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) return false;
    bool ok;
    {
        QPdfWriter writer(&file);
        writer.setCreator(QStringLiteral("Kerova"));
        writer.setResolution(1200);
        writer.setPageLayout(layoutOf(pages));
        std::vector<Page> all = pages.empty() ? std::vector<Page>{Page{}} : pages;
        ok = paintAll(all, writer, writer.resolution(), [&] { return writer.newPage(); });
    }
    if (!ok) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

void setPdfFileChooser(PdfFileChooser chooser) { chooserSlot() = std::move(chooser); }

std::string choosePdfFile(const std::string& suggested) {
    return chooserSlot() ? chooserSlot()(suggested) : defaultChooser(suggested);
}

}  // namespace print
