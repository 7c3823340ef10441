// The page form's buttons: printing with and without a printer, the page as the printer and the
// PDF get it (checked with pdftotext and pdfinfo), and "PDF mentés...".
#include <QPrinter>
#include <filesystem>
#include <fstream>

#include "print/print_support.h"
#include "vb/constants.h"

using namespace print_test;

namespace {

print::ListPageForm& loadDistancePage(int rows) {
    auto& f = static_cast<print::ListPageForm&>(forms::get("UttavNyomFormX"));
    f.Load();
    f.startPage(1);
    for (int i = 1; i <= rows; ++i)
        f.setRow(i, {"Kőszeg " + std::to_string(i), "Tűzoltó út", std::to_string(i) + ",5"});
    return f;
}

}  // namespace

TEST_F(PrintTest, NyomtatWithoutAPrinterSaysSoAndTheButtonsComeBack) {
    dialogs->printer = false;
    auto& f = loadDistancePage(2);
    f.Show(true);

    click(f, "Command2");

    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].kind, forms::ScriptedDialogs::Entry::Beep);
    EXPECT_EQ(dialogs->log[1].text, "A nyomtató nincs készenlétben!");
    EXPECT_EQ(dialogs->log[1].title, "FIGYELEM!");
    EXPECT_EQ(dialogs->log[1].style, vb::vbOKOnly);
    EXPECT_EQ(f.printedCount(), 0);
    EXPECT_TRUE(printed.empty());
    for (const char* b : {"Command1", "Command2", "Command3", "PdfMentes"}) EXPECT_FALSE(f.control<QWidget>(b)->isHidden()) << b;
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);

    // a printer that is there but fails says the same
    dialogs->printer = true;
    printerWorks = false;
    click(f, "Command2");
    EXPECT_EQ(dialogs->messages().size(), 2u);
    EXPECT_EQ(buttonsHiddenWhilePrinting, std::vector<bool>{true});

    // and a working one gets the page; the preview stays for "Tovább" or "Mégse"
    printerWorks = true;
    click(f, "Command2");
    EXPECT_EQ(f.printedCount(), 1);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].size(), 1u);
    EXPECT_TRUE(f.isShown());
    EXPECT_EQ(dialogs->messages().size(), 2u);
    EXPECT_EQ(buttonsHiddenWhilePrinting.back(), true);
    EXPECT_EQ(Globals::PrintCancelled, 0);
    click(f, "Command3");
    EXPECT_EQ(Globals::PrintCancelled, 1);
    EXPECT_FALSE(f.isLoaded());
}

TEST_F(PrintTest, ThePrinterGetsThePageAsPdfWithHungarianLetters) {
    auto& f = loadDistancePage(3);
    f.Cim->setVisible(false);  // a label the code hid stays off the paper
    std::string path = tmp("printer.pdf");
    print::setPrintSink([&](const std::vector<print::Page>& pages) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(path));
        return print::printPages(pages, printer);
    });
    f.Show(true);
    click(f, "Command2");

    EXPECT_EQ(f.printedCount(), 1);
    EXPECT_EQ(pdfPages(path), 1);
    std::string text = pdfText(path);
    EXPECT_NE(text.find("Kőszeg 1"), std::string::npos) << text;
    EXPECT_NE(text.find("Tűzoltó út"), std::string::npos);
    EXPECT_NE(text.find("TÁVOLSÁG (KM):"), std::string::npos) << text;
    EXPECT_NE(text.find("Kiadva: 2026.11.23."), std::string::npos);
    EXPECT_NE(text.find("1. oldal"), std::string::npos);
    EXPECT_EQ(text.find("T Á V O L"), std::string::npos);
    EXPECT_EQ(text.find("Kőszeg 4"), std::string::npos);
}

TEST_F(PrintTest, PdfMentesWritesThePageWhereTheUserSays) {
    auto& f = loadDistancePage(21);
    f.Show(true);
    std::string asked;
    print::setPdfFileChooser([&](const std::string& suggested) {
        asked = suggested;
        return tmp("távolságok");  // no ending: ".pdf" is added
    });
    click(f, "PdfMentes");

    EXPECT_EQ(asked, "UttavNyomFormX.pdf");
    std::string path = tmp("távolságok.pdf");
    ASSERT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(pdfPages(path), 1);
    std::string text = pdfText(path);
    EXPECT_NE(text.find("Kőszeg 21"), std::string::npos);
    EXPECT_NE(text.find("HOVÁ:"), std::string::npos);
    EXPECT_TRUE(dialogs->messages().empty());
    EXPECT_TRUE(f.isShown());

    // cancelled: nothing; a folder that isn't there: the message, and no file
    print::setPdfFileChooser([](const std::string&) { return std::string(); });
    click(f, "PdfMentes");
    EXPECT_TRUE(dialogs->log.empty());
    print::setPdfFileChooser([&](const std::string&) { return tmp("nincs/ilyen.pdf"); });
    click(f, "PdfMentes");
    ASSERT_EQ(dialogs->messages().size(), 1u);
    EXPECT_EQ(dialogs->messages()[0].rfind("A PDF állomány nem menthető!", 0), 0u);
    EXPECT_FALSE(std::filesystem::exists(tmp("nincs")));
}

TEST_F(PrintTest, LongTextsAreCutAtTheirColumnAndMissingLinesAreHarmless) {
    auto& f = loadDistancePage(0);
    f.setRow(1, {std::string(200, 'W')});
    f.setRow(99, {"nincs ilyen sor"});
    f.setRow(2, {"csak az első"});
    EXPECT_EQ(f.row(2), (std::vector<std::string>{"csak az első", "", ""}));
    EXPECT_EQ(f.cell("Nincs", 1), nullptr);
    EXPECT_EQ(f.cell("Hova", 2)->objectName(), "Hova(2)");

    std::string path = tmp("cut.pdf");
    ASSERT_TRUE(print::writePdf(f, path));
    std::string text = pdfText(path);
    size_t ws = text.find("WWW");
    ASSERT_NE(ws, std::string::npos);
    size_t n = 0;
    while (ws + n < text.size() && text[ws + n] == 'W') ++n;
    EXPECT_GT(n, 5u);
    EXPECT_LT(n, 60u);  // the first column is well under a third of the width
}
