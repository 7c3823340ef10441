// A file made with another sort order than Access 2000's General order: everything reads, and a
// write that would need a text key in that order is refused before anything is written.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "jet/create.h"
#include "jet/database.h"
#include "jet/error.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;

namespace {

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

}  // namespace

TEST(OtherSortOrder, ReadsInFullButRefusesTextKeysItCannotEncode) {
    testsupport::TempDir dir;
    std::string path = (dir / "hu.mdb").string();
    {
        auto db = Database::create(path);
        TableSpec spec;
        spec.name = "Partnerek";
        spec.columns = {{"Id", ColType::Long, 0, true}, {"Név", ColType::Text, 40}, {"Megjegyzés", ColType::Text, 40}};
        spec.indexes = {{"PrimaryKey", {"Id"}, true, true}, {"Név", {"Név"}}};
        Table& t = db->createTable(spec);
        t.insert({Value(), std::string("Őrsi Ödön"), std::string("első")});
        t.insert({Value(), std::string("Ábel Ágnes"), Value()});
        // As if the file had been made by Access set to the Hungarian sort order (1038): both text
        // columns say so in the table definition.
        db->begin();
        TableDef& def = t.mutableDef();
        for (auto& c : def.columns)
            if (c.type == ColType::Text) c.sortOrder = 1038;
        writeTableDef(db->pager(), def);
        db->commit();
    }
    std::string before = bytesOf(path);

    auto db = Database::open(path);
    Table& t = db->table("partnerek");
    std::vector<std::string> names;
    t.scan([&](RowId, const Row& r) {
        names.push_back(std::get<std::string>(r[1]));
        return true;
    });
    EXPECT_EQ(names, (std::vector<std::string>{"Őrsi Ödön", "Ábel Ágnes"}));
    EXPECT_EQ(t.indexOrder("Név").size(), 2u);

    // A new row needs a key of the indexed text column: refused, nothing written.
    try {
        t.insert({Value(), std::string("Cseh Csaba"), Value()});
        FAIL() << "insert with a text key in sort order 1038 was accepted";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::SortOrder);
        EXPECT_NE(std::string(e.what()).find("1038"), std::string::npos) << e.what();
    }
    // Changing only a text column that no index uses needs no key, and is allowed; changing the
    // indexed one is refused like the insert.
    RowId first = t.rowIds().front();
    Row r = t.read(first);
    r[1] = std::string("Őri Ödön");
    EXPECT_THROW(t.update(first, r), JetError);
    EXPECT_EQ(t.rowCount(), 2u);
    db.reset();
    EXPECT_EQ(bytesOf(path), before);

    auto again = Database::open(path);
    Row kept = again->table("Partnerek").read(first);
    EXPECT_EQ(std::get<std::string>(kept[1]), "Őrsi Ödön");
    again->table("Partnerek").update(first, {kept[0], kept[1], std::string("második")});
    EXPECT_EQ(std::get<std::string>(again->table("Partnerek").read(first)[2]), "második");
}
