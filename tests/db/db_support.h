// Small Access 2000 files for the record layer's tests, made through the engine.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"
#include "jet/support.h"

namespace dbtest {

// The vehicle-like table the record layer's tests use: a unique recordID, texts, a number, a
// date, a flag and an AutoNumber.
inline jet::TableSpec vehicles(const std::string& name = "Jarmuvek") {
    jet::TableSpec t;
    t.name = name;
    t.columns = {{"recordID", jet::ColType::Long},
                 {"GkFrsz", jet::ColType::Text, 20},
                 {"Típus", jet::ColType::Text, 50},
                 {"Km", jet::ColType::Double},
                 {"MuszakiVizsgaDatum", jet::ColType::DateTime},
                 {"Figyelmeztetés", jet::ColType::Boolean},
                 {"Sorszám", jet::ColType::Long, 0, true}};
    t.indexes = {{"ixRecordID", {"recordID"}, false, true}};
    return t;
}

// A new file `name` in `dir` with the given tables.
inline void createFile(const std::filesystem::path& dir, const std::string& name, const std::vector<jet::TableSpec>& tables) {
    auto db = jet::Database::create((dir / name).string());
    for (const auto& t : tables) db->createTable(t);
}

// Adds a vehicle through the record layer.
inline void addVehicle(db::Recordset& rs, int id, const std::string& plate, const std::string& type, vb::Variant km) {
    rs.AddNew();
    rs.set("recordID", id);
    rs.set("GkFrsz", plate);
    rs.set("Típus", type);
    rs.set("Km", km);
    rs.Update();
}

// The DAO number of what `f` throws, 0 when it throws nothing.
template <class F>
int errorOf(F&& f) {
    try {
        f();
    } catch (const vb::NumberedError& e) {
        return e.number();
    }
    return 0;
}

// Every value of one column, from the current record to the end.
inline std::vector<vb::Variant> column(db::Recordset& rs, const std::string& name) {
    std::vector<vb::Variant> out;
    for (; !rs.Eof(); rs.MoveNext()) out.push_back(rs.get(name));
    return out;
}

}  // namespace dbtest
