// The figures of a trip row, as "OK és Összesít" computes them, without widgets: texts in, texts
// out, in the order the button runs them. Every statement runs with errors resumed: a conversion
// that fails (an empty box, letters) leaves that one result as it was and the next step goes on.
// The working values are 16-bit, as the form always kept them, and they live on between presses:
// a split that fails keeps the hour or minute of the previous run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "vb/variant.h"

namespace trips::calc {

// A group id: today's year, month and day as unpadded digits, then the seconds since midnight as
// a Single in the locale's text ("202611630600,25"). Never holds an apostrophe.
std::string groupId(const vb::Date& today, float secondsSinceMidnight);

// The time boxes' display format; a time of day is shown and split in this form ("8,30").
inline constexpr const char* TimeFormat = "#,##0.00;($#,##0.00)";
// A time value as its box shows it ("" for empty or Null).
std::string timeText(const vb::Variant& v);
// Whether a time box's text is a time the box accepts: empty, or a number not above 23,59.
bool timeAccepted(const std::string& text);

// The working values of the button, kept by the form between presses.
struct Work {
    int16_t startHour = 0, startMinute = 0;
    int16_t arrivalHour = 0, arrivalMinute = 0;
    int16_t prevHour = 0, prevMinute = 0;
    int16_t startMinutes = 0, arrivalMinutes = 0, prevMinutes = 0;
    int16_t duration = 0, durationHours = 0, durationRest = 0;
    int16_t elapsed = 0;
};

// Fuel used: distance / 100 * consumption when both are above 0, else the box keeps `litres`.
std::string litres(const std::string& distance, const std::string& consumption, const std::string& litres);
// Real km: end - start when end is above start, else "0"; `current` stays when the subtraction fails.
std::string realKm(const std::string& startKm, const std::string& endKm, const std::string& current);
// Fuel cost: litres * unit price, an empty side as 0; `current` stays when a side is no number.
std::string cost(const std::string& litres, const std::string& price, const std::string& current);

// Splits a time text by the rule of the form: above 9 the hours are characters 1-2 and the
// minutes 4-5, otherwise character 1 and 3-4 (so 9,35 is nine hours five minutes). A part that
// fails keeps its value.
void splitTime(const std::string& text, int16_t& hour, int16_t& minute);

// The duration box: "h,mm" from start to arrival. nullopt when arrival is before start (the caller
// beeps, focuses the start and shows "0,00"); the duration's parts then keep their values. When a
// box is empty or no number, nothing is computed and `current` comes back.
struct DurationResult {
    std::string text;
    bool arrivalBeforeStart = false;
};
DurationResult duration(Work& w, const std::string& start, const std::string& arrival, const std::string& current);

// The previous trip's arrival against this start: elapsed minutes (previous arrival - start).
// Returns the text for "Összesen eltelt" ("" when not above 0) and the tick (nullopt: unchanged).
struct ElapsedResult {
    std::string elapsedText;
    std::optional<bool> allowanceDay;
};
ElapsedResult elapsed(Work& w, const std::string& previousArrival);

// The allowance: whole hours of the duration + elapsed / 60 rounded down (an empty elapsed skips
// that statement, leaving 0 hours); days = hours / 24 rounded down; amount = days * rate, plus a
// rate beyond 8 days and another beyond 16. nullopt when the rate is not above 0 or the day is not
// ticked (the boxes keep what they have).
std::optional<double> allowance(const Work& w, const std::string& elapsedText, double rate, bool ticked);

// The previous trip's order: driver's name (Null first), then day newest first (Null last), then
// the day with the arrival as hours.minutes, newest first. Only the first two rows of that order
// matter, so they are picked in one pass instead of sorting the table.
struct TripKey {
    vb::Variant driver, date, arrival;
};
// Whether a comes before b in that order.
bool before(const TripKey& a, const TripKey& b);
// Positions of the first and second row of the order (-1 when there is none); rows equal in the
// order keep their table order.
std::pair<long, long> firstTwo(const std::vector<TripKey>& rows);
// The sort text of a row's day and arrival ("2026/11/20 08:30:00"), "" when the day is Null.
std::string arrivalStamp(const TripKey& k);

// A number as the form's boxes show it (CStr: "9", "1,55", "3600").
std::string numberText(double d);

}  // namespace trips::calc
