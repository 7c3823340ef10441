// The null helpers and the clock they read today from.
#include <cmath>

#include "vb/clock.h"
#include "vb/err.h"
#include "vb/funcs.h"
#include "vb_test.h"

using namespace vb;

namespace {
struct VbFuncs : ::testing::Test {
    void TearDown() override {
        clock::reset();
        Err.Clear();
    }
};
}  // namespace

TEST_F(VbFuncs, NullToNum) {
    Variant zero = NullToNum(Null{});
    ASSERT_TRUE(std::holds_alternative<int16_t>(zero));  // VB's Integer 0
    EXPECT_EQ(0, std::get<int16_t>(zero));
    EXPECT_EQ(Variant(5.0), NullToNum(5));
    EXPECT_EQ(Variant(3.0), NullToNum(int16_t{3}));
    EXPECT_EQ(Variant(7.5), NullToNum("7,5"));
    EXPECT_EQ(Variant(12.0), NullToNum(" 12 "));
    EXPECT_EQ(Variant(1.25), NullToNum(Currency{12500}));
    EXPECT_EQ(Variant(-1.0), NullToNum(true));
    EXPECT_EQ(0.0, nullToDouble(Null{}));
    EXPECT_EQ(7.5, nullToDouble("7,5"));
    for (const char* text : {"abc", "", "7.5"}) EXPECT_VB_ERROR(13, NullToNum(text));
    // under resumed errors the number is recorded and the fallback returned
    Variant r = resume([] { return NullToNum("abc"); }, Variant(Empty{}));
    EXPECT_TRUE(isEmpty(r));
    EXPECT_EQ(13, Err.Number());
}

TEST_F(VbFuncs, NullToDateIsTodayThroughTheClock) {
    clock::setFixed(dt(2026, 11, 22, 8, 30, 15));
    EXPECT_EQ(Variant(dt(2026, 11, 22)), NullToDate(Null{}));
    EXPECT_EQ("2026.11.22.", CStr(NullToDate(Null{})));
    EXPECT_EQ(dt(2026, 11, 22), nullToDate(Null{}));
    EXPECT_EQ(Variant(dt(2013, 3, 31)), NullToDate(dt(2013, 3, 31)));
    EXPECT_EQ(Variant(dt(2013, 3, 31)), NullToDate("2013.03.31."));
    EXPECT_EQ(Variant(dt(2000, 1, 1, 12)), NullToDate(36526.5));
    EXPECT_VB_ERROR(13, NullToDate("abc"));
}

TEST_F(VbFuncs, NullToStr) {
    EXPECT_EQ(Variant(std::string()), NullToStr(Null{}));
    EXPECT_EQ("", nullToText(Null{}));
    EXPECT_EQ(Variant("ABC-123"), NullToStr("ABC-123"));
    EXPECT_EQ(Variant("7,5"), NullToStr(7.5));
    EXPECT_EQ(Variant("9"), NullToStr(9.0));
    EXPECT_EQ(Variant("42"), NullToStr(42));
    EXPECT_EQ(Variant("True"), NullToStr(true));
    EXPECT_EQ(Variant("2026.11.22."), NullToStr(dt(2026, 11, 22)));
    EXPECT_EQ("2,5", nullToText(2.5));
}

TEST_F(VbFuncs, FixedAndSystemClock) {
    clock::setFixed(dt(2026, 11, 22, 8, 30, 0, 250));
    EXPECT_EQ(dt(2026, 11, 22, 8, 30), clock::now());
    EXPECT_EQ(dt(2026, 11, 22), clock::today());
    EXPECT_EQ(30600.25, clock::secondsSinceMidnight());
    EXPECT_EQ(30600.25f, clock::timer());
    EXPECT_EQ("30600,25", CStr(clock::timer()));

    clock::reset();
    Date now = clock::now();
    EXPECT_GT(now.serial, dt(2020, 1, 1).serial);
    EXPECT_EQ(0, dateParts(now).millisecond);
    EXPECT_EQ(std::floor(now.serial), clock::today().serial);
    double s = clock::secondsSinceMidnight();
    EXPECT_TRUE(s >= 0 && s < 86400) << s;
}
