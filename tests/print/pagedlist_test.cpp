// The paged list over a real table: empty sets, page breaks at the form's rows, "Mégse" stopping
// the run, headings that change by page, sheets of one record a page, and where the set ends up.
#include "print/print_support.h"
#include "vb/constants.h"

using namespace print_test;
using Outcome = print::PagedList::Outcome;

namespace {
const std::string Issued = "Kiadva: 2026.11.23.";
}

TEST_F(PrintTest, AnEmptyOrMissingSetShowsTheMessageAndNoPageForm) {
    auto rs = openDistances();
    EXPECT_EQ(distanceList(rs.get()).run(), Outcome::Empty);
    EXPECT_EQ(distanceList(nullptr).beepWhenEmpty().run(), Outcome::Empty);

    ASSERT_EQ(dialogs->log.size(), 3u);
    EXPECT_EQ(dialogs->log[0].text, "Nincs nyomtatandó adat!");
    EXPECT_EQ(dialogs->log[0].style, vb::vbExclamation);
    EXPECT_EQ(dialogs->log[0].title, "FIGYELEM!");
    EXPECT_EQ(dialogs->log[1].kind, forms::ScriptedDialogs::Entry::Beep);  // only when asked
    EXPECT_EQ(dialogs->log[2].text, "Nincs nyomtatandó adat!");
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(forms::find("UttavNyomFormX"), nullptr);
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

TEST_F(PrintTest, TwentyOneRowsFillOnePageExactly) {
    distances(21);
    auto rs = openDistances();
    onPage({"Command1"});
    auto list = distanceList(rs.get()).endAt(print::PagedList::End::First);

    EXPECT_EQ(list.run(), Outcome::Done);

    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(list.pagesShown(), 1);
    EXPECT_EQ(seen[0].lines.front(), "Győr 1|Pécs|101,5");
    EXPECT_EQ(seen[0].lines.back(), "Győr 21|Pécs|121,5");
    EXPECT_EQ(seen[0].title, "T Á V O L S Á G O K");
    EXPECT_EQ(seen[0].pageLabel, "1. oldal          ");
    EXPECT_EQ(seen[0].issued, Issued);
    EXPECT_TRUE(dialogs->messages().empty());
    EXPECT_EQ(print::str(rs->get("Honnan")), "Győr 1");  // back on the first record
    EXPECT_TRUE(printed.empty());                           // "Tovább" prints nothing
}

TEST_F(PrintTest, TheNextPageStartsWithEmptiedLinesAndTheSetEndsOnTheLast) {
    distances(22);
    auto rs = openDistances();
    onPage({"Command1"});
    onPage({"Command1"});

    EXPECT_EQ(distanceList(rs.get()).endAt(print::PagedList::End::Last).run(), Outcome::Done);

    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].lines[0], "Győr 22|Pécs|122,5");
    EXPECT_EQ(seen[1].lines[1], "||");
    EXPECT_EQ(seen[1].pageLabel, "2. oldal          ");
    EXPECT_EQ(print::str(rs->get("Honnan")), "Győr 22");
}

TEST_F(PrintTest, MegseOnAnyPageStopsTheWholeList) {
    distances(50);
    auto rs = openDistances();
    onPage({"Command1"});
    onPage({"Command3"});
    auto list = distanceList(rs.get());

    EXPECT_EQ(list.run(), Outcome::Cancelled);

    EXPECT_EQ(list.pagesShown(), 2);
    EXPECT_EQ(seen.size(), 2u);
    EXPECT_EQ(Globals::PrintCancelled, 1);
    EXPECT_EQ(forms::find("UttavNyomFormX"), nullptr);  // unloaded

    // the next run starts afresh: Form_Load puts the flag back to 0; the close box goes on
    onPage({"close"});
    onPage({"Command1"});
    onPage({"Command1"});
    EXPECT_EQ(list.run(), Outcome::Done);
    EXPECT_EQ(Globals::PrintCancelled, 0);
    EXPECT_EQ(seen.size(), 5u);
}

TEST_F(PrintTest, PrintingSomePagesOnlyAndTheFirstHeadingDiffering) {
    print::registerListForm("BeszallitoNyomFormX",
                            {"Beszállítók", "BESZÁLLÍTÓK-PARTNEREK", 22,
                             {{"Nev", "Név", 3}, {"Cim", "Cím", 3}},
                             print::BodyFont,
                             false,
                             [](int page) { return page == 1 ? "BESZÁLLÍTÓK-PARTNEREK" : "BESZÁLLÍTÓK-BERAKTÁROZÓK"; },
                             print::lapszamText,
                             {}});
    distances(23, "Hódmezővásárhely");
    auto rs = openDistances();
    onPage({"Command1"});
    onPage({"Command2", "Command1"});

    auto run = print::PagedList::list("BeszallitoNyomFormX", rs.get(), [](db::Recordset& r) {
        return std::vector<std::string>{print::str(r.get("Honnan")), print::str(r.get("Hova"))};
    }).run();

    EXPECT_EQ(run, Outcome::Done);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].title, "BESZÁLLÍTÓK-PARTNEREK");
    EXPECT_EQ(seen[1].title, "BESZÁLLÍTÓK-BERAKTÁROZÓK");
    EXPECT_EQ(seen[1].pageLabel, "Lapszám: 2");
    EXPECT_EQ(seen[1].lines[0], "Hódmezővásárhely 23|Pécs");
    EXPECT_EQ(seen[1].lines[1], "|");
    // only the second page reached the printer, as it looked
    ASSERT_EQ(printed.size(), 1u);
    auto texts = printed[0][0].texts();
    EXPECT_NE(std::find(texts.begin(), texts.end(), "Hódmezővásárhely 23"), texts.end());
    EXPECT_NE(std::find(texts.begin(), texts.end(), "Lapszám: 2"), texts.end());
}

TEST_F(PrintTest, SheetsFromTheCurrentRecordStopOnMegseAndANullDateIsToday) {
    distances(4);
    auto rs = openDistances();
    rs->MoveNext();  // from the second record onwards
    onPage({"Command1"});
    onPage({"Command3"});
    auto sheet = [](print::SheetPageForm& f, db::Recordset& r) {
        f.setLine(1, "Honnan: ", print::str(r.get("Honnan")));
        f.setLine(2, "Távolság: ", print::num(r.get("TávolságKm")));
        f.setLine(3, "Dátum: ", print::date(vb::Null{}));
    };

    auto list = print::PagedList::sheets("GKTorzsNyomFormX", rs.get(), sheet).fromCurrent().endAt(print::PagedList::End::Last);
    EXPECT_EQ(list.run(), Outcome::Cancelled);

    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].lines, (std::vector<std::string>{"Honnan: Győr 2", "Távolság: 102,5", "Dátum: 2026.11.23.", Issued}));
    EXPECT_EQ(seen[1].lines[0], "Honnan: Győr 3");
    EXPECT_EQ(print::str(rs->get("Honnan")), "Győr 4");  // MoveLast at the end

    // the current record only: one sheet, the set not moved
    rs->MoveFirst();
    onPage({"Command1"});
    EXPECT_EQ(print::PagedList::sheets("GKTorzsNyomFormX", rs.get(), sheet).currentOnly().run(), Outcome::Done);
    EXPECT_EQ(seen.back().lines[0], "Honnan: Győr 1");
    EXPECT_EQ(print::str(rs->get("Honnan")), "Győr 1");
}
