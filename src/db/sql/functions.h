// The functions of Jet's expression service that the program's SQL knows. Arguments arrive
// evaluated (iif is evaluated lazily by the evaluator); Null in gives Null out unless a function
// says otherwise. Internal to db/sql.
#pragma once

#include <cstddef>
#include <string>

#include "vb/variant.h"

namespace db::sql {

using Function = vb::Variant (*)(const vb::Variant* args, size_t count);

bool functionExists(const std::string& lowerName);       // aggregates and iif included
bool functionArityOk(const std::string& lowerName, size_t count);
bool isAggregateFunction(const std::string& lowerName);  // sum count min max avg first last
Function scalarFunction(const std::string& lowerName);   // null for aggregates and iif

}  // namespace db::sql
