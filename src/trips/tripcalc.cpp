#include "trips/tripcalc.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "db/sql/sql.h"
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

std::string arrivalStamp(const TripKey& k) {
    auto* d = std::get_if<vb::Date>(&k.date);
    if (!d) return {};
    std::string t = vb::resume([&] { return vb::Format(k.arrival, "00.00;0;0;0"); }, std::string("0"));
    vb::Err.Clear();
    int h = int(vb::Val(vb::Left(t, 2)));
    int m = int(vb::Val(vb::Right(t, 2)));
    return vb::resume([&] { return vb::Format(vb::Date{d->serial + vb::TimeSerial(h, m, 0).serial},
                                               "YYYY/MM/DD HH:NN:SS"); },
                      std::string());
}

namespace {

// A row's place in the order as plain numbers: the driver's rank among the distinct names (-1 for
// Null), the day (or none), and the day with the arrival in seconds, as the sort text orders them.
struct Prepared {
    long driver = -1;
    bool hasDate = false;
    double day = 0;
    long long stamp = 0;
};

// Hours and minutes as the sort text takes them: the first two and the last two characters of
// Format(arrival, "00.00;0;0;0"), which is "0" for zero, negatives and Null.
std::pair<int, int> stampParts(const vb::Variant& arrival) {
    std::string t = vb::resume([&] { return vb::Format(arrival, "00.00;0;0;0"); }, std::string("0"));
    vb::Err.Clear();
    return {int(vb::Val(vb::Left(t, 2))), int(vb::Val(vb::Right(t, 2)))};
}

// Whether p comes before q.
bool earlier(const Prepared& p, const Prepared& q) {
    if (p.driver != q.driver) return p.driver < q.driver;
    if (p.hasDate != q.hasDate) return p.hasDate;
    if (!p.hasDate) return false;
    if (p.day != q.day) return p.day > q.day;
    return p.stamp > q.stamp;
}

std::vector<Prepared> prepare(const std::vector<TripKey>& rows) {
    // distinct names ranked once, so that each row compares by numbers
    std::vector<std::string> names;
    std::unordered_map<std::string, long> rank;
    for (const auto& r : rows)
        if (auto* n = std::get_if<std::string>(&r.driver); n && rank.emplace(*n, 0).second) names.push_back(*n);
    std::stable_sort(names.begin(), names.end(),
                     [](const std::string& a, const std::string& b) { return db::sql::compareText(a, b) < 0; });
    long k = 0;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0 && db::sql::compareText(names[i - 1], names[i]) != 0) ++k;
        rank[names[i]] = k;
    }
    std::unordered_map<double, std::pair<int, int>> parts;  // arrivals repeat: format each once
    std::vector<Prepared> out;
    out.reserve(rows.size());
    for (const auto& r : rows) {
        Prepared p;
        if (auto* n = std::get_if<std::string>(&r.driver)) p.driver = rank[*n];
        if (auto* d = std::get_if<vb::Date>(&r.date)) {
            p.hasDate = true;
            p.day = d->serial;
            std::pair<int, int> hm;
            if (auto* a = std::get_if<double>(&r.arrival)) {
                auto it = parts.find(*a);
                if (it == parts.end()) it = parts.emplace(*a, stampParts(r.arrival)).first;
                hm = it->second;
            } else {
                hm = stampParts(r.arrival);
            }
            p.stamp = std::llround(d->serial * 86400) + hm.first * 3600LL + hm.second * 60LL;
        }
        out.push_back(p);
    }
    return out;
}

}  // namespace

bool before(const TripKey& a, const TripKey& b) {
    auto p = prepare({a, b});
    return earlier(p[0], p[1]);
}

std::pair<long, long> firstTwo(const std::vector<TripKey>& rows) {
    auto keys = prepare(rows);
    long first = -1, second = -1;
    for (long i = 0; i < long(keys.size()); ++i) {
        if (first < 0 || earlier(keys[i], keys[first])) {
            second = first;
            first = i;
        } else if (second < 0 || earlier(keys[i], keys[second])) {
            second = i;
        }
    }
    return {first, second};
}

}  // namespace trips::calc
