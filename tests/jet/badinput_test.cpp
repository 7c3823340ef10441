// Files that are not readable Access 2000 databases: each gives one JetError naming the file and
// the cause, never a crash, and opening never writes to the file.
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "jet/database.h"
#include "jet/format.h"
#include "jet/header.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;
using namespace testsupport;

namespace {

std::vector<uint8_t> slurp(const fs::path& p) {
    std::ifstream f(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
}

void spit(const fs::path& p, const std::vector<uint8_t>& b) {
    std::ofstream f(p, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(b.data()), std::streamsize(b.size()));
}

// Opens the file and reads every table through; the error it gives, if any.
std::optional<JetError> readAll(const fs::path& p, Database::Mode mode = Database::Mode::ReadOnly) {
    try {
        auto db = Database::open(p.string(), mode);
        for (const auto& name : db->tableNames(true)) {
            Table& t = db->table(name);
            t.scan([](RowId, const Row&) { return true; });
            t.scanStored([](RowId, const Row&) { return true; });
        }
        return std::nullopt;
    } catch (const JetError& e) {
        return e;
    }
}

// The file fails with `kind`, the message names the file and holds `cause`, and the bytes on
// disk are unchanged even by a read-write open.
void expectRefused(const fs::path& p, ErrorKind kind, const std::string& cause) {
    std::vector<uint8_t> before = slurp(p);
    for (auto mode : {Database::Mode::ReadOnly, Database::Mode::ReadWrite}) {
        std::optional<JetError> e = readAll(p, mode);
        ASSERT_TRUE(e.has_value()) << cause;
        EXPECT_EQ(e->kind(), kind) << e->what();
        std::string msg = e->what();
        EXPECT_EQ(msg.rfind(p.string() + ": ", 0), 0u) << msg;
        EXPECT_NE(msg.find(cause), std::string::npos) << msg;
        EXPECT_EQ(msg.find('\n'), std::string::npos) << msg;
    }
    EXPECT_EQ(slurp(p), before) << "the file was written: " << cause;
}

struct Places {
    uint32_t tdef = 0;      // Table1's TDEF page
    RowId firstRow;         // its first row
    uint32_t pages = 0;
};

Places places(const fs::path& p) {
    auto db = Database::open(p.string(), Database::Mode::ReadOnly);
    Table& t = db->table("Table1");
    return {t.def().firstPage, t.rowIds().at(0), db->pager().pageCount()};
}

}  // namespace

TEST(BadInput, NotAnAccess2000File) {
    TempDir dir;
    std::vector<uint8_t> good = slurp(testdata() / "testV2000.mdb");

    spit(dir / "empty.mdb", {});
    expectRefused(dir / "empty.mdb", ErrorKind::NotJet4, "empty");

    std::string txt = "Kedves Ügyfelünk,\nez egy szöveg, nem adatbázis.\n";
    spit(dir / "text.mdb", std::vector<uint8_t>(txt.begin(), txt.end()));
    expectRefused(dir / "text.mdb", ErrorKind::NotJet4, "not an Access database");

    spit(dir / "short.mdb", std::vector<uint8_t>(good.begin(), good.begin() + 2000));
    expectRefused(dir / "short.mdb", ErrorKind::NotJet4, "shorter than one page");

    std::vector<uint8_t> b = good;
    b[0x14] = 0;
    spit(dir / "jet3.mdb", b);
    expectRefused(dir / "jet3.mdb", ErrorKind::NotJet4, "Access 97");

    for (uint8_t v : {2, 3}) {
        b = good;
        b[0x14] = v;
        spit(dir / "ace.accdb", b);
        expectRefused(dir / "ace.accdb", ErrorKind::NotJet4, "Access 2007 or later");
    }
    b = good;
    std::memcpy(&b[4], "Standard ACE DB", 15);
    spit(dir / "ace2.accdb", b);
    expectRefused(dir / "ace2.accdb", ErrorKind::NotJet4, "Access 2007 or later");

    // The encoding key lives in the masked part of the header.
    b = good;
    maskHeader(b.data());
    EXPECT_EQ(le16(&b[0x3C]), 1252);  // unmasked: the code page reads plainly
    putLe32(&b[0x3E], 0x12345678);
    maskHeader(b.data());
    spit(dir / "encrypted.mdb", b);
    expectRefused(dir / "encrypted.mdb", ErrorKind::Encrypted, "encrypted");

    EXPECT_THROW(Database::open((dir / "missing.mdb").string()), JetError);
}

TEST(BadInput, TruncatedFiles) {
    TempDir dir;
    fs::path src = copyTestFile("testV2000.mdb", dir);
    Places at = places(src);
    std::vector<uint8_t> good = slurp(src);

    std::vector<uint8_t> b(good.begin(), good.end() - 1000);
    spit(dir / "midpage.mdb", b);
    expectRefused(dir / "midpage.mdb", ErrorKind::Corrupt, "truncated");

    // Whole pages cut: Table1's data page is gone while the maps still name it.
    b.assign(good.begin(), good.begin() + size_t(at.firstRow.page) * kPageSize);
    ASSERT_GT(at.firstRow.page, at.tdef);
    spit(dir / "cut.mdb", b);
    expectRefused(dir / "cut.mdb", ErrorKind::Corrupt, "page");

    b.assign(good.begin(), good.begin() + 2 * kPageSize);
    spit(dir / "twopages.mdb", b);
    expectRefused(dir / "twopages.mdb", ErrorKind::Corrupt, "truncated");
}

TEST(BadInput, BrokenStructures) {
    TempDir dir;
    fs::path src = copyTestFile("testV2000.mdb", dir);
    Places at = places(src);
    const std::vector<uint8_t> good = slurp(src);
    auto mutate = [&](const std::string& name, auto change) {
        std::vector<uint8_t> b = good;
        change(b);
        spit(dir / name, b);
        return dir / name;
    };
    auto pageAt = [](std::vector<uint8_t>& b, uint32_t pg) { return b.data() + size_t(pg) * kPageSize; };

    // The catalogue's TDEF page (2) with another page type: open itself fails.
    expectRefused(mutate("cattype.mdb", [&](auto& b) { pageAt(b, 2)[0] = 0x01; }), ErrorKind::Corrupt,
                  "page 2 is not a table definition");
    // A user table's TDEF with a data page's type.
    expectRefused(mutate("tdeftype.mdb", [&](auto& b) { pageAt(b, at.tdef)[0] = 0x01; }), ErrorKind::Corrupt,
                  "is not a table definition");
    // A TDEF chain that leads back to itself.
    expectRefused(mutate("loop.mdb", [&](auto& b) { putLe32(pageAt(b, at.tdef) + 4, at.tdef); }), ErrorKind::Corrupt,
                  "loops");
    // A TDEF chain into the void.
    expectRefused(mutate("chain.mdb", [&](auto& b) { putLe32(pageAt(b, at.tdef) + 4, 0x00FFFFFF); }),
                  ErrorKind::Corrupt, "past the end");
    // A column count far beyond the definition's bytes.
    expectRefused(mutate("cols.mdb", [&](auto& b) { putLe16(pageAt(b, at.tdef) + tdef::kColumnCount, 4000); }),
                  ErrorKind::Corrupt, "cut short");
    // A row's slot offset pointing outside its page, and below the slot table.
    expectRefused(mutate("slot.mdb", [&](auto& b) { putLe16(pageAt(b, at.firstRow.page) + 14, 0x1FFF); }),
                  ErrorKind::Corrupt, "bounds");
    expectRefused(mutate("slot2.mdb", [&](auto& b) { putLe16(pageAt(b, at.firstRow.page) + 14, 3); }),
                  ErrorKind::Corrupt, "bounds");
    // A slot count that runs the slot table off the page.
    expectRefused(mutate("count.mdb", [&](auto& b) { putLe16(pageAt(b, at.firstRow.page) + 12, 4000); }),
                  ErrorKind::Corrupt, "page");
    // A variable column offset that points past its row's end.
    expectRefused(mutate("var.mdb",
                         [&](auto& b) {
                             uint8_t* p = pageAt(b, at.firstRow.page);
                             size_t start = le16(p + 14) & 0x1FFF;
                             size_t end = 4096;
                             // row end: | ... | var offsets | var count (2) | null mask (2 bytes: 9 columns) |
                             size_t varCount = le16(p + end - 2 - 2);
                             ASSERT_GT(varCount, 0u);
                             putLe16(p + end - 2 - 4, uint16_t(end - start + 100));  // offset of column 0
                         }),
                  ErrorKind::Corrupt, "outside the row");
    // An overflow pointer to a page past the end.
    expectRefused(mutate("overflow.mdb",
                         [&](auto& b) {
                             uint8_t* p = pageAt(b, at.firstRow.page);
                             uint16_t w = le16(p + 14);
                             putLe16(p + 14, uint16_t(w | 0x4000));
                             putLe32(p + (w & 0x1FFF), 0xFFFFFF00);
                         }),
                  ErrorKind::Corrupt, "outside the file");
}

TEST(BadInput, RandomDamageNeverCrashes) {
    // Bytes flipped in the pages the reader walks (header, catalogue, definitions, data, maps):
    // whatever happens must be success or a JetError.
    TempDir dir;
    fs::path src = copyTestFile("overflowTestV2000.mdb", dir);
    const std::vector<uint8_t> good = slurp(src);
    std::mt19937 rng(20240611);
    fs::path p = dir / "damaged.mdb";
    int errors = 0;
    for (int round = 0; round < 300; ++round) {
        std::vector<uint8_t> b = good;
        int flips = 1 + int(rng() % 8);
        for (int i = 0; i < flips; ++i) {
            size_t pos = rng() % b.size();
            if (round % 2) pos = (rng() % 30) * kPageSize + rng() % 600;  // headers and slot tables
            b[pos] = uint8_t(rng());
        }
        spit(p, b);
        if (readAll(p)) ++errors;
    }
    EXPECT_GT(errors, 0);
}
