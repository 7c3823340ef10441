#include "vb/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <optional>

#include "vb/conv.h"

namespace vb::clock {

namespace {

std::optional<Date> fixedMoment;

// The current local moment as calendar parts with milliseconds.
DateParts current() {
    if (fixedMoment) return dateParts(*fixedMoment);
    auto now = std::chrono::system_clock::now();
    std::time_t t = std::chrono::system_clock::to_time_t(now);
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm tm{};
#ifdef _WIN32
    localtime_s(&tm, &t);
#else
    localtime_r(&t, &tm);
#endif
    return DateParts{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min,
                     tm.tm_sec > 59 ? 59 : tm.tm_sec, static_cast<int>(ms < 0 ? 0 : ms)};
}

}  // namespace

void setFixed(Date moment) { fixedMoment = moment; }
void reset() { fixedMoment.reset(); }

Date now() {
    DateParts p = current();
    p.millisecond = 0;
    return toDate(p);
}

Date today() {
    DateParts p = current();
    return toDate(DateParts{p.year, p.month, p.day});
}

double secondsSinceMidnight() {
    DateParts p = current();
    return ((p.hour * 60 + p.minute) * 60 + p.second) + p.millisecond / 1000.0;
}

float timer() { return static_cast<float>(secondsSinceMidnight()); }

}  // namespace vb::clock
