#include "print/pageform.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <stdexcept>

#include "forms/events.h"
#include "forms/layout.h"
#include "forms/globals.h"
#include "forms/recordform.h"
#include "print/paperview.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace print {

std::string issuedText() { return "Kiadva: " + vb::dateText(vb::clock::today()); }
std::string oldalText(int page) { return std::to_string(page) + ". oldal          "; }
std::string lapszamText(int page) { return "Lapszám: " + std::to_string(page); }

// ---------------------------------------------------------------- PageForm

PageForm::PageForm(std::string name, std::string caption, double paperWidth, double paperHeight)
    : forms::Form(std::move(name), std::move(caption)), paperWidth_(paperWidth), paperHeight_(paperHeight) {
    holder_ = new QWidget(this);
    holder_->setObjectName("Lap");
    holder_->hide();
    paper_ = new PaperView([this] { return page(); }, paperWidth_, paperHeight_);
    auto* scroll = new QScrollArea;
    scroll->setWidget(paper_);
    scroll->setAlignment(Qt::AlignHCenter);
    scroll->setBackgroundRole(QPalette::Dark);

    auto* c1 = button("Command1", Tovabb);
    auto* c2 = button("Command2", Nyomtat);
    auto* c3 = button("Command3", Megse);
    auto* pdf = button("PdfMentes", PdfMentesCaption);
    c1->setToolTip(QStringLiteral("Következő oldal nyomtatás nélkül"));
    c2->setToolTip(QStringLiteral("Ennek az oldalnak a nyomtatása"));
    c3->setToolTip(QStringLiteral("A nyomtatás befejezése"));
    pdf->setToolTip(QStringLiteral("Az oldal mentése PDF állományba"));
    c1->setDefault(true);  // Enter goes on to the next page
    forms::onClick(c1, [this] { Command1_Click(); });
    forms::onClick(c2, [this] { Command2_Click(); });
    forms::onClick(c3, [this] { Command3_Click(); });
    forms::onClick(pdf, [this] { PdfMentes_Click(); });

    auto* buttons = forms::buttonRow({c1, c2, c3, pdf}, 110, true, true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(scroll, 1);
    layout->addLayout(buttons);
    QSize paper = paper_->sizeHint();
    resize(paper.width() + 30, std::min(paper.height() + 70, 960));
    // the next page opens where the last one stood
    auto it = lastGeometry().find(this->name());
    if (it != lastGeometry().end()) setGeometry(it->second);
}

std::map<std::string, QRect>& PageForm::lastGeometry() {
    static std::map<std::string, QRect> m;
    return m;
}

void PageForm::hideEvent(QHideEvent* e) {
    if (isVisible() || testAttribute(Qt::WA_WState_Visible)) lastGeometry()[name()] = geometry();
    forms::Form::hideEvent(e);
}

QLabel* PageForm::sheetLabel(const std::string& labelName, const std::string& caption, double x, double y,
                             double width, PageFont font, Align align) {
    QLabel* l = label(labelName, caption, holder_);
    labels_.push_back(l);
    placements_[l] = Placement{x, y, width, font, align};
    return l;
}

void PageForm::rule(double x1, double y1, double x2, double y2, double stroke, double gray) {
    fixed_.push_back(LineItem{x1, y1, x2, y2, stroke, gray});
}

const PageForm::Placement* PageForm::placement(const QLabel* l) const {
    auto it = placements_.find(l);
    return it == placements_.end() ? nullptr : &it->second;
}

Page PageForm::page() const {
    Page p{paperWidth_, paperHeight_, fixed_};
    for (QLabel* l : labels_) {
        // a label that the code hid (Visible = False) stays off the paper
        if (!l->isVisibleTo(holder_) || l->text().isEmpty()) continue;
        const Placement& pl = placements_.at(l);
        p.items.push_back(TextItem{pl.x, pl.y, pl.width, l->text().toStdString(), pl.font, pl.align});
    }
    return p;
}

std::string PageForm::text(const std::string& labelName) const {
    auto* l = control<QLabel>(labelName);
    return l ? l->text().toStdString() : std::string();
}

void PageForm::setText(const std::string& labelName, const std::string& text) {
    if (auto* l = control<QLabel>(labelName)) l->setText(QString::fromStdString(text));
    paper_->update();
}

void PageForm::Form_Load() {
    Globals::PrintCancelled = 0;
    forms::arrow();
}

void PageForm::Command1_Click() { Unload(); }

void PageForm::Command2_Click() {
    forms::hourglass();
    setButtonsVisible(false);
    // The one printer setting: A4 at 1:1, the whole sheet (printPages); the page as it looks.
    bool ok = forms::dialogs().printerReady() && sendToPrinter({page()});
    if (!ok) {
        forms::arrow();
        vb::Err.Clear();
        forms::Beep();
        forms::MsgBox(forms::PrinterNotReady, vb::vbOKOnly, forms::PrintMessageTitle);
        setButtonsVisible(true);
        return;
    }
    ++printed_;
    setButtonsVisible(true);
    forms::arrow();
}

void PageForm::Command3_Click() {
    Globals::PrintCancelled = 1;
    Unload();
}

void PageForm::PdfMentes_Click() {
    std::string path = choosePdfFile(name() + ".pdf");
    if (path.empty()) return;
    if (path.size() < 4 || QString::fromStdString(path.substr(path.size() - 4)).toLower() != ".pdf") path += ".pdf";
    forms::hourglass();
    bool ok = writePdf(*this, path);
    forms::arrow();
    if (!ok) {
        forms::Beep();
        forms::MsgBox(std::string(PdfFailed) + "\n" + path, vb::vbExclamation, forms::PrintMessageTitle);
    }
}

void PageForm::setButtonsVisible(bool visible) {
    for (const char* n : {"Command1", "Command2", "Command3", "PdfMentes"})
        if (auto* b = control<QPushButton>(n)) b->setVisible(visible);
}

bool writePdf(const PageForm& form, const std::string& path) { return writePdf(std::vector<Page>{form.page()}, path); }

// ---------------------------------------------------------------- ListPageForm

namespace {
constexpr double ListTitleY = 45;
constexpr double ListInfoY = 76;
constexpr double ListHeadY = 102;
constexpr double ListRuleY = 118;
constexpr double ListFirstRowY = 124;
constexpr double Pad = 3;
}  // namespace

ListPageForm::ListPageForm(std::string name, ListLayout layout)
    : PageForm(std::move(name), layout.caption, layout.landscape ? Page::A4Height : Page::A4Width,
               layout.landscape ? Page::A4Width : Page::A4Height),
      layout_(std::move(layout)) {
    if (layout_.rows < 1 || layout_.columns.empty()) throw std::invalid_argument("a list needs rows and columns");
    if (!layout_.heading) layout_.heading = [t = layout_.title](int) { return t; };
    if (!layout_.pageText) layout_.pageText = oldalText;
    if (!layout_.dateText) layout_.dateText = issuedText;
    double left = Margin;
    double width = paperWidth() - 2 * Margin;
    Cim = sheetLabel("Cim", layout_.title, left, ListTitleY, width, TitleFont, Align::Center);
    Kiadva = sheetLabel("Kiadva", "", left, ListInfoY, width / 2, BodyFont, Align::Left);
    Oldal = sheetLabel("Oldal", "", left + width / 2, ListInfoY, width / 2, BodyFont, Align::Right);
    double total = 0;
    for (auto& c : layout_.columns) total += c.weight > 0 ? c.weight : 1;
    std::vector<double> xs, ws;
    double x = left;
    for (auto& c : layout_.columns) {
        xs.push_back(x);
        ws.push_back(width * (c.weight > 0 ? c.weight : 1) / total);
        x += ws.back();
    }
    const PageFont& body = layout_.body;
    PageFont headFont = HeadingFont.withSize(std::min(HeadingFont.size, body.size));
    for (size_t i = 0; i < layout_.columns.size(); ++i)
        heads_.push_back(sheetLabel("Fej(" + std::to_string(i + 1) + ")", layout_.columns[i].heading, xs[i] + Pad,
                                    ListHeadY, ws[i] - 2 * Pad,
                                    fitted(layout_.columns[i].heading, headFont, ws[i] - 2 * Pad),
                                    layout_.columns[i].align));
    rule(left, ListRuleY, left + width, ListRuleY, 0.8, 0);
    double available = paperHeight() - Margin - ListFirstRowY;
    double rowHeight = std::min(24.0, available / layout_.rows);
    for (int line = 1; line <= layout_.rows; ++line) {
        double y = ListFirstRowY + (line - 1) * rowHeight;
        std::vector<QLabel*> row;
        for (size_t i = 0; i < layout_.columns.size(); ++i)
            row.push_back(sheetLabel(layout_.columns[i].name + "(" + std::to_string(line) + ")", "", xs[i] + Pad,
                                     y + (rowHeight - body.size * 1.2) / 2, ws[i] - 2 * Pad, body,
                                     layout_.columns[i].align));
        cells_.push_back(std::move(row));
        rule(left, y + rowHeight, left + width, y + rowHeight, 0.3, 0.75);
    }
}

QLabel* ListPageForm::cell(const std::string& column, int line) const {
    for (size_t i = 0; i < layout_.columns.size(); ++i)
        if (layout_.columns[i].name == column) return cell(int(i), line);
    return nullptr;
}

QLabel* ListPageForm::cell(int column, int line) const {
    if (line < 1 || line > int(cells_.size()) || column < 0 || column >= int(layout_.columns.size())) return nullptr;
    return cells_[line - 1][column];
}

QLabel* ListPageForm::head(int column) const {
    return column >= 0 && column < int(heads_.size()) ? heads_[column] : nullptr;
}

void ListPageForm::setRow(int line, const std::vector<std::string>& texts) {
    if (line < 1 || line > int(cells_.size())) return;
    auto& row = cells_[line - 1];
    for (size_t i = 0; i < texts.size() && i < row.size(); ++i) row[i]->setText(QString::fromStdString(texts[i]));
}

std::vector<std::string> ListPageForm::row(int line) const {
    std::vector<std::string> out;
    if (line < 1 || line > int(cells_.size())) return out;
    for (QLabel* l : cells_[line - 1]) out.push_back(l->text().toStdString());
    return out;
}

void ListPageForm::clearRows() {
    for (auto& row : cells_)
        for (QLabel* l : row) l->clear();
}

void ListPageForm::startPage(int pageNumber) {
    clearRows();
    Cim->setText(QString::fromStdString(layout_.heading(pageNumber)));
    Oldal->setText(QString::fromStdString(layout_.pageText(pageNumber)));
    Kiadva->setText(QString::fromStdString(layout_.dateText()));
}

// ---------------------------------------------------------------- SheetPageForm

SheetPageForm::SheetPageForm(std::string name, std::string caption, std::string title, int lineCount)
    : PageForm(std::move(name), std::move(caption)) {
    constexpr double TitleY = 50, FirstLineY = 110, LineHeight = 28;
    double left = Margin;
    double width = paperWidth() - 2 * Margin;
    Cim = sheetLabel("Cim", title, left, TitleY, width, TitleFont, Align::Center);
    if (!title.empty()) rule(left, TitleY + 30, left + width, TitleY + 30, 0.8, 0);
    lineCount = std::max(lineCount, 1);
    double lineHeight = std::min(LineHeight, (paperHeight() - Margin - FirstLineY) / (lineCount + 2));
    PageFont font{std::min(12.0, lineHeight * 0.45)};
    for (int i = 1; i <= lineCount; ++i)
        lines_.push_back(sheetLabel("Sor(" + std::to_string(i) + ")", "", left, FirstLineY + (i - 1) * lineHeight,
                                    width, font, Align::Left));
    Kiadva = sheetLabel("Kiadva", "", left, FirstLineY + (lineCount + 1) * lineHeight, width, font, Align::Left);
}

QLabel* SheetPageForm::line(int i) const {
    return i >= 1 && i <= int(lines_.size()) ? lines_[i - 1] : nullptr;
}

void SheetPageForm::setLine(int i, const std::string& text, const std::string& value) {
    if (QLabel* l = line(i)) l->setText(QString::fromStdString(text + value));
}

std::vector<std::string> SheetPageForm::lines() const {
    std::vector<std::string> out;
    for (QLabel* l : lines_) out.push_back(l->text().toStdString());
    out.push_back(Kiadva->text().toStdString());
    return out;
}

void SheetPageForm::startPage(int) {
    for (QLabel* l : lines_) l->clear();
    Kiadva->setText(QString::fromStdString(issuedText()));
}

// ---------------------------------------------------------------- registration

void registerListForm(const std::string& name, ListLayout layout) {
    forms::registerForm(name, [name, layout] { return new ListPageForm(name, layout); });
}

void registerSheetForm(const std::string& name, const std::string& caption, const std::string& title, int lineCount) {
    forms::registerForm(name, [=] { return new SheetPageForm(name, caption, title, lineCount); });
}

}  // namespace print
