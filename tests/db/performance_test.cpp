// The record layer on a trip-sized table: 200 000 rows. An ordered dynaset opened and moved to its
// last row, a sum over the table, and a FindFirst with LIKE that hits the last row each stay
// under 0.2 s: the engine's page cache serves, and a Find reads only the filter's columns.
#include <chrono>

#include "db_support.h"

using namespace dbtest;
using vb::Variant;

namespace {

constexpr int kRows = 200000;

class PerformanceTest : public ::testing::Test {
protected:
    static inline testsupport::TempDir* dir = nullptr;

    // One file for the suite: writing 200 000 rows is the slow part.
    static void SetUpTestSuite() {
        dir = new testsupport::TempDir;
        jet::TableSpec t{"Utak", {}, {{"ixRecordID", {"recordID"}, false, true}}};
        t.columns = {{"recordID", jet::ColType::Long},     {"Dátum", jet::ColType::DateTime},
                     {"GkFrsz", jet::ColType::Text, 20},    {"Honnan", jet::ColType::Text, 50},
                     {"Hova", jet::ColType::Text, 50},      {"TávolságKm", jet::ColType::Double},
                     {"Megnevezés", jet::ColType::Text, 100}, {"CsoportAzonositó", jet::ColType::Text, 20}};
        for (int i = 0; i < 30; ++i) t.columns.push_back({"Szam" + std::to_string(i), jet::ColType::Double});
        auto db = jet::Database::create((dir->path() / "Kerova.dsb").string());
        jet::Table& table = db->createTable(t);
        const char* towns[] = {"Budapest", "Győr", "Szeged", "Pécs", "Debrecen", "Eger", "Sopron"};
        db->begin();
        for (int i = 0; i < kRows; ++i) {
            bool last = i == kRows - 1;
            jet::Row r(t.columns.size());
            r[0] = int32_t(i + 1);
            r[1] = jet::DateTime{double(40000 + (i * 7919) % 3000)};
            r[2] = std::string("ABC-") + std::to_string(i % 500);
            r[3] = std::string(last ? "Zalaegerszeg" : towns[i % 7]);
            r[4] = std::string(towns[(i + 3) % 7]);
            r[5] = double(i % 300) + 0.5;
            r[6] = std::string("Szállítás ") + std::to_string(i);
            r[7] = std::string("CS") + std::to_string(i % 1000);
            for (int k = 0; k < 30; ++k) r[size_t(8 + k)] = double(k * i);
            table.insert(std::move(r));
        }
        db->commit();
    }
    static void TearDownTestSuite() {
        db::closeAll();
        delete dir;
        dir = nullptr;
    }
    void SetUp() override {
        db::setWorkingFolder(dir->path());
        db::Database::open("Kerova.dsb")->OpenRecordset("select * from Utak where recordID = 1");  // warm
    }

    // The best of three runs: the machine is shared, a slow run is someone else's.
    template <class F>
    static double seconds(F&& f) {
        double best = 1e9;
        for (int i = 0; i < 3; ++i) {
            auto t0 = std::chrono::steady_clock::now();
            f();
            best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());
        }
        return best;
    }
};

TEST_F(PerformanceTest, OrderedDynasetSumAndFindEachStayUnderTwoTenthsOfASecond) {
    auto db = db::Database::open("Kerova.dsb");
    std::unique_ptr<db::Recordset> rs;
    double open = seconds([&] {
        rs = db->OpenRecordset("select * from Utak order by Dátum");
        rs->MoveLast();
        rs->get("recordID");
    });
    EXPECT_EQ(rs->RecordCount(), kRows);
    EXPECT_LT(open, 0.2);

    Variant total;
    double sum = seconds([&] { total = db->OpenRecordset("select sum(TávolságKm) as tav from Utak")->get("tav"); });
    double expected = 0;
    for (int i = 0; i < kRows; ++i) expected += double(i % 300) + 0.5;
    EXPECT_EQ(total, Variant(expected));
    EXPECT_LT(sum, 0.2);

    auto byId = db->OpenRecordset("select * from Utak order by recordID");
    double find = seconds([&] {
        byId->MoveFirst();
        byId->FindFirst("[Honnan] like 'Zala*'");
    });
    ASSERT_FALSE(byId->NoMatch());
    EXPECT_EQ(byId->get("recordID"), Variant(kRows));
    EXPECT_LT(find, 0.2);

    // a walk over every record reads each row from cached pages
    int n = 0;
    auto t0 = std::chrono::steady_clock::now();
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) n += rs->get("GkFrsz") != Variant(vb::Null{});
    double walk = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    EXPECT_EQ(n, kRows);
    RecordProperty("open_s", std::to_string(open));
    RecordProperty("sum_s", std::to_string(sum));
    RecordProperty("find_s", std::to_string(find));
    RecordProperty("walk_s", std::to_string(walk));
    std::printf("open+MoveLast %.3f s, sum %.3f s, FindFirst %.3f s, walk %.3f s\n", open, sum, find, walk);
}

}  // namespace
