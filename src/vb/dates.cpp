// Dates as VB keeps them: a double counting days from 1899-12-30, its fraction the time of day.
// Before that day the fraction counts away from zero: 1899-12-29 06:00 is -1.25 (whole days -1,
// time 0.25), so the calendar day is the whole part and the time is the fraction's absolute value.
#include <cmath>
#include <cstdio>

#include "vb/conv.h"
#include "vb/detail.h"

namespace vb {

namespace {

constexpr double MinSerial = -657434.0;  // 0100-01-01
constexpr double MaxSerial = 2958466.0;  // 10000-01-01, excluded
constexpr int64_t DayZeroFromEpoch = -25569;  // 1899-12-30 counted from 1970-01-01

// Days from 1970-01-01 of a proleptic Gregorian date.
int64_t daysFromCivil(int64_t y, int m, int d) {
    y -= m <= 2;
    int64_t era = (y >= 0 ? y : y - 399) / 400;
    int64_t yoe = y - era * 400;
    int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void civilFromDays(int64_t z, int& year, int& month, int& day) {
    z += 719468;
    int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    int64_t doe = z - era * 146097;
    int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    int64_t mp = (5 * doy + 2) / 153;
    day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    year = static_cast<int>(yoe + era * 400 + (month <= 2));
}

double serialOf(int64_t days, double fraction) { return days >= 0 ? days + fraction : days - fraction; }

// Calendar parts of a serial, the time rounded to `unitMs` milliseconds (1 or 1000).
DateParts split(double serial, int64_t unitMs) {
    if (std::isnan(serial) || serial < MinSerial || serial >= MaxSerial) detail::overflow();
    int64_t days = static_cast<int64_t>(serial);  // toward zero: the calendar day
    double fraction = std::fabs(serial - static_cast<double>(days));
    int64_t units = std::llround(fraction * (86400000.0 / static_cast<double>(unitMs)));
    int64_t ms = units * unitMs;
    if (ms >= 86400000) {
        ++days;
        ms -= 86400000;
    }
    DateParts p;
    civilFromDays(days + DayZeroFromEpoch, p.year, p.month, p.day);
    p.hour = static_cast<int>(ms / 3600000);
    p.minute = static_cast<int>(ms / 60000 % 60);
    p.second = static_cast<int>(ms / 1000 % 60);
    p.millisecond = static_cast<int>(ms % 1000);
    return p;
}

void pad(std::string& out, int n, int width) {
    std::string s = std::to_string(n);
    if (static_cast<int>(s.size()) < width) out.append(width - s.size(), '0');
    out += s;
}

}  // namespace

bool validDate(int year, int month, int day) {
    if (month < 1 || month > 12 || day < 1) return false;
    static const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return day <= lengths[month - 1] + (month == 2 && leap);
}

Date toDate(const DateParts& p) {
    if (!validDate(p.year, p.month, p.day) || p.hour < 0 || p.hour > 23 || p.minute < 0 || p.minute > 59 ||
        p.second < 0 || p.second > 59 || p.millisecond < 0 || p.millisecond > 999) {
        throw VbError(InvalidProcedureCall);
    }
    if (p.year < 100 || p.year > 9999) detail::overflow();
    int64_t days = daysFromCivil(p.year, p.month, p.day) - DayZeroFromEpoch;
    double ms = ((p.hour * 60.0 + p.minute) * 60.0 + p.second) * 1000.0 + p.millisecond;
    return Date{serialOf(days, ms / 86400000.0)};
}

DateParts dateParts(Date d) { return split(d.serial, 1); }
DateParts detail::secondParts(Date d) { return split(d.serial, 1000); }

std::string dateText(Date d) {
    DateParts p = split(d.serial, 1000);
    std::string out;
    pad(out, p.year, 4);
    out += '.';
    pad(out, p.month, 2);
    out += '.';
    pad(out, p.day, 2);
    out += '.';
    return out;
}

std::string timeText(Date d) {
    DateParts p = split(d.serial, 1000);
    std::string out = std::to_string(p.hour) + ':';
    pad(out, p.minute, 2);
    out += ':';
    pad(out, p.second, 2);
    return out;
}

std::string dateTimeText(Date d) {
    DateParts p = split(d.serial, 1000);
    Date rounded = toDate(p);
    bool midnight = p.hour == 0 && p.minute == 0 && p.second == 0;
    if (p.year == 1899 && p.month == 12 && p.day == 30) return timeText(rounded);
    if (midnight) return dateText(rounded);
    return dateText(rounded) + ' ' + timeText(rounded);
}

// ---- Text to date ---------------------------------------------------------------------------------

namespace {

struct Scanner {
    std::string_view s;
    size_t i = 0;
    bool end() const { return i >= s.size(); }
    // a run of 1..maxLen digits; nullopt (and nothing consumed) if none or longer
    std::optional<std::string_view> digits(size_t maxLen) {
        size_t j = i;
        while (j < s.size() && detail::isDigit(s[j])) ++j;
        if (j == i || j - i > maxLen) return std::nullopt;
        auto r = s.substr(i, j - i);
        i = j;
        return r;
    }
    size_t blanks() {
        size_t j = i;
        while (i < s.size() && (s[i] == ' ' || s[i] == '\t' || s[i] == '\n' || s[i] == '\r')) ++i;
        return i - j;
    }
    bool accept(char c) {
        if (i < s.size() && s[i] == c) {
            ++i;
            return true;
        }
        return false;
    }
};

int number(std::string_view d) {
    int n = 0;
    for (char c : d) n = n * 10 + (c - '0');
    return n;
}

int fullYear(std::string_view d) {
    int y = number(d);
    if (d.size() <= 2) return y < 30 ? 2000 + y : 1900 + y;
    return y;
}

// "8:30" or "8:30:15" up to the end of the scanner; false if not a valid time.
bool scanTime(Scanner& sc, DateParts& p) {
    auto h = sc.digits(2);
    if (!h || !sc.accept(':')) return false;
    auto m = sc.digits(2);
    if (!m) return false;
    std::optional<std::string_view> s;
    if (sc.accept(':')) {
        s = sc.digits(2);
        if (!s) return false;
    }
    if (!sc.end()) return false;
    p.hour = number(*h);
    p.minute = number(*m);
    p.second = s ? number(*s) : 0;
    return p.hour <= 23 && p.minute <= 59 && p.second <= 59;
}

}  // namespace

std::optional<Date> parseDate(std::string_view text) {
    Scanner sc{detail::strip(text)};
    DateParts p;
    auto a = sc.digits(4);
    if (!a) return std::nullopt;
    sc.blanks();
    char sep = sc.end() ? 0 : sc.s[sc.i];
    if (sep != '.' && sep != '/' && sep != '-') {
        // a time alone
        sc.i = 0;
        if (!scanTime(sc, p)) return std::nullopt;
        return toDate(p);
    }
    ++sc.i;
    sc.blanks();
    auto month = sc.digits(2);
    if (!month) return std::nullopt;
    sc.blanks();
    if (!sc.accept(sep)) return std::nullopt;
    sc.blanks();
    auto c = sc.digits(4);
    if (!c) return std::nullopt;
    size_t blanks = sc.blanks();
    if (sc.accept('.')) blanks = sc.blanks();
    if (!sc.end()) {
        if (!sc.accept('T') && blanks == 0) return std::nullopt;
        if (!scanTime(sc, p)) return std::nullopt;
    }
    if (a->size() >= 3 || c->size() <= 2) {
        if (c->size() > 2) return std::nullopt;
        p.year = fullYear(*a);  // year first, the Hungarian order
        p.day = number(*c);
    } else {
        p.day = number(*a);  // day first with the year last
        p.year = fullYear(*c);
    }
    p.month = number(*month);
    if (p.year < 100 || !validDate(p.year, p.month, p.day)) return std::nullopt;
    return toDate(p);
}

Date CDate(const Variant& v) {
    switch (v.index()) {
    case 1: detail::invalidUseOfNull();
    case 9: return std::get<Date>(v);
    case 10: {
        auto d = parseDate(std::get<std::string>(v));
        if (!d) detail::typeMismatch();
        return *d;
    }
    default: {
        double d = CDbl(v);
        if (std::isnan(d) || d < MinSerial || d >= MaxSerial) detail::overflow();
        return Date{d};
    }
    }
}

bool IsDate(const Variant& v) {
    if (std::holds_alternative<Date>(v)) return true;
    auto* s = std::get_if<std::string>(&v);
    return s && parseDate(*s).has_value();
}

Date DateSerial(int year, int month, int day) {
    int64_t y = year;
    if (y >= 0 && y < 30) y += 2000;
    else if (y >= 30 && y < 100) y += 1900;
    int64_t m0 = static_cast<int64_t>(month) - 1;
    y += m0 >= 0 ? m0 / 12 : (m0 - 11) / 12;
    int m = static_cast<int>(((m0 % 12) + 12) % 12) + 1;
    if (y < 100 || y > 9999) throw VbError(InvalidProcedureCall);
    int64_t days = daysFromCivil(y, m, 1) + day - 1 - DayZeroFromEpoch;
    if (days < MinSerial || days >= MaxSerial) throw VbError(InvalidProcedureCall);
    return Date{static_cast<double>(days)};
}

Date TimeSerial(int hour, int minute, int second) {
    int64_t total = int64_t{hour} * 3600 + int64_t{minute} * 60 + second;
    int64_t days = total >= 0 ? total / 86400 : -((-total + 86399) / 86400);
    int64_t rest = total - days * 86400;
    double serial = serialOf(days, static_cast<double>(rest) / 86400.0);
    if (serial < MinSerial || serial >= MaxSerial) throw VbError(InvalidProcedureCall);
    return Date{serial};
}

// VB splits a date to the second: 23:59:59.6 is already the next day.
int Year(const Variant& v) { return split(CDate(v).serial, 1000).year; }
int Month(const Variant& v) { return split(CDate(v).serial, 1000).month; }
int Day(const Variant& v) { return split(CDate(v).serial, 1000).day; }
int Hour(const Variant& v) { return split(CDate(v).serial, 1000).hour; }
int Minute(const Variant& v) { return split(CDate(v).serial, 1000).minute; }
int Second(const Variant& v) { return split(CDate(v).serial, 1000).second; }

int Weekday(const Variant& v) {
    DateParts p = split(CDate(v).serial, 1000);
    int64_t days = daysFromCivil(p.year, p.month, p.day) - DayZeroFromEpoch;  // day 0 was a Saturday
    return static_cast<int>(((days % 7) + 7 + 6) % 7) + 1;
}

}  // namespace vb
