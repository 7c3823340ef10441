// A column value as the engine hands it over: one variant per Access 2000 column type.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace jet {

// Column types by their on-disk code.
enum class ColType : uint8_t {
    Boolean = 0x01,
    Byte = 0x02,
    Integer = 0x03,   // 16-bit
    Long = 0x04,      // 32-bit
    Currency = 0x05,  // 64-bit, scaled by 10 000
    Single = 0x06,
    Double = 0x07,
    DateTime = 0x08,  // double: days since 1899-12-30, fraction is the time of day
    Binary = 0x09,
    Text = 0x0A,
    Ole = 0x0B,
    Memo = 0x0C,
    Guid = 0x0F,      // Replication ID
    Numeric = 0x10,   // Decimal
};

struct Currency {
    int64_t scaled = 0;  // value * 10 000
    bool operator==(const Currency&) const = default;
};

struct DateTime {
    double days = 0;  // the stored double, exactly
    bool operator==(const DateTime&) const = default;
};

struct Guid {
    std::array<uint8_t, 16> bytes{};  // as stored
    bool operator==(const Guid&) const = default;
};

struct Decimal {
    // unscaled magnitude as a 96-bit little-endian integer in three words, sign, scale
    std::array<uint32_t, 3> magnitude{};
    bool negative = false;
    uint8_t scale = 0;
    bool operator==(const Decimal&) const = default;
};

using Bytes = std::vector<uint8_t>;

// monostate is SQL NULL. Texts (Text and Memo) are UTF-8.
using Value = std::variant<std::monostate, bool, uint8_t, int16_t, int32_t, Currency, float, double,
                           DateTime, std::string, Bytes, Guid, Decimal>;

using Row = std::vector<Value>;  // in column order of the table definition

inline bool isNull(const Value& v) { return std::holds_alternative<std::monostate>(v); }

// The bytes a value of a fixed-size type takes in a row (Boolean 0: it lives in the null mask);
// 0 for the variable-length types (Text, Memo, OLE Object, Binary).
uint16_t fixedDataSize(ColType t);

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}": the first three groups little-endian, as Access shows it.
std::string guidText(const Guid& g);
// The nearest double to a Decimal.
double decimalToDouble(const Decimal& d);

}  // namespace jet
