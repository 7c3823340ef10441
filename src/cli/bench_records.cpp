// `kerova bench-records DIR ROWS`: the record layer on a company whose trip table holds ROWS trips
// (generated from a fixed seed). A Markdown table on stdout for docs/PERFORMANCE.md.
#include "cli/bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "company/folder.h"
#include "company/javarandom.h"
#include "db/database.h"
#include "db/error.h"
#include "db/recordset.h"
#include "jet/database.h"
#include "jet/text.h"

namespace kerova {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point t0) { return std::chrono::duration<double, std::milli>(Clock::now() - t0).count(); }

size_t columnAt(const jet::TableDef& def, std::string_view name) {
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (jet::equalsFolded(def.columns[i].name, name)) return i;
    throw std::runtime_error("Utak has no column " + std::string(name));
}

// Generated trips, from a fixed seed.
void fillTrips(const fs::path& file, int count) {
    const char* towns[] = {"Budapest", "Győr", "Debrecen", "Szeged", "Pécs", "Miskolc", "Eger", "Kecskemét"};
    const char* drivers[] = {"Kovács János", "Szőke Ödön", "Nagy Éva", "Tóth Béla", "Fűzi Márta"};
    company::Lcg48 rnd(7);
    auto db = jet::Database::open(file.string());
    jet::Table& t = db->table("Utak");
    const auto& def = t.def();
    size_t cFrsz = columnAt(def, "FRSZ"), cDriver = columnAt(def, "GkVezetöNeve"), cDate = columnAt(def, "Dátum"),
           cFrom = columnAt(def, "Honnan"), cTo = columnAt(def, "Hova"), cKm = columnAt(def, "TávolságKm"),
           cDep = columnAt(def, "IndulásIdeje"), cArr = columnAt(def, "ÉrkezésIdeje"),
           cLitre = columnAt(def, "FogyasztottLiter"), cCost = columnAt(def, "Üzemanyagköltség");
    int have = int(t.rowCount());
    const double start = 43831.0;  // 2020-01-01
    db->begin();
    for (int i = 0; i < count; ++i) {
        int n = have + i;
        double km = 20 + rnd.nextInt(400);
        double dep = 6 + rnd.nextInt(10) + rnd.nextInt(60) / 100.0;
        jet::Row r(def.columns.size());
        r[cFrsz] = "ABC-" + std::to_string(100 + n % 12);
        r[cDriver] = std::string(drivers[n % 5]);
        r[cDate] = jet::DateTime{start + rnd.nextInt(2000)};
        r[cFrom] = "Budapest " + std::to_string(n);
        r[cTo] = std::string(towns[rnd.nextInt(8)]);
        r[cKm] = km;
        r[cDep] = dep;
        r[cArr] = std::min(23.59, dep + 2);
        r[cLitre] = km * 0.07;
        r[cCost] = km * 0.07 * 620;
        t.insert(std::move(r));
    }
    db->commit();
}

struct Round {
    double open = 0, sum = 0, find = 0, reminders = 0;
};

Round timeRound(int rows) {
    Round r;
    auto db = db::Database::open("Kerova.dsb");
    auto t0 = Clock::now();
    auto rs = db->OpenRecordset("select * from Utak order by Dátum, IndulásIdeje");
    rs->MoveLast();
    r.open = msSince(t0);
    t0 = Clock::now();
    auto sum = db->OpenRecordset(
        "select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség) as UzFt from Utak");
    (void)sum->get("tav");
    r.sum = msSince(t0);
    t0 = Clock::now();
    auto all = db->OpenRecordset("Utak");
    all->FindFirst("[Honnan] like \"Budapest " + std::to_string(rows - 1) + "*\"");
    r.find = msSince(t0);
    if (all->NoMatch()) throw std::runtime_error("the last row was not found");
    // The main form's deadline reminders: four date queries over the vehicles.
    t0 = Clock::now();
    for (const char* col : {"MuszakiVizsgaDatum", "KotelezoBiztDatum", "CascoDatum", "ForgalmiDatum"}) {
        try {
            auto rem = db->OpenRecordset(std::string("select * from jarmuvek where ") + col + " <= #3/31/2027#");
            if (rem->RecordCount() > 0) rem->MoveLast();
        } catch (const db::DaoError&) {
            // a column this catalogue does not have: the reminder is skipped, as the form does
        }
    }
    r.reminders = msSince(t0);
    return r;
}

}  // namespace

int benchRecords(const std::string& dirName, int rows) {
    fs::path dir = fs::absolute(dirName) / "records";
    try {
        fs::create_directories(dir);
        if (!fs::exists(dir / "Kerova.dsb")) company::init(dir, false);
        auto t0 = Clock::now();
        int have = int(jet::Database::open((dir / "Kerova.dsb").string())->table("Utak").rowCount());
        if (have < rows) {
            fillTrips(dir / "Kerova.dsb", rows - have);
            std::printf("Utak feltöltése: %d sor, %.0f ms\n", rows - have, msSince(t0));
        }
        db::setWorkingFolder(dir);
        std::vector<Round> rounds;
        for (int i = 0; i < 3; ++i) rounds.push_back(timeRound(rows));
        db::closeAll();

        auto best = [](const std::vector<Round>& rs, double Round::*f) {
            double b = 1e300;
            for (const auto& r : rs) b = std::min(b, r.*f);
            return b;
        };
        std::printf("\nRecord layer: %d trips in Utak (best of three rounds, ms)\n\n", rows);
        std::printf("| operation | ms |\n|---|---:|\n");
        struct Op {
            const char* name;
            double Round::*field;
        } ops[] = {{"ordered dynaset + MoveLast", &Round::open},
                   {"sum() over the table", &Round::sum},
                   {"FindFirst LIKE, last row", &Round::find},
                   {"the four reminder queries", &Round::reminders}};
        for (const auto& op : ops) {
            std::printf("| %s | %.1f |\n", op.name, best(rounds, op.field));
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kerova bench: %s\n", e.what());
        return 1;
    }
    return 0;
}

}  // namespace kerova
