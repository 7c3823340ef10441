// A sheet of paper as drawing instructions, and the one painter that draws it on the screen, on
// the printer and into a PDF file, so that a print is the page as the preview shows it.
// Coordinates are points (1/72 inch) from the paper's top left corner. Fonts are DejaVu Sans
// (DejaVu Serif on request), which hold every Hungarian letter (ő, ű).
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

class QPainter;
class QPrinter;

namespace print {

// The save button of every preview, and what it says when the file can't be written.
inline constexpr const char* PdfMentesCaption = "PDF mentés...";
inline constexpr const char* PdfFailed = "A PDF állomány nem menthető!";

enum class Align { Left, Center, Right };

struct PageFont {
    double size = 10;
    bool bold = false;
    bool italic = false;
    bool serif = false;

    PageFont withSize(double s) const { PageFont f = *this; f.size = s; return f; }
    PageFont asBold() const { PageFont f = *this; f.bold = true; return f; }
    PageFont asItalic() const { PageFont f = *this; f.italic = true; return f; }
};

inline constexpr PageFont BodyFont{10};
inline constexpr PageFont SmallFont{9};
inline constexpr PageFont HeadingFont{9.5, true};
inline constexpr PageFont TitleFont{16, true};

// A text in a box: (x, y) the box's top left corner, `width` its width (the text is aligned in it
// and cut at its edges); the height is the font's line height.
struct TextItem {
    double x = 0, y = 0, width = 0;
    std::string text;
    PageFont font;
    Align align = Align::Left;
};
// A straight line; gray 0 is black, 1 white.
struct LineItem {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double stroke = 0.5;
    double gray = 0;
};
// A rectangle's outline (a Shape of a report, a frame).
struct BoxItem {
    double x = 0, y = 0, width = 0, height = 0;
    double stroke = 0.5;
    double gray = 0;
};
using PageItem = std::variant<TextItem, LineItem, BoxItem>;

struct Page {
    static constexpr double A4Width = 595.28;
    static constexpr double A4Height = 841.89;
    double width = A4Width;
    double height = A4Height;
    std::vector<PageItem> items;

    bool landscape() const { return width > height; }
    // The texts of the page in drawing order (tests).
    std::vector<std::string> texts() const;
};

// The width of a text on paper, in points (layouts that must fit a text, e.g. column heads).
double textWidth(const std::string& text, const PageFont& font);
// The font made smaller (not under minSize) until the text fits the width.
PageFont fitted(const std::string& text, PageFont font, double width, double minSize = 6.5);

// Draws a page with the painter's current transformation: one unit = one point. The caller scales
// (screen preview: pixels per point; printer: its resolution / 72).
void paintPage(QPainter& painter, const Page& page);

// Draws the pages onto a printer (any mode, also QPrinter::PdfFormat), one sheet each, taking the
// orientation of the first page. False when the printer could not start or failed.
bool printPages(const std::vector<Page>& pages, QPrinter& printer);

// Where "Nyomtat" sends its pages. The default opens the system's default printer and draws on it.
// Tests set their own (a PDF-mode QPrinter, a counter); an empty function restores the default.
using PrintSink = std::function<bool(const std::vector<Page>&)>;
void setPrintSink(PrintSink sink);
// The pages through the installed sink; false when it failed (or threw).
bool sendToPrinter(const std::vector<Page>& pages);

// Writes the pages to a PDF file (A4, vector text). False when the file can't be written; no half
// file stays behind.
bool writePdf(const std::vector<Page>& pages, const std::string& path);

// The file name for "PDF mentés...". The default is a QFileDialog save box (suggesting `suggested`
// in the current folder, filter "PDF (*.pdf)"); "" means the user cancelled. Tests set their own.
using PdfFileChooser = std::function<std::string(const std::string& suggested)>;
void setPdfFileChooser(PdfFileChooser chooser);
std::string choosePdfFile(const std::string& suggested);

}  // namespace print
