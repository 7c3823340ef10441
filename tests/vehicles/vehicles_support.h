// The vehicle tests: an empty company with vehicles added, today fixed, the form opened as the main
// menu opens it, the stored columns read back.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "gui/support.h"
#include "vb/clock.h"
#include "vb/conv.h"
#include "vehicles/gktorzsformx.h"
#include "vehicles/module.h"

namespace vehicles_test {

using kerova_test::Fields;
using Message = std::tuple<std::string, int, std::string>;  // text, style, title

class VehicleTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        vehicles::registerForms();
        vb::clock::setFixed(vb::Date{today().serial + 0.4375});  // 10:30
    }

    static vb::Date today() { return vb::DateSerial(2026, 11, 23); }
    static vb::Date day(int offset) { return vb::Date{today().serial + offset}; }

    void vehicle(int id, const std::string& plate, const vb::Variant& type, const Fields& more = {}) {
        Fields row{{"recordID", int32_t(id)}, {"GkFrsz", plate}, {"GkTipus", type}};
        row.insert(row.end(), more.begin(), more.end());
        insert("Kerova.dsb", "Jarmuvek", row);
    }

    // A column of a table as shown in a box ("" for null), in key order.
    std::vector<std::string> col(const std::string& column, const std::string& table = "Jarmuvek") {
        auto rs = db::Database::open("Kerova.dsb")->OpenRecordset("select * from " + table + " order by recordID");
        std::vector<std::string> out;
        while (!rs->Eof()) {
            out.push_back(forms::displayText(rs->get(column)));
            rs->MoveNext();
        }
        return out;
    }

    vehicles::GKTorzsFormX& open(const std::string& caller = vehicles::GKTorzsFormX::Name) {
        Globals::CurrentFormName = caller;
        auto& f = static_cast<vehicles::GKTorzsFormX&>(forms::get(vehicles::GKTorzsFormX::Name));
        f.Show();
        return f;
    }

    std::vector<Message> messages() const {
        std::vector<Message> out;
        for (auto& e : GuiTest::messages()) out.emplace_back(e.text, e.style, e.title);
        return out;
    }

    static std::string t(const QWidget* w) { return forms::text(w); }
};

}  // namespace vehicles_test
