// The main form's tests: a company folder with the program's forms registered, rows written and
// read back through the record layer, and a fixed "today".
#pragma once

#include <QCoreApplication>
#include <string>
#include <utility>
#include <vector>

#include "app/app.h"
#include "db/database.h"
#include "db/recordset.h"
#include "forms/form.h"
#include "forms/globals.h"
#include "forms/runtime.h"
#include "gui/support.h"
#include "vb/clock.h"
#include "vb/conv.h"

namespace kerova_test {

class AppTest : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        app::registerAllForms();
        // The other modules' forms stand in here: what they do is their own tests' concern.
        for (const char* name : {"GkUtakTavolsagaTorzsFormX", "GKTorzsFormX", "VezetokTorzsFormX", "BeraktarozokFormX",
                                 "MegnevezesTorzsFormX", "cikkszamform", "UtNyilvantartasFormX", "KilometerNytFormX",
                                 "UzemanyagSzamlaFormX", "SzervizmodulFormX", "LekerdezesFormX", "KerovaSzervizFormX",
                                 "KerovaFelhasznaloiKezikonyvForm", "HelpFormX"}) {
            std::string n = name;
            forms::registerForm(n, [n] { return new forms::StandInForm(n); });
        }
        vb::clock::setFixed(vb::toDate({2026, 1, 15, 9, 30, 0}));
    }

    static vb::Date today() { return vb::clock::today(); }
    static vb::Date daysFromToday(int n) { return vb::Date{today().serial + n}; }

    // The values of a column, in the table's order.
    static std::vector<vb::Variant> column(const std::string& file, const std::string& table, const std::string& col) {
        std::vector<vb::Variant> out;
        auto r = db::Database::open(file)->OpenRecordset(table);
        for (size_t i = 0; i < r->size(); ++i) {
            r->setAbsolutePosition(int(i));
            out.push_back(r->get(col));
        }
        r->Close();
        return out;
    }
    static size_t rowCount(const std::string& file, const std::string& table) {
        return db::Database::open(file)->OpenRecordset(table)->size();
    }
    static std::vector<bool> flags() {
        std::vector<bool> out;
        for (auto& v : column("Kerova.dsb", "Jarmuvek", "Figyelmeztetés")) out.push_back(vb::CBool(v));
        return out;
    }

    void operatorRow(const std::string& name) { insert("Torzsek.dsb", "Bettorzs", {{"UzNev", name}}); }
    // The ten warning limits, by ordinal; Null for an empty cell.
    void limits(std::vector<vb::Variant> values) {
        auto r = db::Database::open("Torzsek.dsb")->OpenRecordset("VizsgaFigyelmeztetoNap");
        r->AddNew();
        for (size_t i = 0; i < values.size(); ++i) r->Fields(int(i)).setValue(values[i]);
        r->Update();
        r->Close();
    }
    void vehicle(int id, const std::string& plate, const Fields& more = {}) {
        Fields row{{"recordID", int32_t(id)}, {"GkFrsz", plate}};
        row.insert(row.end(), more.begin(), more.end());
        insert("Kerova.dsb", "Jarmuvek", row);
    }

    forms::Form& startMain() {
        forms::run([] { forms::get("KerovaX").Show(); });
        return form("KerovaX");
    }
    static void deferredDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

}  // namespace kerova_test
