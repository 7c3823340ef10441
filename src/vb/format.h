// VB's Format(value, mask) as on a Hungarian Windows, whatever the machine's locale: decimal
// separator ",", digit grouping " ", the mask's "/" prints ".", time separator ":", currency
// "1 234,50 Ft", AMPM "de."/"du.". In a numeric mask "." marks the decimal separator and "," the
// grouping, so Format(8.3, "00.00") is "08,30".
//
// - No mask: CStr, Null gives "".
// - Named formats (any case): General Number, Currency, Fixed, Standard, Percent, Scientific,
//   Yes/No, True/False, On/Off, General Date, Long Date, Medium Date, Short Date, Long Time,
//   Medium Time, Short Time.
// - Numeric masks: 0 # . , % E+ E- e+ e-, literals ("text", \c, other characters), up to four
//   sections positive;negative;zero;null. Rounding is half away from zero on the decimal value
//   (15 significant digits of a Double, 7 of a Single). A one-section mask puts "-" before a
//   negative number; a negative section prints the absolute value; "." always prints the decimal
//   separator (Format(8, "#.##") is "8,").
// - Date masks (any case): yyyy yy y m mm mmm mmmm d dd ddd dddd ddddd dddddd w ww q h hh n nn s ss
//   ttttt c AM/PM am/pm A/P a/p AMPM / : ; m or mm right after an hour is the minute.
// - Text masks: @ & < > !.
// - Null with a mask: the fourth section (as zero) if there is one, else "".
// - A text is read as a number (CDbl) for a numeric mask and as a date for a date mask; a text that
//   is neither comes back unchanged.
#pragma once

#include <string>
#include <string_view>

#include "vb/variant.h"

namespace vb {

std::string Format(const Variant& value, std::string_view mask = {});

}  // namespace vb
