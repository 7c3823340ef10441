#include "value.h"

#include <cmath>
#include <cstdio>

namespace jet {

uint16_t fixedDataSize(ColType t) {
    switch (t) {
        case ColType::Byte: return 1;
        case ColType::Integer: return 2;
        case ColType::Long: case ColType::Single: return 4;
        case ColType::Currency: case ColType::Double: case ColType::DateTime: return 8;
        case ColType::Guid: return 16;
        case ColType::Numeric: return 17;
        default: return 0;
    }
}

std::string guidText(const Guid& g) {
    const auto& b = g.bytes;
    char buf[40];
    std::snprintf(buf, sizeof buf, "{%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X}", b[3], b[2],
                  b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
    return buf;
}

double decimalToDouble(const Decimal& d) {
    double m = 0;
    for (int i = 2; i >= 0; --i) m = m * 4294967296.0 + d.magnitude[static_cast<size_t>(i)];
    m /= std::pow(10.0, d.scale);
    return d.negative ? -m : m;
}

}  // namespace jet
