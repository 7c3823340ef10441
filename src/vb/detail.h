// Helpers shared by the vb sources; not for use outside vb.
#pragma once

#include <optional>
#include <string_view>

#include "vb/conv.h"
#include "vb/decimal.h"
#include "vb/error.h"
#include "vb/variant.h"

namespace vb::detail {

[[noreturn]] void overflow();
[[noreturn]] void typeMismatch();
[[noreturn]] void invalidUseOfNull();

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A text read as oleaut32 reads it under the Hungarian locale; nullopt if it is not a number,
// 6 if its exponent is beyond any double.
std::optional<Decimal> parseDecimal(std::string_view text);

// A date's parts rounded to the second, as VB shows and splits dates.
DateParts secondParts(Date d);

// The text with blanks (ASCII white space and the no-break space) cut from both ends.
std::string_view strip(std::string_view text);

}  // namespace vb::detail
