#include "vb/decimal.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace vb {

Decimal Decimal::fromInt(int64_t v) {
    Decimal d;
    d.negative = v < 0;
    uint64_t u = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
    d.digits = std::to_string(u);
    d.normalize();
    return d;
}

// Reads to_chars' scientific form "-d.ddde+XX".
static Decimal fromScientific(const char* p, const char* end) {
    Decimal d;
    if (p < end && *p == '-') {
        d.negative = true;
        ++p;
    }
    int fraction = 0;
    bool afterPoint = false;
    for (; p < end && *p != 'e'; ++p) {
        if (*p == '.') {
            afterPoint = true;
        } else {
            d.digits.push_back(*p);
            fraction += afterPoint;
        }
    }
    int exp = 0;
    if (p < end) std::from_chars(p + 1 + (p[1] == '+'), end, exp);
    d.exponent = exp - fraction;
    d.normalize();
    return d;
}

Decimal Decimal::shortest(double v) {
    if (v == 0 || !std::isfinite(v)) return {};
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific);
    return fromScientific(buf, r.ptr);
}

Decimal Decimal::rounded(double v, int significant) {
    if (v == 0 || !std::isfinite(v)) return {};
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, significant - 1);
    return fromScientific(buf, r.ptr);
}

void Decimal::normalize() {
    size_t lead = digits.find_first_not_of('0');
    if (lead == std::string::npos) {
        digits.clear();
        exponent = 0;
        negative = false;
        return;
    }
    digits.erase(0, lead);
    size_t last = digits.find_last_not_of('0');
    exponent += static_cast<int>(digits.size() - 1 - last);
    digits.resize(last + 1);
}

// Keeps the first `keep` digits (keep may be <= 0 or beyond the digits), rounding the rest away.
static void roundDigits(Decimal& d, long keep, Decimal::Rounding mode) {
    long n = static_cast<long>(d.digits.size());
    if (d.isZero() || keep >= n) return;
    bool up = false;
    if (keep >= 0) {
        char first = d.digits[keep];
        if (first > '5') {
            up = true;
        } else if (first == '5') {
            bool rest = d.digits.find_first_not_of('0', keep + 1) != std::string::npos;
            bool lastOdd = keep > 0 && (d.digits[keep - 1] - '0') % 2 == 1;
            up = mode == Decimal::Rounding::HalfUp || rest || lastOdd;
        }
    }
    d.exponent += static_cast<int>(n - (keep < 0 ? 0 : keep));
    if (keep <= 0) {
        d.digits = up ? "1" : "";
        if (keep < 0) {
            // every kept position lies above the first digit: nothing but zero remains
            d.digits.clear();
        }
        d.normalize();
        return;
    }
    d.digits.resize(keep);
    if (up) {
        long i = keep - 1;
        while (i >= 0 && d.digits[i] == '9') d.digits[i--] = '0';
        if (i < 0) {
            d.digits.insert(d.digits.begin(), '1');
        } else {
            ++d.digits[i];
        }
    }
    d.normalize();
}

Decimal& Decimal::roundToScale(int scale, Rounding mode) {
    // digits after the point now: -exponent; drop -exponent - scale of them
    long drop = static_cast<long>(-exponent) - scale;
    if (drop > 0) roundDigits(*this, static_cast<long>(digits.size()) - drop, mode);
    return *this;
}

Decimal& Decimal::roundToPrecision(int significant, Rounding mode) {
    roundDigits(*this, significant, mode);
    return *this;
}

std::optional<double> Decimal::toDouble() const {
    if (isZero()) return 0.0;
    if (magnitude() > 400) return std::nullopt;
    if (magnitude() < -400) return 0.0;
    std::string text = (negative ? "-" : "") + digits + "e" + std::to_string(exponent);
    double v = 0;
    auto r = std::from_chars(text.data(), text.data() + text.size(), v);
    if (r.ec == std::errc::result_out_of_range) {
        if (magnitude() > 0) return std::nullopt;
        return 0.0;
    }
    return v;
}

std::optional<int64_t> Decimal::toInt64() const {
    if (isZero()) return 0;
    if (exponent < 0 || magnitude() > 18) return std::nullopt;
    uint64_t u = 0;
    for (char c : digits) u = u * 10 + static_cast<uint64_t>(c - '0');
    for (int i = 0; i < exponent; ++i) u *= 10;
    if (!negative && u > static_cast<uint64_t>(INT64_MAX)) return std::nullopt;
    if (negative && u > static_cast<uint64_t>(INT64_MAX) + 1) return std::nullopt;
    return negative ? static_cast<int64_t>(0 - u) : static_cast<int64_t>(u);
}

std::string Decimal::integerDigits() const {
    if (isZero() || magnitude() < 0) return "";
    if (exponent >= 0) return digits + std::string(exponent, '0');
    return digits.substr(0, digits.size() + exponent);
}

std::string Decimal::fractionDigits(int places) const {
    std::string out;
    for (int i = 1; i <= places; ++i) {
        // the digit at 10^-i
        long index = static_cast<long>(digits.size()) - 1 - (-i - exponent);
        out.push_back(index >= 0 && index < static_cast<long>(digits.size()) && !isZero() ? digits[index] : '0');
    }
    return out;
}

std::string Decimal::plain(char point) const {
    if (isZero()) return "0";
    std::string out = negative ? "-" : "";
    std::string whole = integerDigits();
    out += whole.empty() ? "0" : whole;
    if (exponent < 0) {
        out.push_back(point);
        out += fractionDigits(-exponent);
    }
    return out;
}

}  // namespace vb
