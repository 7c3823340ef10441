// The trip module's forms under test: registered, with rows written and read straight through the
// record layer, as another copy of the program would.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/runtime.h"
#include "gui/support.h"
#include "trips/module.h"
#include "vb/conv.h"

namespace trips_test {

class TripsTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        trips::registerForms();
    }

    // One column of every row of a statement, as text ("" for null).
    static std::vector<std::string> column(const std::string& file, const std::string& sql, const std::string& col) {
        std::vector<std::string> out;
        auto rs = db::Database::open(file)->OpenRecordset(sql);
        while (!rs->Eof()) {
            vb::Variant v = rs->get(col);
            out.push_back(vb::isNull(v) || vb::isEmpty(v) ? std::string() : vb::CStr(v));
            rs->MoveNext();
        }
        return out;
    }
    static int rows(const std::string& file, const std::string& table) {
        auto rs = db::Database::open(file)->OpenRecordset(table);
        return int(rs->size());
    }
    // Opens a form as a menu entry does (modeless here, so the test drives it).
    template <class F>
    F& open(const char* name) {
        forms::get(name).Show();
        return static_cast<F&>(form(name));
    }
    // What a picker does when the user picks: sets its slots and leaves.
    void onPicker(const std::string& name, std::function<void()> pick) {
        forms::setModalRunner([name, pick](forms::Form& f) {
            if (f.name() != name) return;
            if (pick) pick();
            f.Unload();
        });
    }
};

}  // namespace trips_test
