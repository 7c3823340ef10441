// An exact decimal number for the conversions that VB does on decimal values (CCur and CInt of a
// text, Format's rounding): value = (-1)^negative * digits * 10^exponent. Internal to vb.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vb {

struct Decimal {
    bool negative = false;
    std::string digits;  // '0'..'9', no leading zeros; empty is zero
    int exponent = 0;

    enum class Rounding { HalfEven, HalfUp };  // HalfUp: half away from zero

    static Decimal fromInt(int64_t v);
    static Decimal fromScaled(int64_t v, int scale) {
        Decimal d = fromInt(v);
        d.exponent -= scale;
        d.normalize();
        return d;
    }
    // The shortest decimal that reads back as d (what "1.005" was typed as).
    static Decimal shortest(double d);
    // d's exact binary value rounded to `significant` digits, halves to even.
    static Decimal rounded(double d, int significant);

    bool isZero() const { return digits.empty(); }
    // The power of ten of the first digit: 1234.5 -> 3. Undefined for zero.
    int magnitude() const { return static_cast<int>(digits.size()) - 1 + exponent; }

    // Keep `scale` digits after the point.
    Decimal& roundToScale(int scale, Rounding mode);
    // Keep `significant` digits.
    Decimal& roundToPrecision(int significant, Rounding mode);
    Decimal& shift(int powerOfTen) {
        if (!isZero()) exponent += powerOfTen;
        return *this;
    }

    // Nearest double; nullopt when it is beyond the double range (a tiny value gives 0).
    std::optional<double> toDouble() const;
    // The whole value as int64 when it is an integer in range.
    std::optional<int64_t> toInt64() const;
    // Plain digits, trailing zeros dropped: "-12,5", "0,001", "100".
    std::string plain(char point) const;
    // The integer digits ("" for 0) and `places` fraction digits of the absolute value, truncated.
    std::string integerDigits() const;
    std::string fractionDigits(int places) const;

    void normalize();
};

}  // namespace vb
