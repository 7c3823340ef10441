// The model the index tests check B-trees against: entries ordered as an index orders them.
#pragma once

#include <set>
#include <utility>

#include "jet/btree.h"

namespace indextest {

using Entry = std::pair<jet::Bytes, jet::RowId>;

struct EntryLess {
    bool operator()(const Entry& a, const Entry& b) const {
        return jet::compareIndexEntries(a.first, a.second, b.first, b.second) < 0;
    }
};
using Model = std::set<Entry, EntryLess>;

}  // namespace indextest
