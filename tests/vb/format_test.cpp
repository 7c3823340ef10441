// Format masks as the program uses them, under the Hungarian settings.
#include "vb/format.h"
#include "vb/text.h"
#include "vb_test.h"

using namespace vb;

namespace {
const Date Trip = dt(2013, 3, 5, 8, 30, 0);
}

TEST(VbFormat, NoMaskIsCStr) {
    EXPECT_EQ("8,3", Format(8.3));
    EXPECT_EQ("12", Format(12, ""));
    EXPECT_EQ("2013.03.05. 8:30:00", Format(Trip));
    EXPECT_EQ("", Format(Null{}));
    EXPECT_EQ("", Format(Empty{}));
    EXPECT_EQ("szöveg", Format("szöveg"));
}

TEST(VbFormat, NumericMasksAndSections) {
    // the mask's point is the Hungarian decimal comma
    EXPECT_EQ("08,30", Format(8.3, "00.00"));
    EXPECT_EQ("16,45", Format(16.45, "00.00"));
    EXPECT_EQ("08,30", Format(8.3f, "00.00"));
    EXPECT_EQ("08,30", Format(Currency{83000}, "00.00"));
    EXPECT_EQ("07,00", Format(7, "00.00"));
    EXPECT_EQ("123,46", Format(123.456, "00.00"));
    EXPECT_EQ("-08,30", Format(-8.3, "00.00"));
    // the arrival time mask: zero and Null print "0", the negative section has no sign
    const char* arrival = "00.00;0;0;0";
    EXPECT_EQ("08,30", Format(8.3, arrival));
    EXPECT_EQ("0", Format(0, arrival));
    EXPECT_EQ("0", Format(0.0, arrival));
    EXPECT_EQ("0", Format(Null{}, arrival));
    EXPECT_EQ("8", Format(-8.3, arrival));
    EXPECT_EQ("(0)", Format(-0.4, "0;(0)"));
    EXPECT_EQ("(5)", Format(-5, "0;(0)"));
    EXPECT_EQ("nulla", Format(0, "0.00;;\"nulla\""));
    EXPECT_EQ("-5", Format(-5, "0;;x"));  // an empty section falls back on the first
    EXPECT_EQ("", Format(Null{}, "0.00"));
    EXPECT_EQ("nincs", Format(Null{}, "0;0;0;\"nincs\""));
    // rounding is half away from zero on the decimal value the user sees
    EXPECT_EQ("3", Format(2.5, "0"));
    EXPECT_EQ("-3", Format(-2.5, "0"));
    EXPECT_EQ("0,13", Format(0.125, "0.00"));
    EXPECT_EQ("1,01", Format(1.005, "0.00"));
    EXPECT_EQ("08,31", Format(8.305, "00.00"));
    EXPECT_EQ("10,00", Format(9.999, "00.00"));
    // placeholders
    EXPECT_EQ(",50", Format(0.5, "#.00"));
    EXPECT_EQ("8,", Format(8, "#.##"));
    EXPECT_EQ("8,5", Format(8.5, "#.##"));
    EXPECT_EQ("", Format(0, "#"));
    EXPECT_EQ("12345", Format(12345, "00"));
    EXPECT_EQ("005", Format(5, "000"));
    EXPECT_EQ("05", Format(5, "#0#"));
    // grouping, scaling, percent, scientific, literals
    EXPECT_EQ("1 234,50", Format(1234.5, "#,##0.00"));
    EXPECT_EQ("1 234 567,89", Format(1234567.891, "#,##0.00"));
    EXPECT_EQ("999", Format(999, "#,##0"));
    EXPECT_EQ("-1 234 567", Format(-1234567, "#,##0"));
    EXPECT_EQ("1235", Format(1234567, "0,"));
    EXPECT_EQ("12,3%", Format(0.1234, "0.0%"));
    EXPECT_EQ("1,23E+03", Format(1234.5, "0.00E+00"));
    EXPECT_EQ("1,2E-04", Format(0.000123, "0.0E-00"));
    EXPECT_EQ("1,00E+01", Format(9.999, "0.00E+00"));
    EXPECT_EQ("0,00E+00", Format(0, "0.00E+00"));
    EXPECT_EQ("Összesen: 5", Format(5, "\"Összesen: \"0"));
    EXPECT_EQ("5 km", Format(5, "0 \\k\\m"));
    EXPECT_EQ("1 234,50 Ft", Format(1234.5, "#,##0.00 \"Ft\""));
    EXPECT_EQ("-$5", Format(-5, "$0"));
    EXPECT_VB_ERROR(13, Format(ByteArray{1}, "0"));
}

TEST(VbFormat, NamedFormats) {
    EXPECT_EQ("1 234,50 Ft", Format(1234.5, "Currency"));
    EXPECT_EQ("-1 234,50 Ft", Format(-1234.5, "currency"));
    EXPECT_EQ("1 234,50 Ft", Format(Currency{12345000}, "Currency"));
    EXPECT_EQ("1234,50", Format(1234.5, "Fixed"));
    EXPECT_EQ("1 234,50", Format(1234.5, "Standard"));
    EXPECT_EQ("1234,5", Format(1234.5, "General Number"));
    EXPECT_EQ("-1", Format(true, "General Number"));
    EXPECT_EQ("12,34%", Format(0.1234, "Percent"));
    EXPECT_EQ("1,23E+03", Format(1234.5, "Scientific"));
    EXPECT_EQ("No", Format(0, "Yes/No"));
    EXPECT_EQ("True", Format(true, "True/False"));
    EXPECT_EQ("On", Format("7,5", "On/Off"));
    EXPECT_EQ("abc", Format("abc", "Fixed"));
    EXPECT_EQ("", Format(Null{}, "Currency"));
    EXPECT_EQ("2013.03.05.", Format(Trip, "Short Date"));
    EXPECT_EQ("2013. március 5.", Format(Trip, "Long Date"));
    EXPECT_EQ("05-márc.-13", Format(Trip, "Medium Date"));
    EXPECT_EQ("08:30", Format(Trip, "Short Time"));
    EXPECT_EQ("8:30:00", Format(Trip, "Long Time"));
    EXPECT_EQ("08:30 de.", Format(Trip, "Medium Time"));
    EXPECT_EQ("2013.03.05. 8:30:00", Format(Trip, "General Date"));
    EXPECT_EQ("2013.03.05.", Format(dt(2013, 3, 5), "General Date"));
    EXPECT_EQ("2013.03.05.", Format("2013.03.05. 8:30", "short date"));
}

TEST(VbFormat, DateMasks) {
    EXPECT_EQ("2013.03.05 08:30:00", Format(Trip, "YYYY/MM/DD HH:NN:SS"));
    EXPECT_EQ("2013.03.05 08:30:00", Format(Trip, "yyyy/mm/dd hh:nn:ss"));
    EXPECT_EQ("2013.03.05", Format(Trip, "yyyy.mm.dd"));
    EXPECT_EQ("5.3.13", Format(Trip, "d/m/yy"));
    EXPECT_EQ("08:30", Format(Trip, "hh:mm"));  // m after h is the minute
    EXPECT_EQ("8:30:0", Format(Trip, "h:n:s"));
    EXPECT_EQ("március", Format(Trip, "mmmm"));
    EXPECT_EQ("márc.", Format(Trip, "mmm"));
    EXPECT_EQ("kedd", Format(Trip, "dddd"));
    EXPECT_EQ("K", Format(Trip, "ddd"));
    EXPECT_EQ("csütörtök", Format(dt(2013, 3, 7), "dddd"));
    EXPECT_EQ("1", Format(Trip, "q"));
    EXPECT_EQ("3", Format(Trip, "w"));
    EXPECT_EQ("10", Format(Trip, "ww"));
    EXPECT_EQ("64", Format(Trip, "y"));
    EXPECT_EQ("8:30 AM", Format(Trip, "h:nn AM/PM"));
    EXPECT_EQ("08:30 pm", Format(dt(2013, 3, 5, 20, 30), "hh:nn am/pm"));
    EXPECT_EQ("12:05 P", Format(dt(2013, 3, 5, 12, 5), "h:nn A/P"));
    EXPECT_EQ("8:30 du.", Format(dt(2013, 3, 5, 20, 30), "h:nn AMPM"));
    EXPECT_EQ("Nap: 05", Format(Trip, "\"Nap: \"dd"));
    EXPECT_EQ("2013.03.05.", Format(Trip, "ddddd"));
    EXPECT_EQ("8:30:00", Format(Trip, "ttttt"));
    EXPECT_EQ("2013.03.05. 8:30:00", Format(Trip, "c"));
    // shown to the second: 23:59:59.5 is the next day
    EXPECT_EQ("2013.03.06 00:00:00", Format(dt(2013, 3, 5, 23, 59, 59, 500), "yyyy/mm/dd hh:nn:ss"));
    // numbers under a date mask are dates, dates under a numeric mask numbers
    EXPECT_EQ("12:00", Format(0.5, "hh:nn"));
    EXPECT_EQ("2013.03.05", Format(41338.0, "yyyy.mm.dd"));
    EXPECT_EQ("41338,5", Format(dt(2013, 3, 5, 12), "0.0"));
    EXPECT_EQ("-1", Format(true, "0"));
    EXPECT_VB_ERROR(6, Format(1e10, "yyyy"));
}

TEST(VbFormat, TextValuesAndMasks) {
    EXPECT_EQ("08,30", Format("8,3", "00.00"));
    EXPECT_EQ("abc", Format("abc", "00.00"));
    EXPECT_EQ("8.3", Format("8.3", "00.00"));  // not a Hungarian number: unchanged
    EXPECT_EQ("2013.03.05", Format("2013.03.05.", "yyyy/mm/dd"));
    EXPECT_EQ("  ABC", Format("abc", ">@@@@@"));
    EXPECT_EQ("abc  ", Format("abc", "!@@@@@"));
    EXPECT_EQ("abcd-ef", Format("abcdef", "@@-@@"));
    EXPECT_EQ("ŐRÜLT", Format("őrült", ">&&&&&"));
    EXPECT_EQ("  árvíz", Format("ÁRVÍZ", "<@@@@@@@"));
    EXPECT_EQ("(üres)", Format("", "@;\"(üres)\""));
}

TEST(VbText, StringFunctionsCountCharacters) {
    EXPECT_EQ(5u, Len("őrült"));
    EXPECT_EQ("őr", Left("őrült", 2));
    EXPECT_EQ("ült", Right("őrült", 3));
    EXPECT_EQ("őrült", Right("őrült", 10));
    EXPECT_EQ("rü", Mid("őrült", 2, 2));
    EXPECT_EQ("ült", Mid("őrült", 3));
    EXPECT_EQ("", Mid("őrült", 9));
    EXPECT_EQ("ŐRÜLT ÁRVÍZTŰRŐ", UCase("őrült árvíztűrő"));
    EXPECT_EQ("tükörfúrógép", LCase("TÜKÖRFÚRÓGÉP"));
    EXPECT_EQ("a b", Trim("  a b  "));
    EXPECT_VB_ERROR(5, Left("x", -1));
    EXPECT_VB_ERROR(5, Mid("x", 0));
    // a stray byte is read as its Latin-1 letter, not lost
    EXPECT_EQ("aÿ", Left(std::string("a\xFF"), 2));
}
