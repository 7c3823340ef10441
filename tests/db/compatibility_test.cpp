// Files made by Microsoft Access open through the record layer: every table reads to its row
// count, and a row is added, found and deleted again (on a copy).
#include "db_support.h"

using namespace dbtest;
using vb::Variant;

namespace {

// A value of the column's type, distinct per column so that unique indexes take it.
std::optional<Variant> sample(const jet::Column& c, int i) {
    using T = jet::ColType;
    switch (c.type) {
    case T::Text: return std::string("k" + std::to_string(i)).substr(0, c.length / 2u);
    case T::Memo: return Variant("hosszú szöveg");
    case T::Byte: return Variant(uint8_t(250 - i % 200));
    case T::Integer:
    case T::Long: return Variant(9000 + i);
    case T::Double:
    case T::Single: return Variant(9000.5 + i);
    case T::Currency:
    case T::Numeric: return Variant(12.34);
    case T::Boolean: return Variant(true);
    case T::DateTime: return Variant(vb::Date{46348.5});
    case T::Guid: return Variant("{6BA1C3D2-0A1B-4C5D-8E9F-" + std::to_string(100000000000 + i) + "}");
    default: return std::nullopt;
    }
}

// A table whose foreign keys Access enforces takes only rows that match its parent tables.
bool hasParentTable(const jet::TableDef& def) {
    for (const auto& ix : def.logicalIndexes)
        if (ix.kind == 0x02 && ix.relTableType != 0x01) return true;
    return false;
}

class CompatibilityTest : public ::testing::TestWithParam<std::string> {
protected:
    testsupport::TempDir dir;
    void TearDown() override { db::closeAll(); }
};

TEST_P(CompatibilityTest, FileMadeByAccessReadsEveryTableAndTakesARow) {
    const std::string name = GetParam();
    testsupport::copyTestFile(name, dir);
    db::setWorkingFolder(dir.path());
    std::string upper = name;
    for (char& ch : upper) ch = char(std::toupper(static_cast<unsigned char>(ch)));
    auto db = db::Database::open(upper);  // names match without regard to case
    int tablesWritten = 0;
    for (const std::string& tableName : db->engine().tableNames()) {
        SCOPED_TRACE(tableName);
        auto rs = db->OpenRecordset(tableName);
        size_t rows = 0;
        for (; !rs->Eof(); rs->MoveNext(), ++rows)
            for (size_t i = 0; i < rs->FieldCount(); ++i) rs->Fields(int(i)).Value();
        const jet::Table& t = db->table(tableName);
        EXPECT_EQ(rows, t.rowCount());

        const auto& cols = t.def().columns;
        auto marker = std::find_if(cols.begin(), cols.end(),
                                   [](const jet::Column& c) { return c.type == jet::ColType::Text && c.length >= 24; });
        if (marker == cols.end() || hasParentTable(t.def())) continue;
        uint32_t before = t.rowCount();
        rs->AddNew();
        for (size_t i = 0; i < cols.size(); ++i) {
            if (cols[i].autoNumber()) continue;
            if (auto v = sample(cols[i], int(i))) rs->Fields(int(i)).setValue(*v);
        }
        rs->set(marker->name, "Kerova ő ű");
        rs->Update();
        EXPECT_EQ(db->table(tableName).rowCount(), before + 1);
        rs->FindFirst("[" + marker->name + "] = 'Kerova ő ű'");
        ASSERT_FALSE(rs->NoMatch());
        EXPECT_EQ(rs->get(marker->name), Variant("Kerova ő ű"));
        rs->Delete();
        rs->MoveNext();
        rs->Close();
        EXPECT_EQ(db->table(tableName).rowCount(), before);
        ++tablesWritten;
    }
    EXPECT_GT(tablesWritten, 0);
}

INSTANTIATE_TEST_SUITE_P(AccessFiles, CompatibilityTest,
                         ::testing::Values("testV2000.mdb", "indexTestV2000.mdb", "overflowTestV2000.mdb",
                                           "delColTestV2000.mdb"),
                         [](const auto& info) {
                             std::string n = info.param;
                             return n.substr(0, n.find('.'));
                         });

}  // namespace
