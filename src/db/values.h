// Between the engine's column values and VB's Variant.
#pragma once

#include "jet/value.h"
#include "vb/variant.h"

namespace db {

// A column value as a Variant: null as Null, Decimal as Double, Replication ID as its
// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" text.
vb::Variant toVariant(const jet::Value& v);

}  // namespace db
