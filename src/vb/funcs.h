// The three null conversions every form uses when it takes a column into a variable or a control.
#pragma once

#include <string>

#include "vb/variant.h"

namespace vb {

// Null gives the Integer 0; a value gives a Double by CDbl (a text that is no number, "" too,
// raises 13).
Variant NullToNum(const Variant& v);
// Null gives today at midnight (vb::clock); a value gives CDate of it (13 for a non-date text).
Variant NullToDate(const Variant& v);
// Null gives ""; a value gives CStr of it.
Variant NullToStr(const Variant& v);

// The same with plain C++ results, for callers that compute with them.
double nullToDouble(const Variant& v);
Date nullToDate(const Variant& v);
std::string nullToText(const Variant& v);

}  // namespace vb
