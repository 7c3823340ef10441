// The page form: a sheet of fixed labels laid out like the paper, shown modally as a preview with
// "Tovább" (Command1), "Nyomtat" (Command2), "Mégse" (Command3) and "PDF mentés..." (PdfMentes).
// Each label is a named QLabel (Cim, Kiadva, Oldal, Honnan(1) ...) with a place on the paper; the
// preview paints page(), and the printer and PDF get the same page.
//
// Two shapes: ListPageForm (title, issue date, page label, column heads, N lines of cells) and
// SheetPageForm (one record a page: a line per value, then "Kiadva: " and today). A module
// registers its page form by name, e.g.
//   print::registerListForm("UttavNyomFormX", {"Utak távolsága", "T Á V O L S Á G O K", 21,
//       {{"Honnan", "HONNAN:", 2}, {"Hova", "HOVÁ:", 2}, {"TávolságKm", "TÁVOLSÁG (KM):", 1, print::Align::Right}}});
// and fills it through print::PagedList (pagedlist.h).
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "forms/form.h"
#include "print/page.h"

class QLabel;
class QPushButton;

namespace print {

inline constexpr const char* Tovabb = "Tovább";
inline constexpr const char* Nyomtat = "Nyomtat";
inline constexpr const char* Megse = "Mégse";
// Paper margin of the layouts here, in points (about 17.6 mm).
inline constexpr double Margin = 50;

// Today as the page's issue text: "Kiadva: 2026.11.23.".
std::string issuedText();
// Page label texts: "1. oldal          " (ten blanks) and "Lapszám: 1".
std::string oldalText(int page);
std::string lapszamText(int page);

class PageForm : public forms::Form {
    Q_OBJECT
public:
    PageForm(std::string name, std::string caption, double paperWidth = Page::A4Width,
             double paperHeight = Page::A4Height);

    struct Placement {
        double x = 0, y = 0, width = 0;
        PageFont font;
        Align align = Align::Left;
    };

    // The page as it stands: the fixed lines, then every label that is not hidden and has text.
    Page page() const;
    double paperWidth() const { return paperWidth_; }
    double paperHeight() const { return paperHeight_; }
    // The labels of the sheet in the order they were added.
    const std::vector<QLabel*>& sheetLabels() const { return labels_; }
    const Placement* placement(const QLabel* l) const;
    // A label's text by name ("" when there is none): tests and callers.
    std::string text(const std::string& labelName) const;
    void setText(const std::string& labelName, const std::string& text);

    // Called before the lines of a page are filled (PagedList): empties the line labels, sets the
    // page's heading, page label and date. The default does nothing.
    virtual void startPage(int pageNumber) {}

    // Successful prints of this form's page (callers, tests).
    int printedCount() const { return printed_; }

    // "Tovább": unloads; the caller goes on with the next page.
    void Command1_Click();
    // "Nyomtat": hourglass, buttons hidden, the page to the printer; on failure arrow, Err cleared,
    // Beep, "A nyomtató nincs készenlétben!" (plain box, "FIGYELEM!"); the buttons come back.
    void Command2_Click();
    // "Mégse": PrintCancelled = 1, unloads.
    void Command3_Click();
    // "PDF mentés...": asks a file name (choosePdfFile) and writes the page.
    void PdfMentes_Click();

protected:
    // Form_Load: PrintCancelled = 0, the arrow.
    void Form_Load() override;

    // A label of the sheet at its place (points from the paper's top left corner).
    QLabel* sheetLabel(const std::string& labelName, const std::string& caption, double x, double y,
                       double width, PageFont font, Align align = Align::Left);
    // A fixed line of the sheet.
    void rule(double x1, double y1, double x2, double y2, double stroke = 0.5, double gray = 0);
    void hideEvent(QHideEvent* e) override;

private:
    static std::map<std::string, QRect>& lastGeometry();
    void setButtonsVisible(bool visible);

    double paperWidth_, paperHeight_;
    QWidget* holder_;   // parent of the sheet labels; never shown itself (the paper paints them)
    QWidget* paper_;
    std::vector<QLabel*> labels_;
    std::map<const QLabel*, Placement> placements_;
    std::vector<PageItem> fixed_;
    int printed_ = 0;
};

// One column of a list: the name of its labels (Honnan -> Honnan(1) ...), its heading, its share
// of the width, its alignment.
struct ListColumn {
    std::string name;
    std::string heading;
    double weight = 1;
    Align align = Align::Left;
};

struct ListLayout {
    std::string caption;            // window title of the preview
    std::string title;              // heading label Cim on every page (see heading below)
    int rows = 21;                  // lines per page
    std::vector<ListColumn> columns;
    PageFont body = BodyFont;       // font of the lines (smaller for many columns)
    bool landscape = false;
    // The heading by page number (default: title); the page label by page number (default
    // oldalText); the issue text (default issuedText).
    std::function<std::string(int)> heading;
    std::function<std::string(int)> pageText;
    std::function<std::string()> dateText;
};

// Labels: Cim, Kiadva, Oldal, Fej(1).. (column heads), <column>(<line>) for every cell.
class ListPageForm : public PageForm {
    Q_OBJECT
public:
    ListPageForm(std::string name, ListLayout layout);

    int rows() const { return layout_.rows; }
    const std::vector<ListColumn>& columns() const { return layout_.columns; }
    QLabel* cell(const std::string& column, int line) const;  // line 1-based; nullptr when none
    QLabel* cell(int column, int line) const;                  // column 0-based
    QLabel* head(int column) const;
    // The labels of a line from left to right; fewer texts leave the rest as they are.
    void setRow(int line, const std::vector<std::string>& texts);
    std::vector<std::string> row(int line) const;
    void clearRows();
    // Rows emptied; heading, page label and date for this page.
    void startPage(int pageNumber) override;

    QLabel* Cim;
    QLabel* Kiadva;
    QLabel* Oldal;

private:
    ListLayout layout_;
    std::vector<QLabel*> heads_;
    std::vector<std::vector<QLabel*>> cells_;  // [line - 1][column]
};

// Labels: Cim (empty when no title), Sor(1)..Sor(n), Kiadva.
class SheetPageForm : public PageForm {
    Q_OBJECT
public:
    SheetPageForm(std::string name, std::string caption, std::string title, int lineCount);

    int lineCount() const { return int(lines_.size()); }
    QLabel* line(int i) const;  // 1-based
    // A line: its text followed by the value's text.
    void setLine(int i, const std::string& text, const std::string& value);
    // Every line's text, then the Kiadva line.
    std::vector<std::string> lines() const;
    // Lines emptied; Kiadva = issuedText().
    void startPage(int pageNumber) override;

    QLabel* Cim;
    QLabel* Kiadva;

private:
    std::vector<QLabel*> lines_;
};

// Writes the page form's page as it stands to a PDF file, without showing it.
bool writePdf(const PageForm& form, const std::string& path);

// Registers a page form of either shape under its name with the forms runtime (module start-up).
void registerListForm(const std::string& name, ListLayout layout);
void registerSheetForm(const std::string& name, const std::string& caption, const std::string& title, int lineCount);

}  // namespace print
