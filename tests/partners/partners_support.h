// Rows for the partner tests, written and read back through the record layer.
#pragma once

#include <QLineEdit>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"
#include "gui/support.h"
#include "vb/conv.h"
#include "vb/funcs.h"

namespace partners_test {

// A column of every row in stored order, nulls as "<null>".
inline std::vector<std::string> column(const std::string& file, const std::string& source, const std::string& name) {
    auto rs = db::Database::open(file)->OpenRecordset(source);
    std::vector<std::string> out;
    if (rs->RecordCount() == 0) return out;
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) {
        vb::Variant v = rs->get(name);
        out.push_back(vb::isNull(v) ? "<null>" : vb::nullToText(v));
    }
    return out;
}

// The actions written to the action log, in order.
inline std::vector<std::string> logged() { return column("Regiszt.dsb", "Regisztrálás", "Esemény"); }

inline vb::Variant s(const char* text) { return std::string(text); }

}  // namespace partners_test
