package kerova.core.vb;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.math.BigDecimal;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.util.Locale;
import org.assertj.core.api.ThrowableAssert.ThrowingCallable;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Nested;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** VB6 conversions under the Hungarian locale, run with other JVM default locales. */
class ConvTest {
    private static Locale saved;

    @BeforeAll
    static void foreignLocale() {
        saved = Locale.getDefault();
        Locale.setDefault(Locale.US);
    }

    @AfterAll
    static void restoreLocale() {
        Locale.setDefault(saved);
    }

    static void assertVbError(int number, ThrowingCallable call) {
        assertThatThrownBy(call).isInstanceOf(VbException.class)
                .satisfies(e -> assertThat(((VbException) e).getNumber()).isEqualTo(number));
    }

    // ---------------------------------------------------------------------------------------------
    // CStr

    @Test
    void cstrNumbersUseDecimalCommaAnd15Digits() {
        assertThat(Conv.CStr(9.0)).isEqualTo("9");
        assertThat(Conv.CStr(0.1 + 0.2)).isEqualTo("0,3");
        assertThat(Conv.CStr(2.5)).isEqualTo("2,5");
        assertThat(Conv.CStr(-2.5)).isEqualTo("-2,5");
        assertThat(Conv.CStr(0.5)).isEqualTo("0,5");
        assertThat(Conv.CStr(1234567.25)).isEqualTo("1234567,25");
        assertThat(Conv.CStr(Math.PI)).isEqualTo("3,14159265358979");
        assertThat(Conv.CStr(12.345678901234567)).isEqualTo("12,3456789012346");
        assertThat(Conv.CStr(999999999999999.0)).isEqualTo("999999999999999");
        assertThat(Conv.CStr(0.0)).isEqualTo("0");
        assertThat(Conv.CStr(-0.0)).isEqualTo("0");
        assertThat(Conv.CStr(100.0)).isEqualTo("100");
        assertThat(Conv.CStr(0.0001)).isEqualTo("0,0001");
    }

    @Test
    void cstrScientificAsVb() {
        assertThat(Conv.CStr(1e20)).isEqualTo("1E+20");
        assertThat(Conv.CStr(1e15)).isEqualTo("1E+15");
        assertThat(Conv.CStr(1.234e16)).isEqualTo("1,234E+16");
        assertThat(Conv.CStr(-1.5e300)).isEqualTo("-1,5E+300");
        assertThat(Conv.CStr(0.00001)).isEqualTo("1E-05");
        assertThat(Conv.CStr(5.6789e-12)).isEqualTo("5,6789E-12");
        assertThat(Conv.CStr(1.0 / 3000000)).isEqualTo("3,33333333333333E-07");
        assertThat(Conv.CStr(1234567890123456.0)).isEqualTo("1,23456789012346E+15");
    }

    @Test
    void cstrOtherTypes() {
        assertThat(Conv.CStr(1.5f)).isEqualTo("1,5");
        assertThat(Conv.CStr(0.1f)).isEqualTo("0,1");
        assertThat(Conv.CStr(3.1415927f)).isEqualTo("3,141593");
        assertThat(Conv.CStr((short) -42)).isEqualTo("-42");
        assertThat(Conv.CStr(2147483647)).isEqualTo("2147483647");
        assertThat(Conv.CStr((byte) -1)).isEqualTo("255");
        assertThat(Conv.CStr(new BigDecimal("12.5000"))).isEqualTo("12,5");
        assertThat(Conv.CStr(new BigDecimal("100.0000"))).isEqualTo("100");
        assertThat(Conv.CStr(true)).isEqualTo("True");
        assertThat(Conv.CStr(false)).isEqualTo("False");
        assertThat(Conv.CStr("szöveg")).isEqualTo("szöveg");
    }

    @Test
    void cstrDates() {
        assertThat(Conv.CStr(LocalDateTime.of(2026, 11, 22, 0, 0))).isEqualTo("2026.11.22.");
        assertThat(Conv.CStr(LocalDateTime.of(2026, 11, 22, 8, 30))).isEqualTo("2026.11.22. 8:30:00");
        assertThat(Conv.CStr(LocalDateTime.of(2026, 1, 5, 14, 5, 9))).isEqualTo("2026.01.05. 14:05:09");
        assertThat(Conv.CStr(LocalDateTime.of(1899, 12, 30, 8, 30))).isEqualTo("8:30:00");
        assertThat(Conv.CStr(Conv.DATE_ZERO)).isEqualTo("0:00:00");
        assertThat(Conv.CStr(LocalDate.of(2026, 11, 22))).isEqualTo("2026.11.22.");
        assertThat(Conv.dateText(LocalDateTime.of(2026, 11, 22, 8, 30))).isEqualTo("2026.11.22.");
        assertThat(Conv.timeText(LocalDateTime.of(2026, 11, 22, 8, 30))).isEqualTo("8:30:00");
    }

    @Test
    void cstrNullIsError94() {
        assertVbError(94, () -> Conv.CStr(null));
    }

    // ---------------------------------------------------------------------------------------------
    // CDbl and IsNumeric

    @Test
    void cdblReadsTheDecimalComma() {
        assertThat(Conv.CDbl("7,5")).isEqualTo(7.5);
        assertThat(Conv.CDbl("  7,5  ")).isEqualTo(7.5);
        assertThat(Conv.CDbl("-12")).isEqualTo(-12.0);
        assertThat(Conv.CDbl("+3")).isEqualTo(3.0);
        assertThat(Conv.CDbl(",5")).isEqualTo(0.5);
        assertThat(Conv.CDbl("1 234,5")).isEqualTo(1234.5);
        assertThat(Conv.CDbl("1\u00A0234")).isEqualTo(1234.0);
        assertThat(Conv.CDbl("2,5E3")).isEqualTo(2500.0);
        assertThat(Conv.CDbl("1e-2")).isEqualTo(0.01);
        assertThat(Conv.CDbl("5-")).isEqualTo(-5.0);
        assertThat(Conv.CDbl("(5)")).isEqualTo(-5.0);
        assertThat(Conv.CDbl("&H1F")).isEqualTo(31.0);
        assertThat(Conv.CDbl("&HFFFF")).isEqualTo(-1.0);
        assertThat(Conv.CDbl("&O17")).isEqualTo(15.0);
        assertThat(Conv.CDbl("0,1")).isEqualTo(0.1);
    }

    @Test
    void cdblOfOtherTypes() {
        assertThat(Conv.CDbl(7)).isEqualTo(7.0);
        assertThat(Conv.CDbl((short) 7)).isEqualTo(7.0);
        assertThat(Conv.CDbl(new BigDecimal("1.25"))).isEqualTo(1.25);
        assertThat(Conv.CDbl(true)).isEqualTo(-1.0);
        assertThat(Conv.CDbl(false)).isEqualTo(0.0);
        assertThat(Conv.CDbl(LocalDateTime.of(2000, 1, 1, 12, 0))).isEqualTo(36526.5);
    }

    @ParameterizedTest
    @ValueSource(strings = {"", "   ", "abc", "7.5", "12 ab", "1,2,3", "--5", "e5", "&H", "&HG", "5 -", "1  2"})
    void cdblOfANonNumberIsTypeMismatch(String text) {
        assertVbError(13, () -> Conv.CDbl(text));
        assertThat(Conv.isNumeric(text)).isFalse();
    }

    @Test
    void cdblErrors() {
        assertVbError(94, () -> Conv.CDbl(null));
        assertVbError(6, () -> Conv.CDbl("1e400"));
        assertVbError(13, () -> Conv.CDbl(new Object()));
    }

    @Test
    void isNumericAsVbUnderHungarianLocale() {
        assertThat(Conv.isNumeric("7,5")).isTrue();
        assertThat(Conv.isNumeric(" 12 ")).isTrue();
        assertThat(Conv.isNumeric("&H1F")).isTrue();
        assertThat(Conv.isNumeric("1E3")).isTrue();
        assertThat(Conv.isNumeric(3.5)).isTrue();
        assertThat(Conv.isNumeric(true)).isTrue();
        assertThat(Conv.isNumeric(null)).isFalse();
        assertThat(Conv.isNumeric(LocalDateTime.of(2026, 1, 1, 0, 0))).isFalse();
        assertThat(Conv.isNumeric("1e400")).isFalse();
    }

    // ---------------------------------------------------------------------------------------------
    // Val

    @Test
    void valReadsANumericPrefixWithAPoint() {
        assertThat(Conv.Val("7,5")).isEqualTo(7.0);
        assertThat(Conv.Val("7.5")).isEqualTo(7.5);
        assertThat(Conv.Val("abc")).isEqualTo(0.0);
        assertThat(Conv.Val(" 12 ab")).isEqualTo(12.0);
        assertThat(Conv.Val("")).isEqualTo(0.0);
        assertThat(Conv.Val("  -3.25xyz")).isEqualTo(-3.25);
        assertThat(Conv.Val("1 615 198th Street")).isEqualTo(1615198.0);
        assertThat(Conv.Val(".5")).isEqualTo(0.5);
        assertThat(Conv.Val("1.2.3")).isEqualTo(1.2);
        assertThat(Conv.Val("1e3")).isEqualTo(1000.0);
        assertThat(Conv.Val("1.5D2")).isEqualTo(150.0);
        assertThat(Conv.Val("2e")).isEqualTo(2.0);
        assertThat(Conv.Val("8,30")).isEqualTo(8.0);
        assertThat(Conv.Val("-")).isEqualTo(0.0);
    }

    @Test
    void valHexAndOctal() {
        assertThat(Conv.Val("&HFF")).isEqualTo(255.0);
        assertThat(Conv.Val("&HFFFF")).isEqualTo(-1.0);
        assertThat(Conv.Val("&HFFFF&")).isEqualTo(65535.0);
        assertThat(Conv.Val("&H10000")).isEqualTo(65536.0);
        assertThat(Conv.Val("&O17")).isEqualTo(15.0);
        assertThat(Conv.Val("&H")).isEqualTo(0.0);
    }

    @Test
    void valOfANumberGoesThroughCStr() {
        // VB passes a number to Val's String parameter by CStr: "7,5" on a Hungarian Windows.
        assertThat(Conv.Val(7.5)).isEqualTo(7.0);
        assertThat(Conv.Val(12)).isEqualTo(12.0);
        assertVbError(94, () -> Conv.Val(null));
    }

    // ---------------------------------------------------------------------------------------------
    // CInt, CLng, CCur, CSng

    @Test
    void cintRoundsHalvesToEven() {
        assertThat(Conv.CInt(7.5)).isEqualTo((short) 8);
        assertThat(Conv.CInt(6.5)).isEqualTo((short) 6);
        assertThat(Conv.CInt(-2.5)).isEqualTo((short) -2);
        assertThat(Conv.CInt(2.51)).isEqualTo((short) 3);
        assertThat(Conv.CInt("7,5")).isEqualTo((short) 8);
        assertThat(Conv.CInt("2,5")).isEqualTo((short) 2);
        assertThat(Conv.CInt(" 12 ")).isEqualTo((short) 12);
        assertThat(Conv.CInt(true)).isEqualTo((short) -1);
        assertThat(Conv.CInt(32767)).isEqualTo((short) 32767);
        assertThat(Conv.CInt(-32768.5)).isEqualTo((short) -32768);
    }

    @Test
    void cintOverflowsOutside16Bits() {
        assertVbError(6, () -> Conv.CInt(32768));
        assertVbError(6, () -> Conv.CInt(32767.5));
        assertVbError(6, () -> Conv.CInt(-32769));
        assertVbError(6, () -> Conv.CInt("40000"));
        assertVbError(13, () -> Conv.CInt("abc"));
        assertVbError(94, () -> Conv.CInt(null));
    }

    @Test
    void clngIs32Bit() {
        assertThat(Conv.CLng(32768)).isEqualTo(32768);
        assertThat(Conv.CLng(2.5)).isEqualTo(2);
        assertThat(Conv.CLng(3.5)).isEqualTo(4);
        assertThat(Conv.CLng("2147483647")).isEqualTo(2147483647);
        assertThat(Conv.CLng("-2 147 483 648")).isEqualTo(-2147483648);
        assertVbError(6, () -> Conv.CLng(2147483648.0));
        assertVbError(6, () -> Conv.CLng("4294967296"));
        assertVbError(13, () -> Conv.CLng(""));
    }

    @Test
    void ccurAndCsng() {
        assertThat(Conv.CCur(1.23456)).isEqualByComparingTo("1.2346");
        assertThat(Conv.CCur("1,00005")).isEqualByComparingTo("1.0000");
        assertThat(Conv.CCur("1,00015")).isEqualByComparingTo("1.0002");
        assertThat(Conv.CCur(5)).isEqualByComparingTo("5");
        assertVbError(6, () -> Conv.CCur(1e20));
        assertThat(Conv.CSng("1,5")).isEqualTo(1.5f);
        assertVbError(6, () -> Conv.CSng(1e300));
    }

    // ---------------------------------------------------------------------------------------------
    // Str

    @Test
    void strHasTheLeadingBlankAndAPoint() {
        assertThat(Conv.Str(5)).isEqualTo(" 5");
        assertThat(Conv.Str(-5)).isEqualTo("-5");
        assertThat(Conv.Str(0)).isEqualTo(" 0");
        assertThat(Conv.Str(2.5)).isEqualTo(" 2.5");
        assertThat(Conv.Str(-2.5)).isEqualTo("-2.5");
        assertThat(Conv.Str(0.5)).isEqualTo(" .5");
        assertThat(Conv.Str(-0.25)).isEqualTo("-.25");
        assertThat(Conv.Str(1e20)).isEqualTo(" 1E+20");
        assertThat(Conv.Str(0.1 + 0.2)).isEqualTo(" .3");
        assertThat(Conv.Str("7,5")).isEqualTo(" 7.5");
        assertThat(Conv.Str(new BigDecimal("12.50"))).isEqualTo(" 12.5");
        assertThat(Conv.Str(null)).isNull();
        assertThat(Conv.Str(LocalDateTime.of(2026, 11, 22, 0, 0))).isEqualTo("2026.11.22.");
        assertVbError(13, () -> Conv.Str("abc"));
    }

    // ---------------------------------------------------------------------------------------------
    // CDate, dates as numbers

    @Test
    void cdateReadsHungarianForms() {
        LocalDateTime day = LocalDateTime.of(2026, 11, 22, 0, 0);
        assertThat(Conv.CDate("2026.11.22.")).isEqualTo(day);
        assertThat(Conv.CDate("2026.11.22")).isEqualTo(day);
        assertThat(Conv.CDate("2026. 11. 22.")).isEqualTo(day);
        assertThat(Conv.CDate(" 2026-11-22 ")).isEqualTo(day);
        assertThat(Conv.CDate("2026/11/22")).isEqualTo(day);
        assertThat(Conv.CDate("22.11.2026")).isEqualTo(day);
        assertThat(Conv.CDate("26.11.22")).isEqualTo(day);
        assertThat(Conv.CDate("2026.11.22. 8:30")).isEqualTo(day.withHour(8).withMinute(30));
        assertThat(Conv.CDate("2026.11.22 8:30:15")).isEqualTo(LocalDateTime.of(2026, 11, 22, 8, 30, 15));
        assertThat(Conv.CDate("8:30")).isEqualTo(LocalDateTime.of(1899, 12, 30, 8, 30));
        assertThat(Conv.CDate(day)).isSameAs(day);
        assertThat(Conv.CDate(36526.5)).isEqualTo(LocalDateTime.of(2000, 1, 1, 12, 0));
        assertThat(Conv.isDate("2026.11.22.")).isTrue();
        assertThat(Conv.isDate("2026.13.22.")).isFalse();
    }

    @ParameterizedTest
    @ValueSource(strings = {"", "abc", "2026.02.30.", "2026.13.01", "2026.11.22. 25:00", "7,5", "2026.11", "45000"})
    void cdateOfANonDateIsTypeMismatch(String text) {
        assertVbError(13, () -> Conv.CDate(text));
    }

    @Test
    void cdateErrors() {
        assertVbError(94, () -> Conv.CDate(null));
        assertVbError(6, () -> Conv.CDate(1e10));
    }

    @Test
    void oleAutomationDates() {
        assertThat(Conv.toOADate(Conv.DATE_ZERO)).isEqualTo(0.0);
        assertThat(Conv.toOADate(LocalDateTime.of(1900, 12, 30, 0, 0))).isEqualTo(365.0);
        assertThat(Conv.toOADate(LocalDateTime.of(2000, 1, 1, 12, 0))).isEqualTo(36526.5);
        assertThat(Conv.toOADate(LocalDateTime.of(1899, 12, 29, 6, 0))).isEqualTo(-1.25);
        assertThat(Conv.fromOADate(-1.25)).isEqualTo(LocalDateTime.of(1899, 12, 29, 6, 0));
        assertThat(Conv.fromOADate(-0.5)).isEqualTo(LocalDateTime.of(1899, 12, 30, 12, 0));
        assertThat(Conv.fromOADate(3339.34)).isEqualTo(LocalDateTime.of(1909, 2, 20, 8, 9, 36));
        LocalDateTime t = LocalDateTime.of(2026, 11, 22, 8, 30);
        assertThat(Conv.fromOADate(Conv.toOADate(t))).isEqualTo(t);
        assertThat(Conv.CStr(Conv.fromOADate(Conv.toOADate(t)))).isEqualTo("2026.11.22. 8:30:00");
    }

    // ---------------------------------------------------------------------------------------------
    // CBool

    @Test
    void cbool() {
        assertThat(Conv.CBool(1)).isTrue();
        assertThat(Conv.CBool(-0.5)).isTrue();
        assertThat(Conv.CBool(0)).isFalse();
        assertThat(Conv.CBool(0.0)).isFalse();
        assertThat(Conv.CBool("True")).isTrue();
        assertThat(Conv.CBool("false")).isFalse();
        assertThat(Conv.CBool("Igaz")).isTrue();
        assertThat(Conv.CBool("HAMIS")).isFalse();
        assertThat(Conv.CBool("-1")).isTrue();
        assertThat(Conv.CBool("0,0")).isFalse();
        assertThat(Conv.CBool(true)).isTrue();
        assertVbError(13, () -> Conv.CBool("igen"));
        assertVbError(94, () -> Conv.CBool(null));
    }

    // ---------------------------------------------------------------------------------------------
    // Err

    @Test
    void errResumeRecordsTheNumber() {
        Err.Clear();
        Err.resume(() -> Conv.CInt(32768));
        assertThat(Err.Number()).isEqualTo(6);
        assertThat(Err.Description()).isEqualTo("Overflow");
        Err.Clear();
        short r = Err.resume(() -> Conv.CInt("abc"), (short) 0);
        assertThat(r).isZero();
        assertThat(Err.Number()).isEqualTo(13);
        Err.Clear();
        assertThat(Err.Number()).isZero();
    }

    // ---------------------------------------------------------------------------------------------
    // Colours

    @Test
    void colours() {
        assertThat(VbColor.toRgb(0xFFFF80)).isEqualTo(0x80FFFF);
        assertThat(VbColor.toRgb(0xC0C0FF)).isEqualTo(0xFFC0C0);
        assertThat(VbColor.toRgb(VbConst.vbRed)).isEqualTo(0xFF0000);
        assertThat(VbColor.toRgb(VbConst.vbBlue)).isEqualTo(0x0000FF);
        assertThat(VbColor.fromRgb(0x80FFFF)).isEqualTo(0xFFFF80);
        assertThat(VbColor.fromRgb(VbColor.toRgb(0x123456))).isEqualTo(0x123456);
        assertThat(VbColor.RGB(255, 0, 0)).isEqualTo(VbConst.vbRed);
        assertThat(VbColor.RGB(300, 0, 0)).isEqualTo(VbConst.vbRed);
        assertThat(VbColor.toRgb(VbConst.vbButtonFace)).isEqualTo(0xD4D0C8);
        assertThat(VbColor.toRgb(VbConst.vbYellow)).isEqualTo(0xFFFF00);
    }

    @Test
    void constants() {
        assertThat(VbConst.vbYesNo + VbConst.vbQuestion + VbConst.vbDefaultButton2).isEqualTo(292);
        assertThat(VbConst.vbYes).isEqualTo(6);
        assertThat(VbConst.vbNo).isEqualTo(7);
        assertThat(VbConst.vbHourglass).isEqualTo(11);
        assertThat(VbConst.vbKeyReturn).isEqualTo(13);
        assertThat(VbConst.vbWhite).isEqualTo(0xFFFFFF);
    }

    // ---------------------------------------------------------------------------------------------
    // The same results under other default locales

    abstract class UnderLocale {
        private Locale before;

        abstract Locale locale();

        @BeforeEach
        void set() {
            before = Locale.getDefault();
            Locale.setDefault(locale());
        }

        @AfterEach
        void restore() {
            Locale.setDefault(before);
        }

        @Test
        void conversionsDontFollowTheJvmLocale() {
            assertThat(Conv.CStr(9.0)).isEqualTo("9");
            assertThat(Conv.CStr(0.1 + 0.2)).isEqualTo("0,3");
            assertThat(Conv.CStr(2.5)).isEqualTo("2,5");
            assertThat(Conv.CStr(1234567.25)).isEqualTo("1234567,25");
            assertThat(Conv.CStr(1e20)).isEqualTo("1E+20");
            assertThat(Conv.CStr(1.5f)).isEqualTo("1,5");
            assertThat(Conv.CStr(new BigDecimal("1.5"))).isEqualTo("1,5");
            assertThat(Conv.CStr(LocalDateTime.of(2026, 11, 22, 8, 30))).isEqualTo("2026.11.22. 8:30:00");
            assertThat(Conv.dateText(LocalDateTime.of(2026, 11, 22, 0, 0))).isEqualTo("2026.11.22.");
            assertThat(Conv.CDbl("7,5")).isEqualTo(7.5);
            assertVbError(13, () -> Conv.CDbl("7.5"));
            assertVbError(13, () -> Conv.CDbl("1,234.5"));
            assertThat(Conv.Val("7,5")).isEqualTo(7.0);
            assertThat(Conv.Val("7.5")).isEqualTo(7.5);
            assertThat(Conv.Str(2.5)).isEqualTo(" 2.5");
            assertThat(Conv.CInt("7,5")).isEqualTo((short) 8);
            assertThat(Conv.CDate("2026.11.22.")).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
            assertThat(Conv.CBool("Igaz")).isTrue();
            assertThat(Conv.CStr(true)).isEqualTo("True");
        }
    }

    @Nested
    class UnderUs extends UnderLocale {
        @Override
        Locale locale() {
            return Locale.US;
        }
    }

    @Nested
    class UnderGermany extends UnderLocale {
        @Override
        Locale locale() {
            return Locale.GERMANY;
        }
    }

    @Nested
    class UnderFrance extends UnderLocale {
        @Override
        Locale locale() {
            return Locale.FRANCE;
        }
    }

    @Nested
    class UnderHungary extends UnderLocale {
        @Override
        Locale locale() {
            return Locale.forLanguageTag("hu-HU");
        }
    }
}
