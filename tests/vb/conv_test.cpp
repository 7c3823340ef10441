// Conversions as VB6 does them on a Hungarian Windows, checked under foreign C locales as well.
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <numbers>
#include <vector>

#include "jet/support.h"

#include "vb/err.h"
#include "vb/color.h"
#include "vb/constants.h"
#include "vb_test.h"

using namespace vb;

TEST(VbCStr, NumbersWithDecimalCommaAndFifteenDigits) {
    EXPECT_EQ("9", CStr(9.0));
    EXPECT_EQ("0,3", CStr(0.1 + 0.2));
    EXPECT_EQ("-2,5", CStr(-2.5));
    EXPECT_EQ("0,5", CStr(0.5));
    EXPECT_EQ("1234567,25", CStr(1234567.25));
    EXPECT_EQ("3,14159265358979", CStr(std::numbers::pi));
    EXPECT_EQ("12,3456789012346", CStr(12.345678901234567));
    EXPECT_EQ("999999999999999", CStr(999999999999999.0));
    EXPECT_EQ("0", CStr(-0.0));
    EXPECT_EQ("0,0001", CStr(0.0001));
    // scientific outside 1E-5 .. 1E+15, as oleaut32 prints it
    EXPECT_EQ("1E+20", CStr(1e20));
    EXPECT_EQ("1E+15", CStr(1e15));
    EXPECT_EQ("1,234E+16", CStr(1.234e16));
    EXPECT_EQ("-1,5E+300", CStr(-1.5e300));
    EXPECT_EQ("1E-05", CStr(0.00001));
    EXPECT_EQ("5,6789E-12", CStr(5.6789e-12));
    EXPECT_EQ("3,33333333333333E-07", CStr(1.0 / 3000000));
    EXPECT_EQ("1,23456789012346E+15", CStr(1234567890123456.0));
    EXPECT_VB_ERROR(6, CStr(std::nan("")));
}

TEST(VbCStr, OtherSubtypes) {
    EXPECT_EQ("1,5", CStr(1.5f));
    EXPECT_EQ("0,1", CStr(0.1f));
    EXPECT_EQ("3,141593", CStr(3.1415927f));
    EXPECT_EQ("1E+07", CStr(1e7f));
    EXPECT_EQ("-42", CStr(int16_t{-42}));
    EXPECT_EQ("2147483647", CStr(2147483647));
    EXPECT_EQ("255", CStr(uint8_t{255}));
    EXPECT_EQ("12,5", CStr(Currency{125000}));
    EXPECT_EQ("100", CStr(Currency{1000000}));
    EXPECT_EQ("-0,0001", CStr(Currency{-1}));
    EXPECT_EQ("-922337203685477,5808", CStr(Currency{INT64_MIN}));
    EXPECT_EQ("True", CStr(true));
    EXPECT_EQ("False", CStr(false));
    EXPECT_EQ("szöveg", CStr("szöveg"));
    EXPECT_EQ("", CStr(Empty{}));
    EXPECT_VB_ERROR(94, CStr(Null{}));
    EXPECT_VB_ERROR(13, CStr(ByteArray{1, 2}));
}

TEST(VbCStr, Dates) {
    EXPECT_EQ("2026.11.22.", CStr(dt(2026, 11, 22)));
    EXPECT_EQ("2026.11.22. 8:30:00", CStr(dt(2026, 11, 22, 8, 30)));
    EXPECT_EQ("2026.01.05. 14:05:09", CStr(dt(2026, 1, 5, 14, 5, 9)));
    EXPECT_EQ("8:30:00", CStr(dt(1899, 12, 30, 8, 30)));
    EXPECT_EQ("0:00:00", CStr(Date{0}));
    // shown to the second: half a second before midnight is the next day
    EXPECT_EQ("2026.11.23.", CStr(dt(2026, 11, 22, 23, 59, 59, 500)));
    EXPECT_EQ("2026.11.22. 23:59:59", CStr(dt(2026, 11, 22, 23, 59, 59, 499)));
    EXPECT_EQ("0100.01.01.", CStr(dt(100, 1, 1)));
    EXPECT_EQ("1899.12.29. 6:00:00", CStr(Date{-1.25}));
    EXPECT_EQ("2026.11.22.", dateText(dt(2026, 11, 22, 8, 30)));
    EXPECT_EQ("8:30:00", timeText(dt(2026, 11, 22, 8, 30)));
}

TEST(VbCDbl, ReadsTheHungarianNumberForms) {
    EXPECT_EQ(7.5, CDbl("7,5"));
    EXPECT_EQ(7.5, CDbl("  7,5  "));
    EXPECT_EQ(-12.0, CDbl("-12"));
    EXPECT_EQ(3.0, CDbl("+3"));
    EXPECT_EQ(0.5, CDbl(",5"));
    EXPECT_EQ(1234.5, CDbl("1 234,5"));
    EXPECT_EQ(1234.0, CDbl("1\u00A0234"));
    EXPECT_EQ(2500.0, CDbl("2,5E3"));
    EXPECT_EQ(0.01, CDbl("1e-2"));
    EXPECT_EQ(-5.0, CDbl("5-"));
    EXPECT_EQ(-5.0, CDbl("(5)"));
    EXPECT_EQ(31.0, CDbl("&H1F"));
    EXPECT_EQ(-1.0, CDbl("&HFFFF"));
    EXPECT_EQ(65536.0, CDbl("&H10000"));
    EXPECT_EQ(15.0, CDbl("&O17"));
    EXPECT_EQ(0.1, CDbl("0,1"));
    EXPECT_EQ(0.0, CDbl("1e-500"));
    EXPECT_EQ(7.0, CDbl(7));
    EXPECT_EQ(1.25, CDbl(Currency{12500}));
    EXPECT_EQ(-1.0, CDbl(true));
    EXPECT_EQ(0.0, CDbl(Empty{}));
    EXPECT_EQ(36526.5, CDbl(dt(2000, 1, 1, 12)));

    for (const char* text : {"", "   ", "abc", "7.5", "12 ab", "1,2,3", "--5", "e5", "&H", "&HG", "5 -", "1  2",
                             "1,234.5", "(5", "5)", "&H1 F"}) {
        EXPECT_VB_ERROR(13, CDbl(text));
        EXPECT_FALSE(IsNumeric(text)) << text;
    }
    EXPECT_VB_ERROR(94, CDbl(Null{}));
    EXPECT_VB_ERROR(6, CDbl("1e400"));
    EXPECT_VB_ERROR(6, CDbl("&H100000000"));
    EXPECT_VB_ERROR(13, CDbl(ByteArray{}));
}

TEST(VbCDbl, IsNumeric) {
    for (Variant v : {Variant("7,5"), Variant(" 12 "), Variant("&H1F"), Variant("1E3"), Variant(3.5), Variant(true),
                      Variant(Currency{1}), Variant(Empty{})}) {
        EXPECT_TRUE(IsNumeric(v)) << v.index();
    }
    for (Variant v : {Variant(Null{}), Variant(dt(2026, 1, 1)), Variant("1e400"), Variant(ByteArray{1})}) {
        EXPECT_FALSE(IsNumeric(v)) << v.index();
    }
}

TEST(VbVal, ReadsANumericPrefixWithAPoint) {
    EXPECT_EQ(7.0, Val("7,5"));
    EXPECT_EQ(7.5, Val("7.5"));
    EXPECT_EQ(0.0, Val("abc"));
    EXPECT_EQ(12.0, Val(" 12 ab"));
    EXPECT_EQ(0.0, Val(""));
    EXPECT_EQ(-3.25, Val("  -3.25xyz"));
    EXPECT_EQ(1615198.0, Val("1 615 198th Street"));
    EXPECT_EQ(0.5, Val(".5"));
    EXPECT_EQ(1.2, Val("1.2.3"));
    EXPECT_EQ(1000.0, Val("1e3"));
    EXPECT_EQ(150.0, Val("1.5D2"));
    EXPECT_EQ(2.0, Val("2e"));
    EXPECT_EQ(0.0, Val("-"));
    EXPECT_FALSE(std::signbit(Val("-0")));
    EXPECT_EQ(255.0, Val("&HFF"));
    EXPECT_EQ(-1.0, Val("&HFFFF"));
    EXPECT_EQ(65535.0, Val("&HFFFF&"));
    EXPECT_EQ(15.0, Val("&O17"));
    EXPECT_EQ(0.0, Val("&H"));
    EXPECT_VB_ERROR(6, Val("1e999"));
    // a non-text goes through CStr first, so Val(7.5) is 7 on a Hungarian Windows
    EXPECT_EQ(7.0, Val(Variant(7.5)));
    EXPECT_EQ(12.0, Val(Variant(12)));
    EXPECT_VB_ERROR(94, Val(Variant(Null{})));
}

TEST(VbCInt, RoundsHalvesToEvenAndOverflowsOutside16Bits) {
    EXPECT_EQ(8, CInt(7.5));
    EXPECT_EQ(6, CInt(6.5));
    EXPECT_EQ(-2, CInt(-2.5));
    EXPECT_EQ(3, CInt(2.51));
    EXPECT_EQ(8, CInt("7,5"));
    EXPECT_EQ(2, CInt("2,5"));
    EXPECT_EQ(3, CInt("2,50000000000000000001"));  // decided on the decimal text, not a double
    EXPECT_EQ(0, CInt("0,5"));
    EXPECT_EQ(1, CInt("0,51"));
    EXPECT_EQ(-2, CInt("-1,5"));
    EXPECT_EQ(10, CInt("9,5"));
    EXPECT_EQ(12, CInt(" 12 "));
    EXPECT_EQ(-1, CInt(true));
    EXPECT_EQ(32767, CInt(32767));
    EXPECT_EQ(-32768, CInt(-32768.5));
    EXPECT_EQ(2, CInt(Currency{25000}));
    EXPECT_EQ(4, CInt(Currency{35000}));
    EXPECT_EQ(-4, CInt(Currency{-35000}));
    EXPECT_EQ(0, CInt(Empty{}));
    EXPECT_VB_ERROR(6, CInt(32768));
    EXPECT_VB_ERROR(6, CInt(32767.5));
    EXPECT_VB_ERROR(6, CInt(-32769));
    EXPECT_VB_ERROR(6, CInt("40000"));
    EXPECT_VB_ERROR(6, CInt(std::nan("")));
    EXPECT_VB_ERROR(13, CInt("abc"));
    EXPECT_VB_ERROR(94, CInt(Null{}));

    EXPECT_EQ(32768, CLng(32768));
    EXPECT_EQ(2, CLng(2.5));
    EXPECT_EQ(4, CLng(3.5));
    EXPECT_EQ(2147483647, CLng("2147483647"));
    EXPECT_EQ(INT32_MIN, CLng("-2 147 483 648"));
    EXPECT_VB_ERROR(6, CLng(2147483648.0));
    EXPECT_VB_ERROR(6, CLng("4294967296"));
    EXPECT_VB_ERROR(6, CLng("1e30"));
    EXPECT_VB_ERROR(13, CLng(""));
}

TEST(VbCCur, FourDecimalsAndSingles) {
    EXPECT_EQ(12346, CCur(1.23456).scaled);
    EXPECT_EQ(10000, CCur("1,00005").scaled);
    EXPECT_EQ(10002, CCur("1,00015").scaled);
    EXPECT_EQ(50000, CCur(5).scaled);
    EXPECT_EQ(-10000, CCur(true).scaled);
    EXPECT_EQ(INT64_MAX, CCur("922337203685477,5807").scaled);
    EXPECT_VB_ERROR(6, CCur("922337203685477,5808"));
    EXPECT_VB_ERROR(6, CCur(1e20));
    EXPECT_VB_ERROR(13, CCur("x"));
    EXPECT_EQ(1.5f, CSng("1,5"));
    EXPECT_VB_ERROR(6, CSng(1e300));
}

TEST(VbStr, LeadingBlankAndAPoint) {
    auto str = [](const Variant& v) { return std::get<std::string>(Str(v)); };
    EXPECT_EQ(" 5", str(5));
    EXPECT_EQ("-5", str(-5));
    EXPECT_EQ(" 0", str(0));
    EXPECT_EQ(" 2.5", str(2.5));
    EXPECT_EQ(" .5", str(0.5));
    EXPECT_EQ("-.25", str(-0.25));
    EXPECT_EQ(" 1E+20", str(1e20));
    EXPECT_EQ(" .3", str(0.1 + 0.2));
    EXPECT_EQ(" 7.5", str("7,5"));
    EXPECT_EQ(" 12.5", str(Currency{125000}));
    EXPECT_EQ(" 1.5", str(1.5f));
    EXPECT_EQ("True", str(true));
    EXPECT_EQ("2026.11.22.", str(dt(2026, 11, 22)));
    EXPECT_TRUE(isNull(Str(Null{})));
    EXPECT_VB_ERROR(13, Str("abc"));
}

TEST(VbCBool, NumbersAndWords) {
    EXPECT_TRUE(CBool(1));
    EXPECT_TRUE(CBool(-0.5));
    EXPECT_FALSE(CBool(0));
    EXPECT_FALSE(CBool(0.0));
    EXPECT_TRUE(CBool("True"));
    EXPECT_FALSE(CBool("false"));
    EXPECT_TRUE(CBool(" Igaz "));
    EXPECT_FALSE(CBool("HAMIS"));
    EXPECT_TRUE(CBool("-1"));
    EXPECT_FALSE(CBool("0,0"));
    EXPECT_TRUE(CBool(Currency{1}));
    EXPECT_FALSE(CBool(Empty{}));
    EXPECT_VB_ERROR(13, CBool("igen"));
    EXPECT_VB_ERROR(94, CBool(Null{}));
}

TEST(VbDates, CDateReadsHungarianForms) {
    Date day = dt(2026, 11, 22);
    for (const char* text : {"2026.11.22.", "2026.11.22", "2026. 11. 22.", " 2026-11-22 ", "2026/11/22",
                             "22.11.2026", "26.11.22"}) {
        EXPECT_EQ(day, CDate(text)) << text;
        EXPECT_TRUE(IsDate(text)) << text;
    }
    EXPECT_EQ(dt(2026, 11, 22, 8, 30), CDate("2026.11.22. 8:30"));
    EXPECT_EQ(dt(2026, 11, 22, 8, 30, 15), CDate("2026.11.22 8:30:15"));
    EXPECT_EQ(dt(2026, 11, 22, 8, 30), CDate("2026-11-22T08:30"));
    EXPECT_EQ(dt(1899, 12, 30, 8, 30), CDate("8:30"));
    EXPECT_EQ(dt(1999, 1, 2), CDate("99.01.02"));
    EXPECT_EQ(dt(2024, 2, 29), CDate("2024.02.29."));
    EXPECT_EQ(dt(2000, 1, 1, 12), CDate(36526.5));
    EXPECT_EQ(day, CDate(day));

    for (const char* text : {"", "abc", "2026.02.30.", "2023.02.29.", "2026.13.01", "2026.11.22. 25:00",
                             "7,5", "2026.11", "45000", "2026.11-22", "2026.11.22.8:30", "0026.11.22",
                             "2026.11.22. 8:60", "2026.11.222"}) {
        EXPECT_VB_ERROR(13, CDate(text));
        EXPECT_FALSE(IsDate(text)) << text;
    }
    EXPECT_FALSE(IsDate(36526.5));  // a number is no date for IsDate
    EXPECT_VB_ERROR(94, CDate(Null{}));
    EXPECT_VB_ERROR(6, CDate(1e10));
    EXPECT_VB_ERROR(6, CDate(-657435.0));
}

TEST(VbDates, SerialsCountFromTheDayZeroAndAwayFromItBefore) {
    EXPECT_EQ(0.0, dt(1899, 12, 30).serial);
    EXPECT_EQ(365.0, dt(1900, 12, 30).serial);
    EXPECT_EQ(36526.5, dt(2000, 1, 1, 12).serial);
    EXPECT_EQ(-1.25, dt(1899, 12, 29, 6).serial);
    EXPECT_EQ(-657434.0, dt(100, 1, 1).serial);
    EXPECT_EQ(2958465.0, dt(9999, 12, 31).serial);
    EXPECT_EQ((DateParts{1899, 12, 29, 6, 0, 0, 0}), dateParts(Date{-1.25}));
    EXPECT_EQ((DateParts{1899, 12, 30, 12, 0, 0, 0}), dateParts(Date{-0.5}));
    EXPECT_EQ((DateParts{1909, 2, 20, 8, 9, 36, 0}), dateParts(Date{3339.34}));
    EXPECT_EQ((DateParts{2026, 11, 22, 8, 30, 0, 250}), dateParts(dt(2026, 11, 22, 8, 30, 0, 250)));
    EXPECT_VB_ERROR(5, toDate(DateParts{2026, 2, 29}));
    EXPECT_VB_ERROR(5, toDate(DateParts{2026, 1, 1, 24}));
    EXPECT_VB_ERROR(6, toDate(DateParts{99, 12, 31}));
    EXPECT_VB_ERROR(6, dateParts(Date{2958466.0}));
}

TEST(VbDates, SerialFunctionsRollOverAndPartsSplitToTheSecond) {
    EXPECT_EQ(dt(2027, 1, 1), DateSerial(2026, 13, 1));
    EXPECT_EQ(dt(2026, 2, 28), DateSerial(2026, 3, 0));
    EXPECT_EQ(dt(2025, 12, 31), DateSerial(2026, 1, 0));
    EXPECT_EQ(dt(2025, 11, 1), DateSerial(2026, -1, 1));
    EXPECT_EQ(dt(2026, 3, 1), DateSerial(26, 2, 29));
    EXPECT_EQ(dt(1999, 1, 1), DateSerial(99, 1, 1));
    EXPECT_VB_ERROR(5, DateSerial(10000, 1, 1));
    EXPECT_EQ(dt(1899, 12, 30, 8, 30), TimeSerial(8, 30, 0));
    EXPECT_EQ(dt(1899, 12, 30, 9, 1, 5), TimeSerial(8, 60, 65));
    EXPECT_EQ(dt(1899, 12, 31, 1), TimeSerial(25, 0, 0));
    EXPECT_EQ("8:30:00", CStr(TimeSerial(8, 30, 0)));

    Date t = dt(2026, 11, 22, 23, 59, 59, 600);
    EXPECT_EQ(2026, Year(t));
    EXPECT_EQ(11, Month(t));
    EXPECT_EQ(23, Day(t));  // rounded to the second it is already the next day
    EXPECT_EQ(0, Hour(t));
    EXPECT_EQ(0, Minute(t));
    EXPECT_EQ(0, Second(t));
    EXPECT_EQ(14, Hour("2026.11.22. 14:05:09"));
    EXPECT_EQ(5, Minute("2026.11.22. 14:05:09"));
    EXPECT_EQ(9, Second("2026.11.22. 14:05:09"));
    EXPECT_EQ(1, Weekday(dt(2026, 11, 22)));  // a Sunday
    EXPECT_EQ(7, Weekday(Date{0}));           // 1899-12-30 was a Saturday
    EXPECT_EQ(3, Weekday(dt(2013, 3, 5)));
    EXPECT_EQ(6, Weekday(dt(1800, 1, 3)));    // a Friday, before the day zero
    EXPECT_VB_ERROR(94, Year(Null{}));
    EXPECT_VB_ERROR(13, Month("abc"));
}

TEST(VbErr, ResumeRecordsTheNumberAndGoesOn) {
    Err.Clear();
    EXPECT_FALSE(resume([] { CInt(32768); }));
    EXPECT_EQ(6, Err.Number());
    EXPECT_EQ("Overflow", Err.Description());
    Err.Clear();
    int16_t r = resume([] { return CInt("abc"); }, int16_t{0});
    EXPECT_EQ(0, r);
    EXPECT_EQ(13, Err.Number());
    EXPECT_EQ("Type mismatch", Err.Description());
    Err.Clear();
    EXPECT_EQ(0, Err.Number());
    EXPECT_EQ("", Err.Description());
    EXPECT_TRUE(resume([] { CInt(5); }));
    EXPECT_EQ(0, Err.Number());

    // any numbered error is resumed (the record layer's errors derive from NumberedError)
    struct OtherError : NumberedError {
        OtherError() : NumberedError("Record is deleted.") {}
        int number() const override { return 3167; }
    };
    resume([] { throw OtherError(); });
    EXPECT_EQ(3167, Err.Number());
    EXPECT_EQ("Record is deleted.", Err.Description());
    // other exceptions are no VB errors and pass
    EXPECT_THROW(resume([] { throw std::logic_error("bug"); }), std::logic_error);

    try {
        Err.Raise(5);
        ADD_FAILURE();
    } catch (const VbError& e) {
        EXPECT_EQ(5, e.number());
        EXPECT_EQ(5, numberOf(e));
        EXPECT_STREQ("Invalid procedure call or argument", e.what());
    }
    EXPECT_EQ(5, Err.Number());
    EXPECT_EQ(0, numberOf(std::runtime_error("x")));
    Err.Clear();
}

TEST(VbColors, BgrToRgbAndConstants) {
    static_assert(toRgb(0xFFFF80) == 0x80FFFF);
    EXPECT_EQ(0xFFC0C0u, toRgb(0xC0C0FF));
    EXPECT_EQ(0xFF0000u, toRgb(vbRed));
    EXPECT_EQ(0x0000FFu, toRgb(vbBlue));
    EXPECT_EQ(0xFFFF00u, toRgb(vbYellow));
    EXPECT_EQ(0xFFFF80, fromRgb(0x80FFFF));
    EXPECT_EQ(0x123456, fromRgb(toRgb(0x123456)));
    EXPECT_EQ(vbRed, RGB(255, 0, 0));
    EXPECT_EQ(vbRed, RGB(300, 0, -4));
    EXPECT_TRUE(isSystemColor(vbButtonFace));
    EXPECT_EQ(0xD4D0C8u, toRgb(vbButtonFace));
    EXPECT_EQ(0xFFFFE1u, toRgb(vbInfoBackground));
    EXPECT_EQ(0u, toRgb(systemColor(99)));
    EXPECT_EQ(292, vbYesNo + vbQuestion + vbDefaultButton2);
    EXPECT_EQ(6, vbYes);
    EXPECT_EQ(7, vbNo);
    EXPECT_EQ("\r\n", vbCrLf);
}

// The machine's locale must not matter. Machines often have only C and C.UTF-8, so the test
// compiles a German locale (decimal comma, "." grouping) and a US one into a temporary folder when
// localedef is there (kept in the temp folder for the next runs: compiling one takes seconds), and
// converts under each of them as the C and the C++ global locale.
TEST(VbLocale, ConversionsIgnoreTheMachineLocale) {
    namespace fs = std::filesystem;
    fs::path dir = fs::temp_directory_path() / "kerova-test-locales";
    std::vector<std::string> names = {"C", "C.UTF-8"};
    for (auto [source, name] : {std::pair{"de_DE", "de_DE.UTF-8"}, std::pair{"en_US", "en_US.UTF-8"}}) {
        if (!fs::exists(dir / name / "LC_NUMERIC")) {
            fs::create_directories(dir);
            testsupport::run({"localedef", "-i", source, "-f", "UTF-8", (dir / name).string()});
        }
        if (fs::exists(dir / name / "LC_NUMERIC")) names.push_back(name);
    }
    const char* oldPath = std::getenv("LOCPATH");
    const char* oldAll = std::getenv("LC_ALL");
    std::string savedPath = oldPath ? oldPath : "", savedAll = oldAll ? oldAll : "";
    std::string saved = std::setlocale(LC_ALL, nullptr);
    setenv("LOCPATH", dir.c_str(), 1);
    int tried = 0;
    for (const auto& name : names) {
        setenv("LC_ALL", name.c_str(), 1);
        if (!std::setlocale(LC_ALL, name.c_str())) continue;
        std::locale::global(std::locale(""));
        ++tried;
        SCOPED_TRACE(name);
        if (name == "de_DE.UTF-8") {
            ASSERT_EQ(',', *std::localeconv()->decimal_point);  // the trap is set
        }
        EXPECT_EQ("9", CStr(9.0));
        EXPECT_EQ("0,3", CStr(0.1 + 0.2));
        EXPECT_EQ("1234567,25", CStr(1234567.25));
        EXPECT_EQ("1E+20", CStr(1e20));
        EXPECT_EQ("1,5", CStr(1.5f));
        EXPECT_EQ("2026.11.22. 8:30:00", CStr(dt(2026, 11, 22, 8, 30)));
        EXPECT_EQ(7.5, CDbl("7,5"));
        EXPECT_VB_ERROR(13, CDbl("7.5"));
        EXPECT_VB_ERROR(13, CDbl("1.234,5"));
        EXPECT_EQ(7.0, Val("7,5"));
        EXPECT_EQ(7.5, Val("7.5"));
        EXPECT_EQ(" 2.5", std::get<std::string>(Str(2.5)));
        EXPECT_EQ(8, CInt("7,5"));
        EXPECT_EQ(dt(2026, 11, 22), CDate("2026.11.22."));
    }
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, saved.c_str());
    oldPath ? setenv("LOCPATH", savedPath.c_str(), 1) : unsetenv("LOCPATH");
    oldAll ? setenv("LC_ALL", savedAll.c_str(), 1) : unsetenv("LC_ALL");
    EXPECT_EQ(static_cast<int>(names.size()), tried);
}
