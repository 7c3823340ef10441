// The company catalogue and tools: column orders the program copies by position, files made by
// init and by the demo against every reader (our consistency check, the oracle, mdbtools), check's
// findings, and the same output as the earlier Java tools where that jar is built.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "company/catalog.h"
#include "company/demo.h"
#include "company/folder.h"
#include "jet/check.h"
#include "jet/database.h"
#include "jet/support.h"

namespace {

namespace fs = std::filesystem;
using testsupport::TempDir;
using company::allFiles;

std::vector<std::string> names(const company::Table& t, size_t from, size_t to) {
    auto all = t.columnNames();
    return {all.begin() + from, all.begin() + to};
}

const company::Table& table(const std::string& file, const std::string& name) {
    return *company::findFile(file)->table(name);
}

// Every database file of a folder (the catalogue's, and the sibling files under Raktar).
std::vector<fs::path> databaseFiles(const fs::path& dir) {
    std::vector<fs::path> out;
    for (const auto& e : fs::recursive_directory_iterator(dir)) {
        auto ext = e.path().extension().string();
        if (ext == ".dsb" || ext == ".mdb" || ext == ".DSB") out.push_back(e.path());
    }
    return out;
}

// Our consistency check, the oracle's and mdbtools' schema on every file of a folder.
void expectEveryReaderAccepts(const fs::path& dir) {
    for (const auto& f : databaseFiles(dir)) {
        SCOPED_TRACE(f.string());
        auto db = jet::Database::open(f.string(), jet::Database::Mode::ReadOnly);
        EXPECT_EQ(jet::checkDatabase(*db), std::vector<std::string>{});
        if (testsupport::oracleAvailable()) {
            EXPECT_EQ(testsupport::oracle({"check", f.string()}).out, "OK\n");
        }
        auto schema = testsupport::run({"mdb-schema", f.string()});
        EXPECT_EQ(schema.exitCode, 0) << schema.err;
        for (const auto& t : db->tableNames()) {
            EXPECT_NE(schema.out.find("[" + t + "]"), std::string::npos) << t;
            EXPECT_EQ(testsupport::run({"mdb-export", f.string(), t}).exitCode, 0) << t;
        }
    }
}

TEST(CompanyCatalogue, ColumnOrdersTheProgramCopiesByPosition) {
    const auto& jarmuvek = table("Kerova.dsb", "Jarmuvek");
    const auto& szamla = table("Kerova.dsb", "SZAMLA");
    const auto& beraktar = table("Kerova.dsb", "beraktar");
    const auto& cikkszam = table("betarol.mdb", "Cikkszám");
    const auto& alkatreszek = table("Kerova.dsb", "SzervizModulAlkatreszek");

    // Jarmuvek: the invoice's seventeen vehicle columns first, recordID 13th; 33 in all.
    ASSERT_EQ(jarmuvek.columns.size(), 33u);
    EXPECT_EQ(jarmuvek.columns[0].name, "GkFrsz");
    EXPECT_EQ(jarmuvek.columns[12].name, "recordID");
    EXPECT_TRUE(jarmuvek.columns[12].unique);
    EXPECT_EQ(jarmuvek.columns[16].name, "JelenlegiKmAllas");
    EXPECT_EQ(jarmuvek.columns[17].name, "PartnerID");
    EXPECT_EQ(jarmuvek.columns[28].name, "Figyelmeztetés");
    EXPECT_EQ(jarmuvek.columns[32].name, "TuzoltoDatum");

    // SZAMLA: beraktar 0-12 (9 renamed), Jarmuvek 0-16 at 13-29, same types and widths; 58 in all.
    ASSERT_EQ(szamla.columns.size(), 58u);
    for (size_t i = 0; i < 13; ++i) {
        EXPECT_EQ(szamla.columns[i].type, beraktar.columns[i].type) << i;
        EXPECT_EQ(szamla.columns[i].length, beraktar.columns[i].length) << i;
        if (i != 9) {
            EXPECT_EQ(szamla.columns[i].name, beraktar.columns[i].name);
        }
    }
    EXPECT_EQ(szamla.columns[9].name, "BerRecordID");
    EXPECT_FALSE(szamla.columns[9].unique);
    for (size_t i = 0; i < 17; ++i) {
        EXPECT_EQ(szamla.columns[13 + i].name, jarmuvek.columns[i].name);
        EXPECT_EQ(szamla.columns[13 + i].type, jarmuvek.columns[i].type);
        EXPECT_EQ(szamla.columns[13 + i].length, jarmuvek.columns[i].length);
    }
    EXPECT_EQ(szamla.columns[30].name, "TELJDATUM");
    EXPECT_EQ(szamla.columns[57].name, "VTSZ");
    EXPECT_EQ(beraktar.columns.size(), 14u);
    EXPECT_EQ(beraktar.columns[13].name, "Cégnév");

    // Cikkszám: hiba is an Integer at 4; Szorzó, CSKKod, CSKID at 55-57; 75 in all.
    ASSERT_EQ(cikkszam.columns.size(), 75u);
    EXPECT_EQ(cikkszam.columns[4].name, "hiba");
    EXPECT_EQ(cikkszam.columns[4].type, jet::ColType::Integer);
    EXPECT_EQ(names(cikkszam, 54, 58), (std::vector<std::string>{"DarabszámCsomagban", "Szorzó", "CSKKod", "CSKID"}));
    EXPECT_EQ(cikkszam.position("KulonosMertekegys"), 28);
    EXPECT_EQ(cikkszam.position("KulonosMertekegyseg"), 31);

    // The service parts take the article's 0-57 by position: 55 is JármüID, recordID stands at 58.
    ASSERT_EQ(alkatreszek.columns.size(), 59u);
    EXPECT_EQ(names(alkatreszek, 0, 55), names(cikkszam, 0, 55));
    EXPECT_EQ(alkatreszek.columns[55].name, "JármüID");
    EXPECT_EQ(alkatreszek.columns[55].type, jet::ColType::Long);
    EXPECT_EQ(names(alkatreszek, 56, 58), names(cikkszam, 56, 58));
    EXPECT_EQ(alkatreszek.columns[58].name, "recordID");
    EXPECT_EQ(alkatreszek.columns[58].type, jet::ColType::Text);

    // Tables addressed by position only: the action log and the warning limits.
    const auto& log = table("regiszt.mdb", "Regisztrálás");
    ASSERT_EQ(log.columns.size(), 10u);
    EXPECT_EQ(log.columns[3].name, "Idö");
    EXPECT_EQ(log.columns[3].type, jet::ColType::DateTime);
    EXPECT_EQ(log.columns[6].type, jet::ColType::Integer);
    EXPECT_EQ(log.columns[8].type, jet::ColType::Double);
    const auto& limits = table("Torzsek.dsb", "VizsgaFigyelmeztetoNap");
    ASSERT_EQ(limits.columns.size(), 10u);
    for (size_t i = 0; i < 10; ++i) EXPECT_EQ(limits.columns[i].type, i < 5 ? jet::ColType::Integer : jet::ColType::Long);
}

TEST(CompanyCatalogue, FilesSpellingsCopiesAndIndexes) {
    EXPECT_EQ(company::companyFiles().size(), 8u);
    EXPECT_EQ(company::siblingFiles().size(), 2u);
    EXPECT_EQ(company::findFile("REGISZT.MDB")->fileName, "Regiszt.dsb");
    EXPECT_EQ(company::findFile("betarol.dsb")->fileName, "betarol.mdb");
    EXPECT_EQ(company::findFile("nosuch.dsb"), nullptr);
    EXPECT_NE(company::findFile("Kerova.dsb")->table("JARMUVEK"), nullptr);
    EXPECT_NE(table("betarol.mdb", "cikkszám").column("CIKKSZÁM"), nullptr);  // case of accented letters too

    // The copies keep columns and drop the unique index, since a copied key may return.
    const auto& archive = table("Kerova.dsb", "JarmuvekArchiv");
    EXPECT_EQ(archive.columnNames(), table("Kerova.dsb", "Jarmuvek").columnNames());
    for (const auto& c : archive.columns) EXPECT_FALSE(c.unique) << c.name;
    EXPECT_EQ(table("betarol.mdb", "CikkszámIdeigl").columns.size(), 75u);
    EXPECT_EQ(table("Polcrak.dsb", "KIVET").columnNames(), table("Fogastor.DSB", "KIVET").columnNames());
    EXPECT_EQ(table("Polcrak.dsb", "KIVET").columns.size(), 37u);

    // Indexes: the computed keys unique, AutoNumber columns plain; names in plain ASCII.
    auto jarmuvek = company::tableSpec(table("Kerova.dsb", "Jarmuvek"));
    ASSERT_EQ(jarmuvek.indexes.size(), 1u);
    EXPECT_EQ(jarmuvek.indexes[0].name, "ix0_recordID");
    EXPECT_TRUE(jarmuvek.indexes[0].unique);
    auto vezetok = company::tableSpec(table("Kerova.dsb", "Vezetok"));
    ASSERT_EQ(vezetok.indexes.size(), 1u);
    EXPECT_EQ(vezetok.indexes[0].name, "ix0_Sorszam");
    EXPECT_FALSE(vezetok.indexes[0].unique);
    EXPECT_TRUE(vezetok.columns[0].autoNumber);
    EXPECT_EQ(company::tableSpec(table("Kerova.dsb", "SzervizModul")).indexes[0].name, "ix0_recordID");
    EXPECT_EQ(company::tableSpec(table("Kerova.dsb", "Utak")).indexes.size(), 0u);
}

TEST(CompanyInit, FilesHoldTheWholeCatalogueAndPassEveryReader) {
    TempDir tmp;
    fs::path dir = tmp / "ceg";
    auto made = testsupport::cli({"init", dir.string()});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    std::string expected;
    for (const auto* f : company::companyFiles()) expected += "létrehozva: " + (dir / f->fileName).string() + "\n";
    EXPECT_EQ(made.out, expected);
    auto sib = testsupport::cli({"init", "--sibling", (dir / "Raktar").string()});
    EXPECT_EQ(sib.out, "létrehozva: " + (dir / "Raktar" / "Polcrak.dsb").string() + "\nlétrehozva: " +
                           (dir / "Raktar" / "Fogastor.DSB").string() + "\n");

    // Every table with its columns, types, widths and indexes, as the engine reads them back.
    for (const auto& f : allFiles()) {
        auto db = jet::Database::open((dir / (f.sibling ? "Raktar" : "") / f.fileName).string(),
                                      jet::Database::Mode::ReadOnly);
        ASSERT_EQ(db->tableNames().size(), f.tables.size()) << f.fileName;
        for (const auto& t : f.tables) {
            const auto& def = db->table(t.name).def();
            ASSERT_EQ(def.columns.size(), t.columns.size()) << t.name;
            for (size_t i = 0; i < t.columns.size(); ++i) {
                EXPECT_EQ(def.columns[i].name, t.columns[i].name);
                EXPECT_EQ(def.columns[i].type, t.columns[i].type) << t.columns[i].name;
            }
            EXPECT_EQ(def.logicalIndexes.size(), company::tableSpec(t).indexes.size()) << t.name;
        }
    }
    expectEveryReaderAccepts(dir);

    auto again = testsupport::cli({"init", dir.string()});
    EXPECT_EQ(again.out, "minden adatbázis megvan: " + dir.string() + "\n");
    auto check = testsupport::cli({"check", dir.string() + "/"});
    EXPECT_EQ(check.out, "rendben: " + dir.string() + "\n");
    EXPECT_EQ(check.exitCode, 0);
}

// A folder with one file missing, one table missing, one column missing, a file spelled in
// other capitals and a file that is no database.
fs::path damagedFolder(const TempDir& tmp) {
    fs::path dir = tmp / "hibas";
    company::init(dir, false);
    fs::remove(dir / "Tartosan.dsb");
    fs::rename(dir / "Kerova.dsb", dir / "KEROVA.DSB");
    fs::remove(dir / "kitarol.mdb");
    jet::Database::create((dir / "kitarol.mdb").string());
    fs::remove(dir / "Torzsek.dsb");
    auto torzsek = jet::Database::create((dir / "Torzsek.dsb").string());
    jet::TableSpec bettorzs = company::tableSpec(table("Torzsek.dsb", "Bettorzs"));
    bettorzs.columns.erase(bettorzs.columns.begin() + 10);  // VPID
    torzsek->createTable(bettorzs);
    return dir;
}

TEST(CompanyCheck, ListsMissingFilesTablesAndColumns) {
    TempDir tmp;
    fs::path dir = damagedFolder(tmp);
    std::ofstream(dir / "Regiszt.dsb") << "not a database";
    auto r = testsupport::cli({"check", dir.string()});
    EXPECT_EQ(r.exitCode, 1);
    std::istringstream lines(r.out);
    std::vector<std::string> got;
    for (std::string l; std::getline(lines, l);) got.push_back(l);
    ASSERT_EQ(got.size(), 5u) << r.out;
    EXPECT_EQ(got[0], "hiányzó tábla: Torzsek.dsb / VizsgaFigyelmeztetoNap");
    EXPECT_EQ(got[1], "hiányzó oszlop: Torzsek.dsb / Bettorzs / VPID");
    EXPECT_EQ(got[2].rfind("nem olvasható állomány: Regiszt.dsb (", 0), 0u) << got[2];
    EXPECT_EQ(got[3], "hiányzó tábla: kitarol.mdb / Címzett");
    EXPECT_EQ(got[4], "hiányzó állomány: Tartosan.dsb");
}

TEST(CompanyCheck, InitCompletesWhatIsMissingAndArgumentErrors) {
    TempDir tmp;
    fs::path dir = damagedFolder(tmp);
    auto r = testsupport::cli({"init", dir.string()});
    EXPECT_EQ(r.out, "létrehozva: " + (dir / "Torzsek.dsb").string() + "\nlétrehozva: " + (dir / "kitarol.mdb").string() +
                         "\nlétrehozva: " + (dir / "Tartosan.dsb").string() + "\n");
    // A table that lacks a column is not rebuilt: check still names it, and nothing else.
    auto c = testsupport::cli({"check", dir.string()});
    EXPECT_EQ(c.out, "hiányzó oszlop: Torzsek.dsb / Bettorzs / VPID\n");
    EXPECT_FALSE(fs::exists(dir / "Kerova.dsb"));  // KEROVA.DSB is the file, not made again
    expectEveryReaderAccepts(dir);

    auto none = testsupport::cli({"check", (tmp / "nincs").string()});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.err, "nincs ilyen könyvtár: " + (tmp / "nincs").string() + "\n");
    EXPECT_EQ(testsupport::cli({"check"}).err, "használat: kerova check [--sibling] KÖNYVTÁR\n");
    EXPECT_EQ(testsupport::cli({"init", "a", "b"}).exitCode, 2);
    EXPECT_EQ(testsupport::cli({"frobnicate"}).exitCode, 2);
}

TEST(CompanyTools, ToolErrorsAreOneLine) {
    TempDir tmp;
    std::ofstream(tmp / "file") << "x";
    auto onFile = testsupport::cli({"init", (tmp / "file").string()});
    EXPECT_EQ(onFile.exitCode, 1);
    EXPECT_EQ(onFile.err.rfind("hiba: ", 0), 0u);
    EXPECT_EQ(std::count(onFile.err.begin(), onFile.err.end(), '\n'), 1) << onFile.err;

    fs::create_directories(tmp / "broken");
    std::ofstream(tmp / "broken" / "Kerova.dsb") << std::string(8192, 'x');
    auto broken = testsupport::cli({"init", (tmp / "broken").string()});
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_EQ(std::count(broken.err.begin(), broken.err.end(), '\n'), 1) << broken.err;
    EXPECT_NE(broken.err.find("Kerova.dsb"), std::string::npos) << broken.err;
    EXPECT_EQ(fs::file_size(tmp / "broken" / "Kerova.dsb"), 8192u);  // never written
}

TEST(CompanyDemo, FilesPassEveryReaderAndHoldTheDueDeadlines) {
    TempDir tmp;
    fs::path dir = tmp / "demo";
    auto today = std::chrono::sys_days(std::chrono::year(2026) / 11 / 22);
    auto r = company::createDemo(dir, today);
    EXPECT_TRUE(r.created);
    EXPECT_EQ(r.warnings, std::vector<std::string>{});
    expectEveryReaderAccepts(dir);
    EXPECT_EQ(company::check(dir, false), std::vector<std::string>{});
    EXPECT_EQ(company::check(dir / "Raktar", true), std::vector<std::string>{});

    auto db = jet::Database::open((dir / "Kerova.dsb").string(), jet::Database::Mode::ReadOnly);
    std::set<std::string> warned;
    db->table("Jarmuvek").scan([&](jet::RowId, const jet::Row& row) {
        if (std::get<bool>(row[28])) warned.insert(std::get<std::string>(row[0]));
        return true;
    });
    EXPECT_EQ(db->table("Jarmuvek").rowCount(), 10u);
    EXPECT_EQ(warned, (std::set<std::string>{"MEG-318", "PRS-539", "RKB-604", "JFK-903", "HVG-158"}));
    // Months of trips, in date order, none on a weekend, all before today.
    auto& utak = db->table("Utak");
    EXPECT_GT(utak.rowCount(), 300u);
    double last = 0;
    bool ordered = true, weekdays = true;
    utak.scan([&](jet::RowId, const jet::Row& row) {
        double day = std::get<jet::DateTime>(row[3]).days;
        ordered = ordered && day >= last;
        last = day;
        int weekday = (static_cast<int>(day) + 5) % 7;  // 0 is Monday (1899-12-30 was a Saturday)
        weekdays = weekdays && weekday < 5;
        return true;
    });
    EXPECT_TRUE(ordered);
    EXPECT_TRUE(weekdays);
    EXPECT_LT(last, 46348.0);  // 2026-11-22
    EXPECT_GT(db->table("SZAMLA").rowCount(), 10u);
    EXPECT_EQ(db->table("SzervizModul").rowCount(), 11u);

    // A folder that already has a company is left alone.
    auto size = fs::file_size(dir / "Kerova.dsb");
    EXPECT_FALSE(company::createDemo(dir, today).created);
    EXPECT_EQ(fs::file_size(dir / "Kerova.dsb"), size);
}

// The demo's tables agree with each other as the forms expect: trips name existing vehicles and
// run on from one odometer reading to the next, parts and attachments point at existing keys.
TEST(CompanyDemo, TablesAgreeWithEachOther) {
    TempDir tmp;
    fs::path dir = tmp / "demo";
    company::createDemo(dir, std::chrono::sys_days(std::chrono::year(2025) / 2 / 28));
    auto db = jet::Database::open((dir / "Kerova.dsb").string(), jet::Database::Mode::ReadOnly);
    auto column = [&](const std::string& table, const std::string& name) {
        auto& t = db->table(table);
        size_t at = static_cast<size_t>(company::findFile("Kerova.dsb")->table(table)->position(name));
        std::vector<jet::Value> out;
        t.scan([&](jet::RowId, const jet::Row& row) {
            out.push_back(row[at]);
            return true;
        });
        return out;
    };
    auto textSet = [](const std::vector<jet::Value>& v) {
        std::set<std::string> s;
        for (const auto& x : v) s.insert(std::get<std::string>(x));
        return s;
    };
    auto plates = textSet(column("Jarmuvek", "GkFrsz"));
    auto groups = textSet(column("Utak", "CsoportAzonositó"));
    auto visits = textSet(column("SzervizModul", "recordID"));
    for (const auto& p : textSet(column("Utak", "FRSZ"))) EXPECT_TRUE(plates.count(p)) << p;
    for (const auto& g : textSet(column("UtakSzallitottSzemely", "UtakCsoportAzonosito"))) EXPECT_TRUE(groups.count(g)) << g;
    for (const auto& g : textSet(column("UtakCsatoltOkmany", "UtakCsoportAzonosito"))) EXPECT_TRUE(groups.count(g)) << g;
    for (const auto& k : textSet(column("SzervizModulAlkatreszek", "recordID"))) EXPECT_TRUE(visits.count(k)) << k;
    EXPECT_EQ(visits.size(), 11u);  // the keys are unique

    // Odometer: per vehicle, each trip starts where the last one ended.
    auto frsz = column("Utak", "FRSZ"), start = column("Utak", "KezdöKM"), end = column("Utak", "ZáróKM");
    std::map<std::string, double> lastEnd;
    for (size_t i = 0; i < frsz.size(); ++i) {
        const auto& p = std::get<std::string>(frsz[i]);
        double s = std::get<double>(start[i]), e = std::get<double>(end[i]);
        if (lastEnd.count(p)) {
            EXPECT_EQ(s, lastEnd[p]) << p << " row " << i;
        }
        EXPECT_GT(e, s);
        lastEnd[p] = e;
    }
    auto current = column("Jarmuvek", "JelenlegiKmAllas"), vplates = column("Jarmuvek", "GkFrsz");
    for (size_t i = 0; i < vplates.size(); ++i)
        EXPECT_EQ(std::get<double>(current[i]), lastEnd[std::get<std::string>(vplates[i])]);
}

TEST(CompanySql, SelectUpdateAndBadStatements) {
    TempDir tmp;
    fs::path dir = tmp / "demo";
    company::createDemo(dir, std::chrono::sys_days(std::chrono::year(2026) / 3 / 2));
    std::string file = (dir / "Kerova.dsb").string();
    auto sel = testsupport::cli({"sql", file, "select GkFrsz, recordID, Figyelmeztetés from Jarmuvek where recordID <= 3 order by GkFrsz desc"});
    EXPECT_EQ(sel.exitCode, 0) << sel.err;
    EXPECT_EQ(sel.out, "GkFrsz\trecordID\tFigyelmeztetés\nMEG-318\t3\tTrue\nLHZ-245\t2\tFalse\nKRV-101\t1\tFalse\n");

    auto upd = testsupport::cli({"sql", file, " update Jarmuvek set GkTipus = 'Ford' where GkFrsz like 'KRV*'"});
    EXPECT_EQ(upd.out, "1\n");
    EXPECT_EQ(testsupport::cli({"sql", file, "select GkTipus from Jarmuvek where recordID = 1"}).out, "GkTipus\nFord\n");

    // Errors: one line with the number; a failing UPDATE leaves every row as it was.
    auto bad = testsupport::cli({"sql", file, "select frm Jarmuvek"});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(bad.out, "");
    EXPECT_EQ(bad.err.rfind("hiba 3075: ", 0), 0u) << bad.err;
    EXPECT_EQ(std::count(bad.err.begin(), bad.err.end(), '\n'), 1);
    auto before = testsupport::cli({"sql", file, "select * from Jarmuvek"}).out;
    auto dup = testsupport::cli({"sql", file, "update Jarmuvek set recordID = 7"});
    EXPECT_EQ(dup.exitCode, 1);
    EXPECT_EQ(dup.err.rfind("hiba 3022: ", 0), 0u) << dup.err;
    EXPECT_EQ(testsupport::cli({"sql", file, "select * from Jarmuvek"}).out, before);
    // Values on one line each; Null as nothing.
    EXPECT_EQ(testsupport::cli({"sql", file, "update Jarmuvek set Motorszám = 'a\tb\nc' where recordID = 2"}).out, "1\n");
    EXPECT_EQ(testsupport::cli({"sql", file, "select Motorszám, TachoOMHEng from Jarmuvek where recordID = 2"}).out,
              "Motorszám\tTachoOMHEng\na b c\t\n");
    EXPECT_EQ(testsupport::cli({"sql", (tmp / "nincs.dsb").string(), "select * from x"}).err.rfind("hiba 3024: ", 0), 0u);

}

}  // namespace
