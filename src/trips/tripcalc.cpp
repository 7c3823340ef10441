#include "trips/tripcalc.h"

#include <cmath>

#include "vb/conv.h"
#include "vb/err.h"
#include "vb/format.h"
#include "vb/text.h"

namespace trips::calc {

namespace {

using vb::Variant;

// A box's text as a number: CDbl of the text ("" and letters raise 13).
double num(const std::string& text) { return vb::CDbl(Variant(text)); }
// The same with an empty text as 0 (the cost's sides).
double numOrZero(const std::string& text) { return text.empty() ? 0.0 : num(text); }
int16_t toInt(double d) { return vb::CInt(Variant(d)); }
int16_t toInt(const std::string& text) { return vb::CInt(Variant(text)); }

// One statement with errors resumed; the error is cleared, as the button tests none.
template <class F>
void statement(F&& f) {
    vb::resume(std::forward<F>(f));
    vb::Err.Clear();
}

}  // namespace

std::string numberText(double d) { return vb::CStr(Variant(d)); }

std::string groupId(const vb::Date& today, float seconds) {
    auto p = vb::dateParts(today);
    std::string day = std::to_string(p.year) + std::to_string(p.month) + std::to_string(p.day);
    day = vb::CStr(Variant(vb::CDbl(Variant(day))));
    std::string joined = day + vb::CStr(Variant(seconds));
    std::string id = joined;
    statement([&] { id = vb::CStr(Variant(vb::CDbl(Variant(joined)))); });
    return vb::LTrim(id);
}

std::string timeText(const Variant& v) {
    if (vb::isNull(v) || vb::isEmpty(v)) return {};
    return vb::resume([&] { return vb::Format(v, TimeFormat); }, std::string());
}

bool timeAccepted(const std::string& text) {
    if (text.empty()) return true;
    auto n = vb::parseNumber(text);
    return n && *n <= 23.59 + 1e-9 && *n >= 0;
}

std::string litres(const std::string& distance, const std::string& consumption, const std::string& litres) {
    std::string out = litres;
    statement([&] {
        double km = num(distance);
        double per100 = num(consumption);
        if (km > 0 && per100 > 0) out = numberText(km / 100 * per100);
    });
    return out;
}

std::string realKm(const std::string& startKm, const std::string& endKm, const std::string& current) {
    std::string out = current;
    statement([&] {
        if (numOrZero(endKm) > numOrZero(startKm)) out = numberText(num(endKm) - num(startKm));
        else out = "0";
    });
    return out;
}

std::string cost(const std::string& litres, const std::string& price, const std::string& current) {
    std::string out = current;
    statement([&] { out = numberText(numOrZero(litres) * numOrZero(price)); });
    return out;
}

void splitTime(const std::string& text, int16_t& hour, int16_t& minute) {
    bool twoDigits = false;
    statement([&] { twoDigits = num(text) > 9; });
    if (twoDigits) {
        statement([&] { hour = toInt(vb::Mid(text, 1, 2)); });
        statement([&] { minute = toInt(vb::Mid(text, 4, 2)); });
    } else {
        statement([&] { hour = toInt(vb::Mid(text, 1, 1)); });
        statement([&] { minute = toInt(vb::Mid(text, 3, 2)); });
    }
}

DurationResult duration(Work& w, const std::string& start, const std::string& arrival, const std::string& current) {
    DurationResult r{current, false};
    bool comparable = false, inOrder = false;
    statement([&] {
        inOrder = num(arrival) >= num(start);
        comparable = true;
    });
    if (!comparable) return r;
    if (!inOrder) {
        r.text = "0,00";
        r.arrivalBeforeStart = true;
        return r;
    }
    splitTime(start, w.startHour, w.startMinute);
    splitTime(arrival, w.arrivalHour, w.arrivalMinute);
    statement([&] { w.startMinutes = toInt(double(w.startHour) * 60 + w.startMinute); });
    statement([&] { w.arrivalMinutes = toInt(double(w.arrivalHour) * 60 + w.arrivalMinute); });
    statement([&] { w.duration = toInt(double(w.arrivalMinutes) - w.startMinutes); });
    statement([&] { w.durationHours = toInt(std::floor(double(w.duration) / 60)); });
    statement([&] { w.durationRest = toInt(double(w.duration) - double(w.durationHours) * 60); });
    std::string hours = vb::CStr(Variant(w.durationHours));
    std::string rest = vb::CStr(Variant(w.durationRest));
    r.text = w.durationRest >= 10 ? hours + "," + rest : hours + ",0" + rest;
    return r;
}

ElapsedResult elapsed(Work& w, const std::string& previousArrival) {
    ElapsedResult r;
    splitTime(previousArrival, w.prevHour, w.prevMinute);
    statement([&] { w.prevMinutes = toInt(double(w.prevHour) * 60 + w.prevMinute); });
    statement([&] { w.elapsed = toInt(double(w.prevMinutes) - w.startMinutes); });
    if (w.elapsed > 0) {
        r.elapsedText = vb::CStr(Variant(w.elapsed));
        r.allowanceDay = !(double(w.elapsed) / 60 > 2);
    }
    return r;
}

std::optional<double> allowance(const Work& w, const std::string& elapsedText, double rate, bool ticked) {
    if (!(rate > 0) || !ticked) return std::nullopt;
    double hours = 0;
    statement([&] { hours = double(w.durationHours) + std::floor(num(elapsedText) / 60); });
    double amount = std::floor(hours / 24) * rate;
    if (hours / 24 > 8) amount += rate;
    if (hours / 24 > 16) amount += rate;
    return amount;
}

}  // namespace trips::calc
