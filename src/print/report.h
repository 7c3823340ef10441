// A banded report (the data reports and the grid prints): report header (first page), page
// header and page footer (every page), detail (once per row), report footer (after the last row).
// Controls stand in their section in points from the section's top left corner: labels (fixed
// text; "%p" is replaced by the page number, "%P" by the page count, "%d" by today's date),
// fields (a column of the row, as text), lines and boxes. Rows come from a Recordset (first to
// EOF, only the named columns, the position put back), a grid's rows, or given values.
// The report is shown in a preview form named as the report, with page navigation, "Nyomtat"
// (through the printer check and sendToPrinter) and "PDF mentés..."; writePdf saves it unseen.
//
// Usage:
//   print::Report r("KmNytDataReport1", "Kilométer nyilvántartás - Kerova");
//   r.ReportHeader.label("Label1", "KILOMÉTER NYILVÁNTARTÁS", 0, 0, 495, print::TitleFont, print::Align::Center);
//   r.PageHeader.line("Line1", 0, 4, 495, 4);
//   r.Detail.label("L1", "Dátum:", 0, 0, 80).field("txtDátum", "Dátum", 80, 0, 120);
//   r.PageFooter.label("Label6", "%p. oldal", 0, 4, 495, print::SmallFont, print::Align::Right);
//   r.setRecordset(rs);            // or r.setGrid(*grid) / r.setRows(...)
//   print::showReport(r);          // modal preview; or print::writePdf(r, "/tmp/x.pdf")
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/form.h"
#include "print/page.h"
#include "vb/variant.h"

class QLabel;
class QPushButton;

namespace db {
class Recordset;
}
namespace forms {
class DBGrid;
}

namespace print {

// A value as a report field's text: NullToStr's text (numbers with the decimal comma, dates as
// "2026.11.23.").
std::string fieldText(const vb::Variant& v);

struct ReportControl {
    enum class Kind { Label, Field, Line, Box };
    Kind kind = Kind::Label;
    std::string name;
    double x = 0, y = 0, width = 0, height = 0;  // a line: from (x, y) to (x + width, y + height)
    std::string text;                            // a label's caption
    std::string field;                           // a field's column
    PageFont font = BodyFont;
    Align align = Align::Left;
    double stroke = 0.5;
    bool visible = true;
    std::function<std::string(const vb::Variant&)> format;  // a field's text (default fieldText)
};

struct Section {
    explicit Section(std::string sectionName = {}) : name(std::move(sectionName)) {}
    std::string name;
    double height = 0;  // points; 0: just below its lowest control
    bool visible = true;
    std::vector<ReportControl> controls;

    Section& label(const std::string& name, const std::string& text, double x, double y, double width,
                   PageFont font = BodyFont, Align align = Align::Left);
    Section& field(const std::string& name, const std::string& column, double x, double y, double width,
                   PageFont font = BodyFont, Align align = Align::Left,
                   std::function<std::string(const vb::Variant&)> format = {});
    Section& line(const std::string& name, double x1, double y1, double x2, double y2, double stroke = 0.5);
    Section& box(const std::string& name, double x, double y, double width, double height, double stroke = 0.5);
    // The height the section takes on paper.
    double extent() const;
};

class Report {
public:
    Report(std::string name, std::string caption, bool landscape = false);

    const std::string& name() const { return name_; }
    const std::string& caption() const { return caption_; }
    double paperWidth() const { return paperWidth_; }
    double paperHeight() const { return paperHeight_; }
    double margin = 40;
    // The width between the margins (where sections place their controls).
    double bodyWidth() const { return paperWidth_ - 2 * margin; }

    Section ReportHeader{std::string("ReportHeader")};
    Section PageHeader{std::string("PageHeader")};
    Section Detail{std::string("Detail")};
    Section PageFooter{std::string("PageFooter")};
    Section ReportFooter{std::string("ReportFooter")};

    // A control of any section by name (nullptr when none), and a label's caption set by name.
    ReportControl* control(const std::string& name);
    void setCaption(const std::string& controlName, const std::string& text);

    // Rows from a set: read from the first record to EOF when the pages are made (only the columns
    // the fields name); the current record is put back. The set must outlive the report's use.
    void setRecordset(db::Recordset& rs);
    // Rows from a grid: its rows as the grid shows them; a field names the grid column's DataField
    // (or its caption).
    void setGrid(const forms::DBGrid& grid);
    // Rows given: the values of `columns` per row.
    void setRows(std::vector<std::string> columns, std::vector<std::vector<vb::Variant>> rows);

    // Reads the rows and lays out the pages (at least one page, even without rows).
    std::vector<Page> pages() const;
    int rowCount() const;

    struct Data;  // the rows' source (internal)

private:
    std::string name_, caption_;
    double paperWidth_, paperHeight_;
    std::shared_ptr<Data> data_;
};

// A list report (a grid print): title (and optional subtitle) in the report header, the column
// heads with a rule in the page header, one line per row, "Kiadva: <today>" and "%p. oldal" in
// the page footer. Columns share the body width by weight.
struct ReportColumn {
    std::string caption;
    std::string field;
    double weight = 1;
    Align align = Align::Left;
    std::function<std::string(const vb::Variant&)> format = {};
};
Report tableReport(const std::string& name, const std::string& caption, const std::string& title,
                   const std::vector<ReportColumn>& columns, bool landscape = false,
                   const std::string& subtitle = {});
// The columns of a grid (captions, DataFields, widths as weights) over its rows.
Report gridReport(const forms::DBGrid& grid, const std::string& name, const std::string& caption,
                  const std::string& title, bool landscape = false);

// The preview form: named as the report, titled with its caption; buttons Elso "<<", Elozo "<",
// Kovetkezo ">", Utolso ">>", the label Oldalszam ("1. oldal / 3"), Nyomtat "Nyomtat",
// PdfMentes "PDF mentés...", Bezar "Bezár".
class ReportPreview : public forms::Form {
    Q_OBJECT
public:
    ReportPreview(std::string name, std::string caption, std::vector<Page> pages);

    int pageCount() const { return int(pages_.size()); }
    int currentPage() const { return current_; }  // 0-based
    void goToPage(int index);                     // clamped
    const std::vector<Page>& pages() const { return pages_; }
    int printedCount() const { return printed_; }

    void Nyomtat_Click();    // printer check ("A nyomtató nincs készenlétben!"), then every page
    void PdfMentes_Click();  // file name from choosePdfFile, then writePdf
    void Bezar_Click();      // unloads

private:
    void update();
    std::vector<Page> pages_;
    int current_ = 0;
    int printed_ = 0;
    QWidget* paper_;
    QLabel* pageLabel_;
};

// Lays out the report and shows its preview modally (registered under the report's name, so that
// forms::find(name) finds it while it is open).
void showReport(const Report& report);
// Writes the report to a PDF file without showing it.
bool writePdf(const Report& report, const std::string& path);

}  // namespace print
