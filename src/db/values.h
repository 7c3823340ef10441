// Between the engine's column values and VB's Variant.
#pragma once

#include "jet/tabledef.h"
#include "jet/value.h"
#include "vb/variant.h"

namespace db {

// A column value as a Variant: null as Null, Decimal as Double, Replication ID as its
// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" text.
vb::Variant toVariant(const jet::Value& v);

// A Variant assigned to a field, as the column's type stores it (VB's conversions under the
// Hungarian locale: "7,5" is a number). Null and Empty store null. Whole-number columns round
// halves to even. Errors: 3421 for a value the type can't take (an empty or non-numeric text in a
// number column, a number out of the column's range), 3163 for a text longer than the column,
// 3349 for a Decimal beyond its precision.
jet::Value toColumnValue(const jet::Column& column, const vb::Variant& v);

}  // namespace db
