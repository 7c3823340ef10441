#include "print/report.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "db/recordset.h"
#include "forms/events.h"
#include "forms/grid.h"
#include "forms/recordform.h"
#include "forms/runtime.h"
#include "print/paperview.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace print {

std::string fieldText(const vb::Variant& v) { return vb::CStr(vb::NullToStr(v)); }

// ---------------------------------------------------------------- sections

Section& Section::label(const std::string& n, const std::string& text, double x, double y, double width,
                        PageFont font, Align align) {
    ReportControl c;
    c.kind = ReportControl::Kind::Label;
    c.name = n;
    c.text = text;
    c.x = x, c.y = y, c.width = width, c.height = font.size * 1.25;
    c.font = font;
    c.align = align;
    controls.push_back(std::move(c));
    return *this;
}

Section& Section::field(const std::string& n, const std::string& column, double x, double y, double width,
                        PageFont font, Align align, std::function<std::string(const vb::Variant&)> format) {
    ReportControl c;
    c.kind = ReportControl::Kind::Field;
    c.name = n;
    c.field = column;
    c.x = x, c.y = y, c.width = width, c.height = font.size * 1.25;
    c.font = font;
    c.align = align;
    c.format = std::move(format);
    controls.push_back(std::move(c));
    return *this;
}

Section& Section::line(const std::string& n, double x1, double y1, double x2, double y2, double stroke) {
    ReportControl c;
    c.kind = ReportControl::Kind::Line;
    c.name = n;
    c.x = x1, c.y = y1, c.width = x2 - x1, c.height = y2 - y1;
    c.stroke = stroke;
    controls.push_back(std::move(c));
    return *this;
}

Section& Section::box(const std::string& n, double x, double y, double width, double height, double stroke) {
    ReportControl c;
    c.kind = ReportControl::Kind::Box;
    c.name = n;
    c.x = x, c.y = y, c.width = width, c.height = height;
    c.stroke = stroke;
    controls.push_back(std::move(c));
    return *this;
}

double Section::extent() const {
    if (!visible) return 0;
    if (height > 0) return height;
    double bottom = 0;
    for (const auto& c : controls) {
        if (!c.visible) continue;
        double b = std::max(c.y, c.y + c.height) + (c.kind == ReportControl::Kind::Line ? c.stroke : 0);
        bottom = std::max(bottom, b);
    }
    return bottom > 0 ? bottom + 2 : 0;
}

// ---------------------------------------------------------------- the report's rows

struct Report::Data {
    enum class Kind { None, Set, Grid, Rows } kind = Kind::None;
    db::Recordset* rs = nullptr;
    const forms::DBGrid* grid = nullptr;
    std::vector<std::string> columns;
    std::vector<std::vector<vb::Variant>> rows;
};

Report::Report(std::string name, std::string caption, bool landscape)
    : name_(std::move(name)), caption_(std::move(caption)),
      paperWidth_(landscape ? Page::A4Height : Page::A4Width), paperHeight_(landscape ? Page::A4Width : Page::A4Height),
      data_(std::make_shared<Data>()) {}

ReportControl* Report::control(const std::string& n) {
    for (Section* s : {&ReportHeader, &PageHeader, &Detail, &PageFooter, &ReportFooter})
        for (auto& c : s->controls)
            if (c.name == n) return &c;
    return nullptr;
}

void Report::setCaption(const std::string& controlName, const std::string& text) {
    if (ReportControl* c = control(controlName)) c->text = text;
}

void Report::setRecordset(db::Recordset& rs) {
    *data_ = Data{};
    data_->kind = Data::Kind::Set;
    data_->rs = &rs;
}

void Report::setGrid(const forms::DBGrid& grid) {
    *data_ = Data{};
    data_->kind = Data::Kind::Grid;
    data_->grid = &grid;
}

void Report::setRows(std::vector<std::string> columns, std::vector<std::vector<vb::Variant>> rows) {
    *data_ = Data{};
    data_->kind = Data::Kind::Rows;
    data_->columns = std::move(columns);
    data_->rows = std::move(rows);
}

namespace {

bool sameName(const std::string& a, const std::string& b) {
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

// The rows as the values of `fields` (a field that the source lacks stays Null).
std::vector<std::vector<vb::Variant>> readRows(const Report::Data& d, const std::vector<std::string>& fields);

}  // namespace

int Report::rowCount() const {
    return int(readRows(*data_, {}).size());
}

namespace {

std::vector<std::vector<vb::Variant>> readRows(const Report::Data& d, const std::vector<std::string>& fields) {
    std::vector<std::vector<vb::Variant>> out;
    const size_t n = fields.size();
    switch (d.kind) {
    case Report::Data::Kind::None:
        break;
    case Report::Data::Kind::Rows: {
        std::vector<int> map;
        for (auto& f : fields) {
            int at = -1;
            for (size_t i = 0; i < d.columns.size(); ++i)
                if (sameName(d.columns[i], f)) at = int(i);
            map.push_back(at);
        }
        out.reserve(d.rows.size());
        for (auto& r : d.rows) {
            std::vector<vb::Variant> row(n, vb::Null{});
            for (size_t i = 0; i < n; ++i)
                if (map[i] >= 0 && map[i] < int(r.size())) row[i] = r[map[i]];
            out.push_back(std::move(row));
        }
        break;
    }
    case Report::Data::Kind::Grid: {
        const forms::DBGrid& g = *d.grid;
        auto* model = g.recordsetModel();
        std::vector<int> map;
        for (auto& f : fields) {
            int at = -1;
            auto& cols = model->columns();
            for (size_t i = 0; i < cols.size() && at < 0; ++i)
                if (sameName(cols[i].dataField, f)) at = int(i);
            for (size_t i = 0; i < cols.size() && at < 0; ++i)
                if (sameName(cols[i].caption, f)) at = int(i);
            map.push_back(at);
        }
        int rows = model->rowCount();
        out.reserve(rows);
        for (int r = 0; r < rows; ++r) {
            std::vector<vb::Variant> row(n, vb::Null{});
            for (size_t i = 0; i < n; ++i)
                if (map[i] >= 0) row[i] = model->value(r, map[i]);
            out.push_back(std::move(row));
        }
        break;
    }
    case Report::Data::Kind::Set: {
        db::Recordset& rs = *d.rs;
        if (rs.closed()) break;
        std::vector<int> map;
        for (auto& f : fields) {
            int at = -1;
            for (size_t i = 0; i < rs.columnNames().size(); ++i)
                if (sameName(rs.columnNames()[i], f)) at = int(i);
            map.push_back(at);
        }
        // the set's current record comes back afterwards
        vb::Variant mark;
        bool hadRecord = !rs.Eof() && !rs.Bof() && vb::resume([&] { mark = rs.Bookmark(); });
        vb::resume([&] {
            if (rs.RecordCount() < 1) return;
            rs.MoveFirst();
            while (!rs.Eof()) {
                std::vector<vb::Variant> row(n, vb::Null{});
                for (size_t i = 0; i < n; ++i)
                    if (map[i] >= 0) row[i] = rs.value(size_t(map[i]));
                out.push_back(std::move(row));
                rs.MoveNext();
            }
        });
        if (hadRecord) vb::resume([&] { rs.setBookmark(mark); });
        vb::Err.Clear();
        break;
    }
    }
    return out;
}

std::string replaceAll(std::string s, const std::string& what, const std::string& with) {
    for (size_t at = s.find(what); at != std::string::npos; at = s.find(what, at + with.size()))
        s.replace(at, what.size(), with);
    return s;
}

// Where a section lands: its page, its top, and the row it shows (-1 for none).
struct Placed {
    const Section* section;
    int page;
    double top;
    int row;
};

}  // namespace

std::vector<Page> Report::pages() const {
    // the columns the fields name, each once
    std::vector<std::string> fields;
    std::map<std::string, size_t> fieldIndex;
    for (const Section* s : {&ReportHeader, &PageHeader, &Detail, &PageFooter, &ReportFooter})
        for (auto& c : s->controls)
            if (c.kind == ReportControl::Kind::Field && !fieldIndex.count(c.field)) {
                fieldIndex[c.field] = fields.size();
                fields.push_back(c.field);
            }
    auto rows = readRows(*data_, fields);

    const double top = margin, bottom = paperHeight_ - margin;
    const double footer = PageFooter.extent();
    std::vector<Placed> placed;
    int page = 0;
    double y = top;
    bool pageHasBody = false;
    auto startPage = [&] {
        placed.push_back({&PageHeader, page, y, -1});
        y += PageHeader.extent();
        pageHasBody = false;
    };
    auto nextPage = [&] {
        ++page;
        y = top;
        startPage();
    };
    auto place = [&](const Section& s, int row) {
        double h = s.extent();
        if (pageHasBody && y + h > bottom - footer) nextPage();
        placed.push_back({&s, page, y, row});
        y += h;
        pageHasBody = true;
    };
    if (ReportHeader.visible) {
        placed.push_back({&ReportHeader, 0, y, -1});
        y += ReportHeader.extent();
    }
    startPage();
    if (Detail.visible)
        for (int r = 0; r < int(rows.size()); ++r) place(Detail, r);
    if (ReportFooter.visible && ReportFooter.extent() > 0) place(ReportFooter, -1);
    const int pageCount = page + 1;

    std::vector<Page> out(pageCount, Page{paperWidth_, paperHeight_, {}});
    const std::string today = vb::dateText(vb::clock::today());
    auto draw = [&](const Section& s, int pg, double sectionTop, int row) {
        if (!s.visible) return;
        Page& p = out[pg];
        for (auto& c : s.controls) {
            if (!c.visible) continue;
            double x = margin + c.x, yy = sectionTop + c.y;
            switch (c.kind) {
            case ReportControl::Kind::Label: {
                std::string t = c.text;
                if (t.find('%') != std::string::npos) {
                    t = replaceAll(t, "%p", std::to_string(pg + 1));
                    t = replaceAll(t, "%P", std::to_string(pageCount));
                    t = replaceAll(t, "%d", today);
                }
                p.items.push_back(TextItem{x, yy, c.width, t, c.font, c.align});
                break;
            }
            case ReportControl::Kind::Field: {
                vb::Variant v = row >= 0 && row < int(rows.size()) ? rows[row][fieldIndex.at(c.field)] : vb::Variant(vb::Null{});
                std::string t;
                vb::resume([&] { t = c.format ? c.format(v) : fieldText(v); });
                vb::Err.Clear();
                p.items.push_back(TextItem{x, yy, c.width, t, c.font, c.align});
                break;
            }
            case ReportControl::Kind::Line:
                p.items.push_back(LineItem{x, yy, x + c.width, yy + c.height, c.stroke, 0});
                break;
            case ReportControl::Kind::Box:
                p.items.push_back(BoxItem{x, yy, c.width, c.height, c.stroke, 0});
                break;
            }
        }
    };
    for (auto& pl : placed) draw(*pl.section, pl.page, pl.top, pl.row);
    for (int pg = 0; pg < pageCount; ++pg) draw(PageFooter, pg, bottom - footer, -1);
    return out;
}

// ---------------------------------------------------------------- list reports

Report tableReport(const std::string& name, const std::string& caption, const std::string& title,
                   const std::vector<ReportColumn>& columns, bool landscape, const std::string& subtitle) {
    Report r(name, caption, landscape);
    const double width = r.bodyWidth();
    r.ReportHeader.label("Cim", title, 0, 0, width, TitleFont, Align::Center);
    if (!subtitle.empty()) r.ReportHeader.label("Alcim", subtitle, 0, 24, width, BodyFont, Align::Center);
    r.ReportHeader.height = subtitle.empty() ? 32 : 46;
    double total = 0;
    for (auto& c : columns) total += c.weight > 0 ? c.weight : 1;
    const int n = int(columns.size());
    PageFont body = n > 8 ? SmallFont.withSize(8) : n > 6 ? SmallFont : BodyFont;
    PageFont head = HeadingFont.withSize(std::min(HeadingFont.size, body.size));
    double x = 0;
    for (int i = 0; i < n; ++i) {
        const auto& c = columns[i];
        double w = width * (c.weight > 0 ? c.weight : 1) / total;
        std::string idx = std::to_string(i + 1);
        r.PageHeader.label("Fej" + idx, c.caption, x + 2, 2, w - 4, fitted(c.caption, head, w - 4), c.align);
        r.Detail.field("Mezo" + idx, c.field, x + 2, 2, w - 4, body, c.align, c.format);
        x += w;
    }
    r.PageHeader.line("FejVonal", 0, head.size * 1.25 + 5, width, head.size * 1.25 + 5, 0.8);
    r.PageHeader.height = head.size * 1.25 + 9;
    r.Detail.height = body.size * 1.25 + 4;
    r.PageFooter.line("LabVonal", 0, 4, width, 4, 0.5);
    r.PageFooter.label("Kiadva", "Kiadva: %d", 0, 8, width / 2, SmallFont, Align::Left);
    r.PageFooter.label("Oldal", "%p. oldal", width / 2, 8, width / 2, SmallFont, Align::Right);
    return r;
}

Report gridReport(const forms::DBGrid& grid, const std::string& name, const std::string& caption,
                  const std::string& title, bool landscape) {
    std::vector<ReportColumn> cols;
    auto& mc = grid.recordsetModel()->columns();
    for (size_t i = 0; i < mc.size(); ++i) {
        if (!mc[i].visible || grid.isColumnHidden(int(i))) continue;
        double w = grid.columnWidth(int(i));
        cols.push_back({mc[i].caption, mc[i].dataField.empty() ? mc[i].caption : mc[i].dataField, w > 0 ? w : 100});
    }
    Report r = tableReport(name, caption, title, cols, landscape);
    r.setGrid(grid);
    return r;
}

// ---------------------------------------------------------------- the preview

ReportPreview::ReportPreview(std::string name, std::string caption, std::vector<Page> pages)
    : forms::Form(std::move(name), std::move(caption)), pages_(std::move(pages)) {
    if (pages_.empty()) pages_.push_back(Page{});
    paper_ = new PaperView([this] { return pages_[current_]; }, pages_[0].width, pages_[0].height);
    auto* scroll = new QScrollArea;
    scroll->setWidget(paper_);
    scroll->setAlignment(Qt::AlignHCenter);
    scroll->setBackgroundRole(QPalette::Dark);

    auto* first = button("Elso", "<<");
    auto* prev = button("Elozo", "<");
    pageLabel_ = label("Oldalszam", "");
    pageLabel_->setAlignment(Qt::AlignCenter);
    pageLabel_->setMinimumWidth(120);
    auto* next = button("Kovetkezo", ">");
    auto* last = button("Utolso", ">>");
    auto* print = button("Nyomtat", "Nyomtat");
    auto* pdf = button("PdfMentes", PdfMentesCaption);
    auto* close = button("Bezar", "Bezár");
    first->setToolTip(QStringLiteral("Első oldal"));
    prev->setToolTip(QStringLiteral("Előző oldal"));
    next->setToolTip(QStringLiteral("Következő oldal"));
    last->setToolTip(QStringLiteral("Utolsó oldal"));
    print->setToolTip(QStringLiteral("Minden oldal nyomtatása"));
    pdf->setToolTip(QStringLiteral("Az oldalak mentése PDF állományba"));
    forms::onClick(first, [this] { goToPage(0); });
    forms::onClick(prev, [this] { goToPage(current_ - 1); });
    forms::onClick(next, [this] { goToPage(current_ + 1); });
    forms::onClick(last, [this] { goToPage(pageCount() - 1); });
    forms::onClick(print, [this] { Nyomtat_Click(); });
    forms::onClick(pdf, [this] { PdfMentes_Click(); });
    forms::onClick(close, [this] { Bezar_Click(); });

    auto* bar = new QHBoxLayout;
    for (auto* b : {first, prev}) bar->addWidget(b);
    bar->addWidget(pageLabel_);
    for (auto* b : {next, last}) bar->addWidget(b);
    bar->addStretch();
    for (auto* b : {print, pdf, close}) {
        b->setMinimumWidth(110);
        bar->addWidget(b);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(bar);
    layout->addWidget(scroll, 1);
    QSize paper = paper_->sizeHint();
    resize(std::max(paper.width() + 30, 760), std::min(paper.height() + 70, 960));
    update();
}

void ReportPreview::goToPage(int index) {
    current_ = std::clamp(index, 0, pageCount() - 1);
    update();
}

void ReportPreview::update() {
    pageLabel_->setText(QString::fromStdString(std::to_string(current_ + 1) + ". oldal / " + std::to_string(pageCount())));
    control<QPushButton>("Elso")->setEnabled(current_ > 0);
    control<QPushButton>("Elozo")->setEnabled(current_ > 0);
    control<QPushButton>("Kovetkezo")->setEnabled(current_ + 1 < pageCount());
    control<QPushButton>("Utolso")->setEnabled(current_ + 1 < pageCount());
    static_cast<PaperView*>(paper_)->setPaper(pages_[current_].width, pages_[current_].height);
    paper_->update();
}

void ReportPreview::Nyomtat_Click() {
    forms::hourglass();
    bool ok = forms::dialogs().printerReady() && sendToPrinter(pages_);
    forms::arrow();
    if (!ok) {
        vb::Err.Clear();
        forms::Beep();
        forms::MsgBox(forms::PrinterNotReady, vb::vbOKOnly, forms::PrintMessageTitle);
        return;
    }
    ++printed_;
}

void ReportPreview::PdfMentes_Click() {
    std::string path = choosePdfFile(name() + ".pdf");
    if (path.empty()) return;
    if (path.size() < 4 || QString::fromStdString(path.substr(path.size() - 4)).toLower() != ".pdf") path += ".pdf";
    forms::hourglass();
    bool ok = writePdf(pages_, path);
    forms::arrow();
    if (!ok) {
        forms::Beep();
        forms::MsgBox(std::string(PdfFailed) + "\n" + path, vb::vbExclamation, forms::PrintMessageTitle);
    }
}

void ReportPreview::Bezar_Click() { Unload(); }

void showReport(const Report& report) {
    forms::hourglass();
    auto pages = std::make_shared<std::vector<Page>>(report.pages());
    if (forms::Form* old = forms::find(report.name())) old->Unload();
    forms::registerForm(report.name(), [name = report.name(), caption = report.caption(), pages] {
        return new ReportPreview(name, caption, *pages);
    });
    forms::arrow();
    forms::get(report.name()).Show(true);
}

bool writePdf(const Report& report, const std::string& path) { return writePdf(report.pages(), path); }

}  // namespace print
