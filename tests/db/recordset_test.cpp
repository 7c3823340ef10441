// The record layer on real Access 2000 files: navigation, counting, finding, bookmarks, editing
// and the current record after each, errors with their DAO numbers.
#include <unistd.h>

#include <fstream>

#include "db_support.h"
#include "vb/conv.h"

using namespace dbtest;
using db::Database;
using vb::Variant;

namespace {

class RecordsetTest : public ::testing::Test {
protected:
    testsupport::TempDir dir;

    void SetUp() override {
        jet::TableSpec empty{"Ures", {{"recordID", jet::ColType::Long}}, {}};
        createFile(dir.path(), "Kerova.dsb", {vehicles(), empty});
        db::setWorkingFolder(dir.path());
        auto rs = open("Jarmuvek");
        addVehicle(*rs, 1, "ABC-123", "Opel Astra", 120000);
        addVehicle(*rs, 2, "KŐB-456", "Škoda Fabia", 80000);
        addVehicle(*rs, 3, "GYŐ-789", "Ford Focus", 45000);
        addVehicle(*rs, 4, "ABD-111", "Suzuki Swift", vb::Null{});
        rs->Close();
    }
    void TearDown() override { db::closeAll(); }

    // The forms spell the file in lower case.
    std::unique_ptr<db::Recordset> open(const std::string& source) {
        return Database::open("kerova.dsb")->OpenRecordset(source, db::dbOpenDynaset);
    }
};

TEST_F(RecordsetTest, EmptySetCountsZeroAndRefusesMoves) {
    auto rs = open("Ures");
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->Eof());
    EXPECT_TRUE(rs->Bof());
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->get("recordID"); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3021);
    rs->FindFirst("[recordID] = 1");
    EXPECT_TRUE(rs->NoMatch());
}

TEST_F(RecordsetTest, RecordCountIsAtLeastOneAfterOpeningAndExactAfterMoveLast) {
    auto rs = open("Jarmuvek");
    EXPECT_GE(rs->RecordCount(), 1);
    EXPECT_LT(rs->RecordCount(), 4);
    rs->MoveLast();
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 4);
    EXPECT_EQ(rs->size(), 4u);
}

TEST_F(RecordsetTest, NavigationWalksTheSetAndStopsAtItsEnds) {
    auto rs = open("select * from Jarmuvek order by recordID");
    EXPECT_FALSE(rs->Bof());
    EXPECT_EQ(column(*rs, "recordID"), (std::vector<Variant>{1, 2, 3, 4}));
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->get("recordID"); }), 3021);
    rs->MovePrevious();
    EXPECT_EQ(rs->get("recordID"), Variant(4));
    rs->MoveFirst();
    rs->MovePrevious();
    EXPECT_TRUE(rs->Bof());
    EXPECT_EQ(errorOf([&] { rs->MovePrevious(); }), 3021);
    rs->MoveNext();
    EXPECT_EQ(rs->get("recordID"), Variant(1));
    rs->setAbsolutePosition(2);
    EXPECT_EQ(rs->get("recordID"), Variant(3));
    EXPECT_EQ(rs->AbsolutePosition(), 2);
}

TEST_F(RecordsetTest, FindsFollowTheFilterSyntaxAndKeepTheRecordWithoutAMatch) {
    auto rs = open("select * from Jarmuvek order by recordID");
    rs->FindFirst("[GkFrsz] like \"AB*\"");
    EXPECT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->get("recordID"), Variant(1));
    rs->FindNext("[GkFrsz] like \"ab*\"");
    EXPECT_EQ(rs->get("recordID"), Variant(4));
    rs->FindNext("[GkFrsz] like \"AB*\"");
    EXPECT_TRUE(rs->NoMatch());
    EXPECT_EQ(rs->get("recordID"), Variant(4));
    rs->FindPrevious("[GkFrsz] like \"AB*\"");
    EXPECT_EQ(rs->get("recordID"), Variant(1));
    rs->FindFirst("[Típus] = 'Ford Focus'");
    EXPECT_EQ(rs->get("GkFrsz"), Variant("GYŐ-789"));
    rs->FindFirst("[recordID] = 2");
    EXPECT_EQ(rs->get("GkFrsz"), Variant("KŐB-456"));
    rs->FindFirst("[GkFrsz] = \"kőb-456\"");  // case ignored, accents too
    EXPECT_FALSE(rs->NoMatch());
    rs->FindLast("[Km] > 50000");
    EXPECT_EQ(rs->get("recordID"), Variant(2));
    rs->FindFirst("[Km] is null");
    EXPECT_EQ(rs->get("recordID"), Variant(4));

    // a search text with a quote makes the filter invalid: an error, NoMatch, the record kept
    rs->MoveNext();
    rs->MoveFirst();
    rs->MoveNext();
    Variant before = rs->Bookmark();
    EXPECT_NE(errorOf([&] { rs->FindFirst("[GkFrsz] like \"AB\"C*\""); }), 0);
    EXPECT_TRUE(rs->NoMatch());
    EXPECT_EQ(rs->Bookmark(), before);
    EXPECT_EQ(rs->get("GkFrsz"), Variant("KŐB-456"));
    EXPECT_NE(errorOf([&] { rs->FindFirst("[Nincs] = 1"); }), 0);
}

TEST_F(RecordsetTest, BookmarksReturnToARecordAndSurviveEditsAndOtherSets) {
    auto rs = open("Jarmuvek");
    rs->MoveNext();
    rs->MoveNext();
    Variant mark = rs->Bookmark();
    rs->Edit();
    rs->set("Típus", "Ford Focus Kombi: ő ű Ő Ű");
    rs->Update();
    rs->MoveFirst();
    rs->setBookmark(mark);
    EXPECT_EQ(rs->get("GkFrsz"), Variant("GYŐ-789"));
    EXPECT_EQ(rs->get("Típus"), Variant("Ford Focus Kombi: ő ű Ő Ű"));
    // the same row in another order of the same table
    auto sorted = open("select * from Jarmuvek order by GkFrsz");
    sorted->setBookmark(mark);
    EXPECT_EQ(sorted->get("recordID"), Variant(3));
    EXPECT_EQ(errorOf([&] { rs->setBookmark(Variant("x")); }), 3159);
    EXPECT_EQ(errorOf([&] { rs->setBookmark(vb::ByteArray{1, 2, 3, 4, 5, 6}); }), 3159);
    rs->MoveLast();
    rs->MoveNext();
    EXPECT_EQ(errorOf([&] { rs->Bookmark(); }), 3021);
}

TEST_F(RecordsetTest, AddNewAndUpdateKeepTheCurrentRecordAndAppendTheNewOne) {
    auto rs = open("Jarmuvek");
    rs->MoveNext();
    rs->AddNew();
    EXPECT_TRUE(vb::isNull(rs->get("GkFrsz")));
    rs->set("recordID", 5);
    rs->set("GkFrsz", "ÚJ-555");
    EXPECT_EQ(rs->get("GkFrsz"), Variant("ÚJ-555"));  // the new record's values before Update
    rs->Update();
    EXPECT_EQ(rs->get("recordID"), Variant(2));
    rs->MoveLast();
    EXPECT_EQ(rs->get("GkFrsz"), Variant("ÚJ-555"));
    EXPECT_EQ(rs->get("Sorszám"), Variant(5));  // AutoNumber
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 5);

    // at EOF the set stays at EOF
    rs->MoveLast();
    rs->MoveNext();
    addVehicle(*rs, 6, "X-6", "x", 1);
    EXPECT_TRUE(rs->Eof());
    rs->MovePrevious();
    EXPECT_EQ(rs->get("recordID"), Variant(6));
    EXPECT_EQ(rs->RecordCount(), 6);

    // a new record into an empty table
    auto empty = open("Ures");
    empty->AddNew();
    empty->set("recordID", 9);
    empty->Update();
    EXPECT_EQ(empty->RecordCount(), 1);
    empty->MoveLast();
    EXPECT_EQ(empty->get("recordID"), Variant(9));
}

TEST_F(RecordsetTest, DeleteLeavesAnInvalidCurrentRecordUntilAMove) {
    auto rs = open("select * from Jarmuvek order by recordID");
    rs->MoveNext();
    rs->Delete();
    EXPECT_EQ(errorOf([&] { rs->get("GkFrsz"); }), 3167);
    EXPECT_EQ(errorOf([&] { rs->Edit(); }), 3167);
    EXPECT_FALSE(rs->Eof());
    rs->MoveNext();
    EXPECT_EQ(rs->get("recordID"), Variant(3));
    rs->MoveLast();
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 3);
    auto again = open("Jarmuvek");
    again->FindFirst("[recordID] = 2");
    EXPECT_TRUE(again->NoMatch());

    // deleting the last record: MoveNext reaches EOF; MovePrevious after a Delete goes back
    rs->MoveLast();
    rs->Delete();
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
    rs->MoveFirst();
    rs->MoveNext();
    rs->Delete();
    rs->MovePrevious();
    EXPECT_EQ(rs->get("recordID"), Variant(1));
    rs->Delete();
    rs->MoveNext();
    EXPECT_TRUE(rs->Eof());
    EXPECT_EQ(rs->RecordCount(), 0);
}

TEST_F(RecordsetTest, ValuesAreReadWhenARecordBecomesCurrent) {
    auto a = open("Jarmuvek");
    auto b = open("Jarmuvek");
    EXPECT_EQ(a->get("Típus"), Variant("Opel Astra"));
    b->Edit();
    b->set("Típus", "Átírva");
    b->Update();
    a->MoveNext();
    a->MovePrevious();
    EXPECT_EQ(a->get("Típus"), Variant("Átírva"));
    // a row deleted through another set fails on access, and the set goes on past it
    b->MoveNext();
    b->Delete();
    a->MoveNext();
    EXPECT_EQ(errorOf([&] { a->get("GkFrsz"); }), 3167);
    a->MoveNext();
    EXPECT_EQ(a->get("recordID"), Variant(3));
}

TEST_F(RecordsetTest, EditLocksOnlyAgainstOtherProcessesAndUpdateStoresTheChangedFields) {
    auto a = open("Jarmuvek");
    auto b = open("Jarmuvek");
    a->Edit();
    b->Edit();  // the same process: its own sets do not lock each other out
    b->set("Km", 1);
    b->Update();
    a->set("Típus", "A");
    a->Update();  // only the changed field is written: b's Km stays
    auto c = open("select * from Jarmuvek where recordID = 1");
    EXPECT_EQ(c->get("Km"), Variant(1.0));
    EXPECT_EQ(c->get("Típus"), Variant("A"));
    EXPECT_EQ(errorOf([&] { c->Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { c->set("Km", 2); }), 3020);
    c->Edit();
    c->set("Km", 2);
    c->CancelUpdate();
    EXPECT_EQ(c->get("Km"), Variant(1.0));
    c->Edit();
    c->set("Km", 3);
    c->MoveNext();  // a move drops the edit
    c->MoveFirst();
    EXPECT_EQ(c->get("Km"), Variant(1.0));
}

TEST_F(RecordsetTest, FieldsByNameAndOrdinalWithConversions) {
    auto rs = open("Jarmuvek");
    EXPECT_EQ(rs->FieldCount(), 7u);
    EXPECT_EQ(rs->Fields(1).Value(), Variant("ABC-123"));
    EXPECT_EQ(rs->Fields("gkfrsz").Value(), Variant("ABC-123"));
    EXPECT_EQ(rs->Fields("TÍPUS").Name(), "Típus");
    EXPECT_EQ(rs->Fields(1).Name(), "GkFrsz");
    EXPECT_EQ(errorOf([&] { rs->Fields("Nincs"); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->Fields(7); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->Fields(-1); }), 3265);
    EXPECT_TRUE(vb::isNull(rs->get("MuszakiVizsgaDatum")));

    rs->Edit();
    rs->set("Km", "7,5");  // the decimal comma
    rs->set("MuszakiVizsgaDatum", "2026.11.22.");
    rs->set("Figyelmeztetés", -1);
    rs->Update();
    EXPECT_EQ(rs->get("Km"), Variant(7.5));
    EXPECT_EQ(rs->get("MuszakiVizsgaDatum"), Variant(vb::Date{46348}));
    EXPECT_EQ(rs->get("Figyelmeztetés"), Variant(true));
    rs->Edit();
    EXPECT_EQ(errorOf([&] { rs->set("Km", "abc"); }), 3421);
    EXPECT_EQ(errorOf([&] { rs->set("Km", ""); }), 3421);
    EXPECT_EQ(errorOf([&] { rs->set("recordID", 3e9); }), 3421);
    EXPECT_EQ(errorOf([&] { rs->set("GkFrsz", std::string(21, 'x')); }), 3163);
    EXPECT_EQ(errorOf([&] { rs->set("Sorszám", 9); }), 3164);
    rs->set("GkFrsz", std::string(20, 'x'));  // the width counts characters, not bytes
    rs->set("GkFrsz", "ŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐŐ");
    rs->set("recordID", 10.5);  // halves to even
    rs->Update();
    EXPECT_EQ(rs->get("recordID"), Variant(10));
}

TEST_F(RecordsetTest, SortTakesEffectOnTheNextOpenRecordset) {
    auto rs = open("Jarmuvek");
    rs->setSort("GkFrsz DESC");
    EXPECT_EQ(rs->get("recordID"), Variant(1));  // this set is unchanged
    auto sorted = rs->OpenRecordset();
    EXPECT_EQ(column(*sorted, "GkFrsz"), (std::vector<Variant>{"KŐB-456", "GYŐ-789", "ABD-111", "ABC-123"}));
    // a statement's own ORDER BY gives way to the Sort; its WHERE stays
    auto q = open("select * from Jarmuvek where Km > 50000 order by Km");
    q->setSort("recordID desc");
    EXPECT_EQ(column(*q->OpenRecordset(), "recordID"), (std::vector<Variant>{2, 1}));
    q->setSort("");
    EXPECT_EQ(column(*q->OpenRecordset(), "recordID"), (std::vector<Variant>{2, 1}));
}

TEST_F(RecordsetTest, RequeryAndExecuteSeeTheFileAsItIsNow) {
    auto rs = open("select * from Jarmuvek where Km > 50000 order by Km");
    rs->MoveLast();
    EXPECT_EQ(Database::open("Kerova.dsb")->Execute("update Jarmuvek set Km = 50001 where recordID = 3"), 1u);
    rs->Requery();
    EXPECT_EQ(rs->get("recordID"), Variant(3));
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 3);
    auto db = Database::open("KEROVA.DSB");
    EXPECT_EQ(errorOf([&] { db->Execute("select * from Jarmuvek"); }), 3065);
    EXPECT_NE(errorOf([&] { db->Execute("update Jarmuvek set Km = Km / 0"); }), 0);
    rs->Requery();
    EXPECT_EQ(column(*rs, "Km"), (std::vector<Variant>{50001.0, 80000.0, 120000.0}));  // nothing changed
}

TEST_F(RecordsetTest, ExtraColumnsKeepADynasetAndDistinctGivesAReadOnlySnapshot) {
    auto rs = open("select *, Km * 2 as Dupla from Jarmuvek where recordID = 1");
    EXPECT_FALSE(rs->isSnapshot());
    EXPECT_EQ(rs->FieldCount(), 8u);
    EXPECT_EQ(rs->get("Dupla"), Variant(240000.0));
    rs->Edit();
    rs->set("Km", 10);
    EXPECT_EQ(errorOf([&] { rs->set("Dupla", 1); }), 3164);
    rs->Update();
    EXPECT_EQ(rs->get("Dupla"), Variant(20.0));
    rs->FindFirst("[Dupla] = 20");
    EXPECT_FALSE(rs->NoMatch());

    auto snap = open("select distinct Típus from Jarmuvek order by Típus");
    EXPECT_TRUE(snap->isSnapshot());
    EXPECT_EQ(errorOf([&] { snap->Edit(); }), 3027);
    EXPECT_EQ(errorOf([&] { snap->AddNew(); }), 3027);
    EXPECT_EQ(errorOf([&] { snap->Delete(); }), 3027);
    snap->FindFirst("[Típus] like 'S*'");
    EXPECT_EQ(snap->get("Típus"), Variant("Suzuki Swift"));
    Variant mark = snap->Bookmark();
    snap->MoveFirst();
    snap->setBookmark(mark);
    EXPECT_EQ(snap->get("Típus"), Variant("Suzuki Swift"));
    snap->FindPrevious("[Típus] like 'Š*'");
    EXPECT_EQ(snap->get("Típus"), Variant("Škoda Fabia"));
    snap->MoveFirst();  // the database's order: Š with S, before Su
    EXPECT_EQ(column(*snap, "Típus"),
              (std::vector<Variant>{"Ford Focus", "Opel Astra", "Škoda Fabia", "Suzuki Swift"}));

    auto total = open("select sum(Km) as Ossz from Jarmuvek");
    EXPECT_EQ(total->get("Ossz"), Variant(125010.0));  // Km of record 1 is 10 now
    auto ro = Database::open("kerova.dsb")->OpenRecordset("Jarmuvek", db::dbOpenSnapshot);
    EXPECT_EQ(errorOf([&] { ro->Edit(); }), 3027);
}

TEST_F(RecordsetTest, ErrorsCarryTheirNumbers) {
    EXPECT_EQ(errorOf([&] { open("Nincsilyen"); }), 3078);
    EXPECT_EQ(errorOf([&] { open("select * from Nincsilyen"); }), 3078);
    EXPECT_NE(errorOf([&] { open("select * from Jarmuvek where Nincs = 1"); }), 0);
    EXPECT_NE(errorOf([&] { open("select * fro Jarmuvek"); }), 0);

    auto rs = open("Jarmuvek");
    rs->AddNew();
    rs->set("recordID", 2);
    EXPECT_EQ(errorOf([&] { rs->Update(); }), 3022);  // the unique index
    EXPECT_FALSE(rs->editing());
    rs->MoveLast();
    rs->MoveFirst();
    EXPECT_EQ(rs->RecordCount(), 4);

    rs->Close();
    EXPECT_EQ(errorOf([&] { rs->Close(); }), 3420);
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), 3420);
    EXPECT_EQ(errorOf([&] { rs->get("recordID"); }), 3420);
    EXPECT_EQ(errorOf([&] { rs->Eof(); }), 3420);
}

TEST_F(RecordsetTest, NamesResolveInTheWorkingFolderWithoutRegardToCase) {
    auto a = Database::open("kerova.dsb");
    auto b = Database::open("KEROVA.DSB");
    auto c = Database::open((dir.path() / "Kerova.dsb").string());
    EXPECT_EQ(a, b);  // one object per physical file
    EXPECT_EQ(a, c);
    EXPECT_EQ(a->path().filename(), "Kerova.dsb");

    // the two spellings of regiszt and betarol stand for each other
    createFile(dir.path(), "Regiszt.dsb", {{"Regisztrálás", {{"Esemény", jet::ColType::Text, 255}}, {}}});
    EXPECT_EQ(Database::open("regiszt.mdb"), Database::open("Regiszt.dsb"));

    EXPECT_EQ(errorOf([] { Database::open("Torzsek.dsb"); }), 3024);
    EXPECT_EQ(errorOf([] { Database::open("nincs/Torzsek.dsb"); }), 3044);
    EXPECT_EQ(errorOf([] { Database::open(""); }), 3024);

    // a folder without databases
    testsupport::TempDir empty;
    db::setWorkingFolder(empty.path());
    EXPECT_EQ(errorOf([] { Database::open("Torzsek.dsb")->OpenRecordset("Bettorzs"); }), 3024);
    EXPECT_EQ(errorOf([] { Database::open("Kerova.dsb"); }), 3024);

    // a file that is no database
    std::ofstream(empty.path() / "Rossz.dsb") << "not a database";
    EXPECT_EQ(errorOf([] { Database::open("rossz.dsb"); }), 3343);
}

TEST_F(RecordsetTest, AReadOnlyFileReadsButRefusesWrites) {
    db::closeAll();
    std::filesystem::permissions(dir.path() / "Kerova.dsb", std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    if (::access((dir.path() / "Kerova.dsb").c_str(), W_OK) == 0) GTEST_SKIP() << "running as root";
    auto db = Database::open("kerova.dsb");
    EXPECT_TRUE(db->readOnly());
    auto rs = db->OpenRecordset("Jarmuvek");
    EXPECT_EQ(rs->get("GkFrsz"), Variant("ABC-123"));
    EXPECT_EQ(errorOf([&] { rs->Edit(); }), 3027);
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3027);
    EXPECT_EQ(errorOf([&] { db->Execute("update Jarmuvek set Km = 1"); }), 3027);
}

TEST_F(RecordsetTest, ABatchCommitsOnceAndNothingOfAFailedOneStays) {
    auto before = open("Jarmuvek");
    auto db = Database::open("Kerova.dsb");
    db->batch([&] {
        auto rs = open("Jarmuvek");
        for (int i = 10; i < 1010; ++i) addVehicle(*rs, i, "B-" + std::to_string(i), "", 0);
    });
    before->MoveNext();
    EXPECT_EQ(before->get("GkFrsz"), Variant("KŐB-456"));
    EXPECT_NE(errorOf([&] {
        db->batch([&] {
            auto rs = open("Jarmuvek");
            addVehicle(*rs, 5000, "C-5000", "", 0);
            addVehicle(*rs, 1, "dup", "", 0);  // 3022 ends the batch
        });
    }), 0);
    db::closeAll();
    before.reset();
    auto again = open("select * from Jarmuvek where GkFrsz like 'B-*'");
    again->MoveLast();
    EXPECT_EQ(again->RecordCount(), 1000);
    again->FindFirst("[recordID] = 2");
    EXPECT_TRUE(again->NoMatch());
    auto none = open("select * from Jarmuvek where recordID = 5000");
    EXPECT_EQ(none->RecordCount(), 0);
}

// A Data control's hook sees every move.
TEST_F(RecordsetTest, MoveListenersAreToldBeforeAndAfterEachMove) {
    struct Log : db::Recordset::MoveListener {
        std::vector<std::string> events;
        void beforeMove(db::Recordset&) override { events.push_back("before"); }
        void afterMove(db::Recordset& rs) override {
            events.push_back(rs.Eof() ? "eof" : vb::CStr(rs.get("recordID")));
        }
    } log;
    auto rs = open("select * from Jarmuvek order by recordID");
    rs->addMoveListener(&log);
    rs->MoveNext();
    rs->FindFirst("[recordID] = 4");
    rs->FindFirst("[recordID] = 99");  // no match: no move
    rs->MoveNext();
    rs->removeMoveListener(&log);
    rs->MoveFirst();
    EXPECT_EQ(log.events, (std::vector<std::string>{"before", "2", "before", "4", "before", "eof"}));
}

}  // namespace
