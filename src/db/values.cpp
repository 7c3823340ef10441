#include "db/values.h"

namespace db {


vb::Variant toVariant(const jet::Value& v) {
    struct Visit {
        vb::Variant operator()(std::monostate) const { return vb::Null{}; }
        vb::Variant operator()(bool b) const { return b; }
        vb::Variant operator()(uint8_t b) const { return b; }
        vb::Variant operator()(int16_t i) const { return i; }
        vb::Variant operator()(int32_t i) const { return i; }
        vb::Variant operator()(const jet::Currency& c) const { return vb::Currency{c.scaled}; }
        vb::Variant operator()(float f) const { return f; }
        vb::Variant operator()(double d) const { return d; }
        vb::Variant operator()(const jet::DateTime& d) const { return vb::Date{d.days}; }
        vb::Variant operator()(const std::string& s) const { return s; }
        vb::Variant operator()(const jet::Bytes& b) const { return vb::ByteArray(b); }
        vb::Variant operator()(const jet::Guid& g) const { return jet::guidText(g); }
        vb::Variant operator()(const jet::Decimal& d) const { return jet::decimalToDouble(d); }
    };
    return std::visit(Visit{}, v);
}

}  // namespace db
