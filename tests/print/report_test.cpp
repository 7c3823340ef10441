// Banded reports: which section lands on which page, page numbers, rows from a set (its record
// kept), from a grid and given values; the preview's navigation, printing and PDF.
#include <QLabel>
#include <QPushButton>

#include "forms/datacontrol.h"
#include "forms/grid.h"
#include "print/print_support.h"
#include "vb/constants.h"

using namespace print_test;

namespace {

bool has(const print::Page& p, const std::string& text) {
    auto t = p.texts();
    return std::find(t.begin(), t.end(), text) != t.end();
}

// The shape of a data report: a title block, column labels with a rule, a detail line, a footer
// with the page number, and a summary at the end.
print::Report distanceReport() {
    print::Report r("TavDataReport", "Távolságok - Kerova");
    double w = r.bodyWidth();
    r.ReportHeader.label("Label1", "ÚTNYILVÁNTARTÁS", 0, 0, w, print::TitleFont, print::Align::Center)
        .label("Label2", "", 0, 24, w);
    r.PageHeader.label("Fej1", "Honnan:", 0, 0, 200, print::HeadingFont).line("Line1", 0, 14, w, 14);
    r.Detail.field("txtHonnan", "Honnan", 0, 0, 200).field("txtTav", "TávolságKm", 300, 0, 80, print::BodyFont,
                                                            print::Align::Right);
    r.Detail.height = 20;
    r.PageFooter.label("Label6", "%p. oldal / %P", 0, 4, w, print::SmallFont, print::Align::Right);
    r.ReportFooter.label("Label13", "ÖSSZESEN Km: 999", 0, 6, w);
    return r;
}

}  // namespace

TEST_F(PrintTest, SectionsLandOnTheirPagesAndTheSetKeepsItsRecord) {
    distances(80, "Győr");
    auto rs = openDistances();
    rs->MoveNext();
    rs->MoveNext();
    auto r = distanceReport();
    r.setCaption("Label2", "2026.01.01. - 2026.11.23.");
    r.setRecordset(*rs);

    auto pages = r.pages();

    // 80 rows of 20 points: more than two pages of A4 body
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(r.rowCount(), 80);
    EXPECT_TRUE(has(pages[0], "ÚTNYILVÁNTARTÁS"));
    EXPECT_TRUE(has(pages[0], "2026.01.01. - 2026.11.23."));
    EXPECT_FALSE(has(pages[1], "ÚTNYILVÁNTARTÁS"));
    for (int p = 0; p < 3; ++p) {
        EXPECT_TRUE(has(pages[p], "Honnan:")) << p;
        EXPECT_TRUE(has(pages[p], std::to_string(p + 1) + ". oldal / 3")) << p;
    }
    EXPECT_TRUE(has(pages[0], "Győr 1"));
    EXPECT_TRUE(has(pages[0], "101,5"));
    EXPECT_TRUE(has(pages[2], "Győr 80"));
    EXPECT_TRUE(has(pages[2], "ÖSSZESEN Km: 999"));
    EXPECT_FALSE(has(pages[1], "ÖSSZESEN Km: 999"));
    // every row once, in order
    std::vector<std::string> rows;
    for (auto& p : pages)
        for (auto& t : p.texts())
            if (t.rfind("Győr ", 0) == 0) rows.push_back(t);
    ASSERT_EQ(rows.size(), 80u);
    EXPECT_EQ(rows[79], "Győr 80");
    // nothing drawn over the page footer
    for (auto& p : pages) {
        for (auto& item : p.items) {
            if (auto* t = std::get_if<print::TextItem>(&item)) {
                EXPECT_LT(t->y, p.height - r.margin) << t->text;
            }
        }
    }
    EXPECT_EQ(print::str(rs->get("Honnan")), "Győr 3");

    // without rows: one page with the headers and the summary
    r.setRows({"Honnan"}, {});
    pages = r.pages();
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_TRUE(has(pages[0], "ÖSSZESEN Km: 999"));
    EXPECT_TRUE(has(pages[0], "1. oldal / 1"));
}

TEST_F(PrintTest, AGridPrintsItsColumnsAndRowsToPdf) {
    distances(60, "Kőszeg");
    struct GridForm : forms::Form {
        GridForm() : forms::Form("RacsForm", "Rács") {
            auto* dc = data("TavData", "Kerova.dsb", "select * from UtakTavolsag order by Sorszám");
            g = grid("DBGrid1");
            g->bind(dc);
            g->addColumn("Honnan", "Honnan", 150);
            g->addColumn("Hová", "Hova", 150);
            g->addColumn("Táv (km)", "TávolságKm", 80);
        }
        forms::DBGrid* g;
    };
    forms::registerForm("RacsForm", [] { return new GridForm; });
    auto& f = static_cast<GridForm&>(forms::get("RacsForm"));
    f.Load();

    auto r = print::gridReport(*f.g, "RacsNyom", "Nyomtatás", "UTAK - Szőlős Ödön - Megtett Km: 6 336", true);
    std::string path = tmp("racs.pdf");
    ASSERT_TRUE(print::writePdf(r, path));

    auto pages = r.pages();
    EXPECT_TRUE(pages[0].landscape());
    EXPECT_GT(pages.size(), 1u);
    EXPECT_EQ(pdfPages(path), int(pages.size()));
    std::string text = pdfText(path);
    EXPECT_NE(text.find("UTAK - Szőlős Ödön - Megtett Km: 6 336"), std::string::npos) << text.substr(0, 500);
    EXPECT_NE(text.find("Táv (km)"), std::string::npos);
    EXPECT_NE(text.find("Kőszeg 60"), std::string::npos);
    EXPECT_NE(text.find("160,5"), std::string::npos);
    EXPECT_NE(text.find("2. oldal"), std::string::npos);
    EXPECT_NE(text.find("Kiadva: 2026.11.23."), std::string::npos);
}

TEST_F(PrintTest, ThePreviewTurnsPagesPrintsAndSaves) {
    std::vector<std::vector<vb::Variant>> rows;
    for (int i = 1; i <= 100; ++i) rows.push_back({std::string("Fűzfő ") + std::to_string(i), double(i)});
    auto r = distanceReport();
    r.setRows({"Honnan", "TávolságKm"}, rows);

    print::showReport(r);

    auto& f = static_cast<print::ReportPreview&>(form("TavDataReport"));
    EXPECT_EQ(f.Caption(), "Távolságok - Kerova");
    int n = f.pageCount();
    ASSERT_GE(n, 3);
    EXPECT_EQ(textOf(f, "Oldalszam"), "1. oldal / " + std::to_string(n));
    EXPECT_FALSE(f.control<QPushButton>("Elozo")->isEnabled());
    click(f, "Kovetkezo");
    EXPECT_EQ(f.currentPage(), 1);
    click(f, "Utolso");
    EXPECT_EQ(textOf(f, "Oldalszam"), std::to_string(n) + ". oldal / " + std::to_string(n));
    EXPECT_FALSE(f.control<QPushButton>("Kovetkezo")->isEnabled());
    click(f, "Elso");
    EXPECT_EQ(f.currentPage(), 0);

    dialogs->printer = false;
    click(f, "Nyomtat");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{"A nyomtató nincs készenlétben!"});
    EXPECT_TRUE(printed.empty());
    dialogs->printer = true;
    click(f, "Nyomtat");
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(int(printed[0].size()), n);  // every page

    print::setPdfFileChooser([&](const std::string&) { return tmp("jelentes.pdf"); });
    click(f, "PdfMentes");
    EXPECT_EQ(pdfPages(tmp("jelentes.pdf")), n);
    EXPECT_NE(pdfText(tmp("jelentes.pdf")).find("Fűzfő 100"), std::string::npos);

    // shown again with other rows: a fresh preview of the new pages
    r.setRows({"Honnan"}, {{std::string("Őr")}});
    print::showReport(r);
    EXPECT_EQ(static_cast<print::ReportPreview&>(form("TavDataReport")).pageCount(), 1);
    click(form("TavDataReport"), "Bezar");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(forms::find("TavDataReport"), nullptr);
}
