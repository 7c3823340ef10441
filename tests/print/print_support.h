// Shared by the print tests: a distance table to list, the registered page forms, a modal runner
// that acts on each page as a user would, and the PDF tools' view of a file.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <deque>
#include <string>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/globals.h"
#include "gui/support.h"
#include "print/page.h"
#include "print/pagedlist.h"
#include "print/pageform.h"
#include "print/report.h"
#include "vb/clock.h"
#include "vb/conv.h"

namespace print_test {

// Output of a command (pdftotext, pdfinfo).
std::string run(const std::string& command);
std::string pdfText(const std::string& path);
int pdfPages(const std::string& path);

class PrintTest : public kerova_test::GuiTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // n rows in UtakTavolsag: "Győr 1" -> "Pécs", 101,5 km ...
    void distances(int n, const std::string& from = "Győr");
    std::unique_ptr<db::Recordset> openDistances();
    // The next page shown: its lines, heading, page label and date are recorded, then the buttons
    // are clicked in order. A page with nothing queued is left open (the test goes on).
    void onPage(std::vector<std::string> buttons);
    print::PagedList distanceList(db::Recordset* rs);
    std::string tmp(const std::string& name) const { return (dir.path() / name).string(); }

    struct Seen {
        std::string form;
        std::vector<std::string> lines;  // "Győr 1|Pécs|101,5" per line (list) or the sheet's lines
        std::string title, pageLabel, issued;
    };
    std::vector<Seen> seen;
    std::deque<std::vector<std::string>> pageActions;
    std::vector<std::vector<print::Page>> printed;  // what reached the printer
    std::vector<bool> buttonsHiddenWhilePrinting;
    bool printerWorks = true;
};

}  // namespace print_test
