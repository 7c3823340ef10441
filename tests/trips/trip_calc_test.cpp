// The figures of "OK és Összesít" without the form: exact texts as the boxes show them.
#include <gtest/gtest.h>

#include "trips/tripcalc.h"
#include "vb/conv.h"

namespace {

using namespace trips::calc;

TEST(TripCalc, LitresCostAndRealKm) {
    EXPECT_EQ(litres("120", "7,5", ""), "9");
    EXPECT_EQ(cost("9", "400", ""), "3600");
    EXPECT_EQ(litres("35", "6,3", ""), "2,205");
    // no distance, no consumption, letters or an empty box: the typed figure stands
    EXPECT_EQ(litres("0", "7,5", "12,5"), "12,5");
    EXPECT_EQ(litres("120", "0", "3"), "3");
    EXPECT_EQ(litres("", "7,5", "4"), "4");
    EXPECT_EQ(litres("12a", "7,5", "4"), "4");
    // the cost takes an empty side as 0, and keeps its figure when a side is no number
    EXPECT_EQ(cost("12,5", "400", "1"), "5000");
    EXPECT_EQ(cost("", "400", "1"), "0");
    EXPECT_EQ(cost("9", "abc", "77"), "77");

    EXPECT_EQ(realKm("1000", "1250", ""), "250");
    EXPECT_EQ(realKm("1000", "1000", "5"), "0");
    EXPECT_EQ(realKm("1000", "999", "5"), "0");
    EXPECT_EQ(realKm("", "1250", "77"), "77");  // the subtraction fails, the label keeps its value
    EXPECT_EQ(realKm("1000", "", "77"), "0");
}

TEST(TripCalc, DurationKeepsTheSplitRuleAndItsSlip) {
    Work w;
    EXPECT_EQ(duration(w, "8,05", "10,00", "").text, "1,55");
    EXPECT_EQ(duration(w, "9,35", "10,00", "").text, "0,55");  // 9,35 counts as 9:05
    EXPECT_EQ(duration(w, "9,30", "10,00", "").text, "1,00");  // 9,30 counts as 9:00
    EXPECT_EQ(duration(w, "9,00", "10,00", "").text, "1,00");
    EXPECT_EQ(duration(w, "12,30", "12,35", "").text, "0,05");
    EXPECT_EQ(duration(w, "14,00", "14,00", "").text, "0,00");
    EXPECT_EQ(duration(w, "12,00", "12,75", "").text, "1,15");  // minutes beyond 59 count as they are
    EXPECT_EQ(duration(w, "0,30", "23,30", "").text, "23,00");
    EXPECT_EQ(w.durationHours, 23);
    EXPECT_EQ(w.startMinutes, 30);

    auto back = duration(w, "14,00", "13,00", "2,00");
    EXPECT_TRUE(back.arrivalBeforeStart);
    EXPECT_EQ(back.text, "0,00");
    EXPECT_EQ(w.durationHours, 23);  // the parts of the last run stay for the allowance

    // an empty box computes nothing; a short text keeps the minute of the last run
    auto none = duration(w, "", "10,00", "3,10");
    EXPECT_FALSE(none.arrivalBeforeStart);
    EXPECT_EQ(none.text, "3,10");
    int16_t h = 7, m = 42;
    splitTime("8", h, m);
    EXPECT_EQ(h, 8);
    EXPECT_EQ(m, 42);
    splitTime("10,5", h, m);
    EXPECT_EQ(h, 10);
    EXPECT_EQ(m, 5);
}

TEST(TripCalc, ElapsedTicksTheAllowanceDay) {
    Work w;
    duration(w, "8,00", "9,00", "");
    auto e = elapsed(w, "10,00");  // previous arrival less this start
    EXPECT_EQ(e.elapsedText, "120");
    EXPECT_EQ(e.allowanceDay, std::optional<bool>(true));  // exactly two hours is ticked
    e = elapsed(w, "10,01");
    EXPECT_EQ(e.elapsedText, "121");
    EXPECT_EQ(e.allowanceDay, std::optional<bool>(false));
    e = elapsed(w, "8,00");
    EXPECT_EQ(e.elapsedText, "");
    EXPECT_FALSE(e.allowanceDay.has_value());
    e = elapsed(w, "7,00");
    EXPECT_EQ(e.elapsedText, "");
    EXPECT_FALSE(e.allowanceDay.has_value());
}

TEST(TripCalc, AllowanceCountsWholeDaysOnly) {
    Work w;
    duration(w, "0,30", "23,30", "");  // 23 hours
    EXPECT_EQ(allowance(w, "120", 5000, true), std::optional<double>(5000));
    EXPECT_EQ(allowance(w, "60", 5000, true), std::optional<double>(5000));
    EXPECT_EQ(allowance(w, "", 5000, true), std::optional<double>(0));  // the hours statement is skipped
    EXPECT_FALSE(allowance(w, "120", 0, true).has_value());
    EXPECT_FALSE(allowance(w, "120", 5000, false).has_value());
    duration(w, "8,00", "18,00", "");  // 10 hours
    EXPECT_EQ(allowance(w, "60", 5000, true), std::optional<double>(0));
    // the extra portions come in only beyond 8 and 16 days
    Work big;
    big.durationHours = 200;
    EXPECT_EQ(allowance(big, "0", 100, true), std::optional<double>(900));
    big.durationHours = 400;
    EXPECT_EQ(allowance(big, "0", 100, true), std::optional<double>(1800));
}

TEST(TripCalc, PreviousTripOrderTakesTheFirstDriverNewestFirst) {
    vb::Date d20 = vb::DateSerial(2026, 11, 20), d21 = vb::DateSerial(2026, 11, 21);
    std::vector<TripKey> rows = {
        {std::string("Zala Ödön"), d21, 9.0},
        {std::string("Ábel Péter"), d20, 23.0},
        {std::string("ábel péter"), vb::Null{}, 7.0},  // the same name in the sort order; no day sorts last
        {std::string("Ábel Péter"), d20, 12.3},
        {std::string("Ábel Péter"), d20, 8.3},
        {std::string("Aba Ödön"), vb::Null{}, 5.0},  // "Aba" before "Ábel": accents after their letter
    };
    EXPECT_EQ(firstTwo(rows), (std::pair<long, long>(5, 1)));
    rows.erase(rows.begin() + 5);
    EXPECT_EQ(firstTwo(rows), (std::pair<long, long>(1, 3)));
    rows.push_back({vb::Null{}, d20, 1.0});  // a row without driver comes first of all
    EXPECT_EQ(firstTwo(rows).first, 5);
    EXPECT_EQ(arrivalStamp({vb::Null{}, d20, 12.3}), "2026.11.20 12:30:00");  // Format's "/" is the locale's "."
    EXPECT_EQ(arrivalStamp({vb::Null{}, d20, 12.75}), "2026.11.20 13:15:00");
    EXPECT_EQ(arrivalStamp({vb::Null{}, vb::Null{}, 12.75}), "");
    EXPECT_EQ(firstTwo({}), (std::pair<long, long>(-1, -1)));
    EXPECT_EQ(firstTwo({rows[0]}), (std::pair<long, long>(0, -1)));
}

TEST(TripCalc, GroupIdAndTimeTexts) {
    std::string id = groupId(vb::DateSerial(2026, 11, 6), 30600.25f);
    EXPECT_EQ(id, "202611630600,25");
    EXPECT_EQ(groupId(vb::DateSerial(2026, 1, 1), 5.5f), "2026115,5");
    EXPECT_EQ(id.find('\''), std::string::npos);

    EXPECT_EQ(timeText(8.3), "8,30");
    EXPECT_EQ(timeText(0.0), "0,00");
    EXPECT_EQ(timeText(vb::Null{}), "");
    EXPECT_TRUE(timeAccepted("23,59"));
    EXPECT_TRUE(timeAccepted("12,75"));
    EXPECT_TRUE(timeAccepted(""));
    EXPECT_FALSE(timeAccepted("23,60"));
    EXPECT_FALSE(timeAccepted("830"));
    EXPECT_FALSE(timeAccepted("8,3,0"));
}

}  // namespace
