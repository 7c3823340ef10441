// A Variant assigned to a field becomes the column's type as DAO converts it.
#include "db/values.h"

#include "db_support.h"

using namespace dbtest;
using vb::Variant;
using T = jet::ColType;

namespace {

jet::Column col(T type, uint16_t length = 0, uint8_t precision = 0, uint8_t scale = 0) {
    jet::Column c;
    c.type = type;
    c.length = length;
    c.precision = precision;
    c.scale = scale;
    return c;
}

jet::Value to(const jet::Column& c, const Variant& v) { return db::toColumnValue(c, v); }
int refused(const jet::Column& c, const Variant& v) {
    return errorOf([&] { db::toColumnValue(c, v); });
}

TEST(ValuesTest, WholeNumbersRoundHalvesToEvenWithinTheirRange) {
    EXPECT_EQ(to(col(T::Long), 2.5), jet::Value(int32_t(2)));
    EXPECT_EQ(to(col(T::Long), 3.5), jet::Value(int32_t(4)));
    EXPECT_EQ(to(col(T::Integer), "-7,5"), jet::Value(int16_t(-8)));  // the decimal comma
    EXPECT_EQ(to(col(T::Integer), true), jet::Value(int16_t(-1)));
    EXPECT_EQ(to(col(T::Byte), 255), jet::Value(uint8_t(255)));
    EXPECT_EQ(refused(col(T::Byte), 256), 3421);
    EXPECT_EQ(refused(col(T::Byte), true), 3421);  // -1
    EXPECT_EQ(refused(col(T::Integer), 32767.5), 3421);
    EXPECT_EQ(refused(col(T::Long), "7.5"), 3421);  // a point is no decimal separator here
    EXPECT_EQ(refused(col(T::Long), ""), 3421);
    EXPECT_EQ(refused(col(T::Long), "  "), 3421);
    EXPECT_EQ(refused(col(T::Long), vb::ByteArray{1}), 3421);
}

TEST(ValuesTest, FractionsCurrencyAndDecimalKeepTheirDigits) {
    EXPECT_EQ(to(col(T::Double), "1 234,5"), jet::Value(1234.5));
    EXPECT_EQ(to(col(T::Double), vb::Currency{125000}), jet::Value(12.5));
    EXPECT_EQ(to(col(T::Double), vb::Date{46348.5}), jet::Value(46348.5));
    EXPECT_EQ(to(col(T::Single), 0.1), jet::Value(0.1f));
    EXPECT_EQ(refused(col(T::Single), 1e39), 3421);
    EXPECT_EQ(to(col(T::Currency), "12,3456"), jet::Value(jet::Currency{123456}));
    EXPECT_EQ(to(col(T::Currency), 0.00005), jet::Value(jet::Currency{0}));  // halves to even
    EXPECT_EQ(refused(col(T::Currency), ""), 3421);

    jet::Decimal d = std::get<jet::Decimal>(to(col(T::Numeric, 0, 18, 2), 12.34));
    EXPECT_EQ(d.magnitude[0], 1234u);
    EXPECT_EQ(d.scale, 2);
    EXPECT_FALSE(d.negative);
    d = std::get<jet::Decimal>(to(col(T::Numeric, 0, 18, 2), -0.125));
    EXPECT_EQ(d.magnitude[0], 12u);  // halves to even
    EXPECT_TRUE(d.negative);
    d = std::get<jet::Decimal>(to(col(T::Numeric, 0, 28, 0), 1e20));
    EXPECT_EQ(jet::decimalToDouble(d), 1e20);
    EXPECT_EQ(refused(col(T::Numeric, 0, 4, 2), 123.4), 3349);
}

TEST(ValuesTest, TextsDatesFlagsAndIdentifiers) {
    EXPECT_EQ(to(col(T::Text, 10), 7.5), jet::Value(std::string("7,5")));
    EXPECT_EQ(to(col(T::Text, 10), "ŐŰ őű"), jet::Value(std::string("ŐŰ őű")));  // 5 characters, 9 bytes
    EXPECT_EQ(refused(col(T::Text, 10), "123456"), 3163);
    EXPECT_EQ(to(col(T::Memo), std::string(5000, 'x')), jet::Value(std::string(5000, 'x')));
    EXPECT_EQ(to(col(T::DateTime), "2026.11.22. 8:30"), jet::Value(jet::DateTime{46348 + 8.5 / 24}));
    EXPECT_EQ(to(col(T::DateTime), 2.25), jet::Value(jet::DateTime{2.25}));
    EXPECT_EQ(refused(col(T::DateTime), "holnap"), 3421);
    EXPECT_EQ(refused(col(T::DateTime), ""), 3421);
    EXPECT_EQ(to(col(T::Boolean), "Igaz"), jet::Value(true));
    EXPECT_EQ(to(col(T::Boolean), 0), jet::Value(false));
    EXPECT_EQ(refused(col(T::Boolean), "talán"), 3421);
    EXPECT_TRUE(jet::isNull(to(col(T::Long), vb::Null{})));
    EXPECT_TRUE(jet::isNull(to(col(T::Text, 10), vb::Empty{})));

    const std::string g = "{6BA1C3D2-0A1B-4C5D-8E9F-A0B1C2D3E4F5}";
    jet::Value guid = to(col(T::Guid), g);
    EXPECT_EQ(std::get<jet::Guid>(guid).bytes[0], 0xD2);  // first group little-endian on disk
    EXPECT_EQ(db::toVariant(guid), Variant(g));
    EXPECT_EQ(refused(col(T::Guid), "{not-a-guid}"), 3421);
}

}  // namespace
