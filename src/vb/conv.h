// VB6 conversions as on a Hungarian Windows, whatever the machine's locale: decimal comma, no
// digit grouping in CStr, dates as "2026.11.22.", time as "8:30:00". Nothing here reads the C or
// C++ locale: numbers go through std::to_chars/from_chars and hand-written parsers.
//
// Errors are vb::VbError: 6 Overflow, 13 Type mismatch, 94 Invalid use of Null.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vb/error.h"
#include "vb/variant.h"

namespace vb {

// ---- Text ---------------------------------------------------------------------------------------

// CStr: Double with at most 15 significant digits (Single 7), decimal comma, no grouping, scientific
// form outside 1E-5..1E+15 ("1E+20", "1,5E-07"); Currency with all its digits; Byte/Integer/Long as
// digits; Boolean "True"/"False"; Date "2026.11.22.", "2026.11.22. 8:30:00", or the time alone on
// 1899-12-30; Empty ""; Null raises 94; a byte array raises 13.
std::string CStr(const Variant& v);

// Str: "." as the point and a leading blank for non-negative numbers: " 5", "-5", " 2.5", " .5".
// A text is read by CDbl first; Null gives Null; a Boolean "True"/"False"; a Date its CStr text.
Variant Str(const Variant& v);

// Val: the numeric prefix of a text with "." as its point, blanks skipped anywhere, "&H"/"&O"
// integers: Val("7,5") = 7, Val(" 1 2.5x") = 12.5, Val("abc") = 0. Non-texts go through CStr first
// (so Val(7.5) = 7 on a Hungarian Windows). Null raises 94.
double Val(std::string_view text);
double Val(const Variant& v);
inline double Val(const char* text) { return Val(std::string_view(text)); }
inline double Val(const std::string& text) { return Val(std::string_view(text)); }

// A double as CStr prints it, with `significant` digits (15 for Double, 7 for Single) and the
// given decimal separator. NaN and infinities raise 6.
std::string numberText(double d, int significant = 15, char point = ',');
// A Currency with all its digits, trailing zeros dropped: "12,5", "-0,0001".
std::string currencyText(Currency c, char point = ',');

// Dates as CStr prints them.
std::string dateText(Date d);      // "2026.11.22." (time left out)
std::string timeText(Date d);      // "8:30:00" (rounded to the second)
std::string dateTimeText(Date d);  // date, date and time, or time alone on 1899-12-30

// ---- Numbers ------------------------------------------------------------------------------------

// Text under the Hungarian locale: blanks around, sign before or after or parentheses, digits with
// blank grouping ("1 234"), "," as the point, an exponent, "&H1F"/"&O17". "7.5" is not a number.
// nullopt if the text is not a number; raises 6 if it is beyond any double.
std::optional<double> parseNumber(std::string_view text);

double CDbl(const Variant& v);    // True is -1, a Date its serial, "" and "abc" raise 13
float CSng(const Variant& v);     // 6 beyond Single's range
Currency CCur(const Variant& v);  // 4 decimals, halves to even, 6 outside Currency's range
int16_t CInt(const Variant& v);   // halves to even (7.5 -> 8, 6.5 -> 6), 6 outside -32768..32767
int32_t CLng(const Variant& v);   // halves to even, 6 outside 32 bits
bool CBool(const Variant& v);     // numbers: non-zero; texts: True/False/Igaz/Hamis or a number
bool IsNumeric(const Variant& v); // Empty, numbers, Booleans, number texts; not Null or dates
bool IsDate(const Variant& v);    // dates, and texts CDate takes

double toDouble(Currency c);

// ---- Dates --------------------------------------------------------------------------------------

// A Date's calendar parts.
struct DateParts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0, millisecond = 0;
    bool operator==(const DateParts&) const = default;
};

// Calendar parts and the serial (days since 1899-12-30, the fraction the time; before that day the
// fraction counts away from zero as VB has it: 1899-12-29 06:00 is -1,25). Years 100..9999, else 6.
Date toDate(const DateParts& p);  // 5 for parts that are no date or time ("02.30", 24:00)
DateParts dateParts(Date d);      // to the millisecond; 6 outside the range
bool validDate(int year, int month, int day);

// CDate: a Date as it is; a number as a serial; a text "2026.11.22.", "2026.11.22", "2026. 11. 22.",
// with " 8:30" or " 8:30:15", "2026-11-22", "2026/11/22", "22.11.2026", two-digit years (00-29 ->
// 20xx), or a time alone. 13 for other texts, 94 for Null, 6 outside years 100..9999.
Date CDate(const Variant& v);
std::optional<Date> parseDate(std::string_view text);

// DateSerial and TimeSerial roll over as VB's do: DateSerial(2026, 13, 1) is 2027.01.01.,
// DateSerial(2026, 3, 0) is 2026.02.28.; TimeSerial(25, 0, 0) is 1899.12.31. 1:00:00.
Date DateSerial(int year, int month, int day);
Date TimeSerial(int hour, int minute, int second);

// Parts of a date-like value (a Date, a number or a date text through CDate), split to the
// second as VB does; Null raises 94.
int Year(const Variant& v);
int Month(const Variant& v);
int Day(const Variant& v);
int Hour(const Variant& v);
int Minute(const Variant& v);
int Second(const Variant& v);
int Weekday(const Variant& v);  // 1 = Sunday .. 7 = Saturday

}  // namespace vb
