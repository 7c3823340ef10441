// VB's Variant: the value a form, a field or an expression holds. Subtypes as VB6 has them.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace vb {

struct Empty {
    bool operator==(const Empty&) const = default;
};
struct Null {
    bool operator==(const Null&) const = default;
};
// A Date: days since 1899-12-30, the fraction is the time of day (VB's and Jet's double).
struct Date {
    double serial = 0;
    bool operator==(const Date&) const = default;
};
// A Currency: the value times 10 000.
struct Currency {
    int64_t scaled = 0;
    bool operator==(const Currency&) const = default;
};
using ByteArray = std::vector<uint8_t>;

// Strings are UTF-8.
using Variant = std::variant<Empty, Null, bool, uint8_t, int16_t, int32_t, float, double, Currency, Date,
                             std::string, ByteArray>;

inline bool isNull(const Variant& v) { return std::holds_alternative<Null>(v); }
inline bool isEmpty(const Variant& v) { return std::holds_alternative<Empty>(v); }

}  // namespace vb
