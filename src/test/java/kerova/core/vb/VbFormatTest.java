package kerova.core.vb;

import static kerova.core.vb.VbFormat.Format;
import static org.assertj.core.api.Assertions.assertThat;

import java.math.BigDecimal;
import java.time.LocalDateTime;
import org.junit.jupiter.api.Test;

class VbFormatTest {

    private static final LocalDateTime TRIP = LocalDateTime.of(2013, 3, 5, 8, 30, 0);

    @Test
    void noMaskIsCStr() {
        assertThat(Format(8.3)).isEqualTo("8,3");
        assertThat(Format(8.3, "")).isEqualTo("8,3");
        assertThat(Format(12, null)).isEqualTo("12");
        assertThat(Format(TRIP)).isEqualTo("2013.03.05. 8:30:00");
        assertThat(Format(null)).isEqualTo("");
        assertThat(Format("szöveg")).isEqualTo("szöveg");
    }

    @Test
    void theMaskPointIsTheHungarianDecimalComma() {
        assertThat(Format(8.3, "00.00")).isEqualTo("08,30");
        assertThat(Format(16.45, "00.00")).isEqualTo("16,45");
        assertThat(Format(9.5, "00.00")).isEqualTo("09,50");
        assertThat(Format(8.3f, "00.00")).isEqualTo("08,30");
        assertThat(Format(new BigDecimal("8.3"), "00.00")).isEqualTo("08,30");
        assertThat(Format(7, "00.00")).isEqualTo("07,00");
        assertThat(Format(123.456, "00.00")).isEqualTo("123,46");
    }

    @Test
    void theFourSectionsOfTheArrivalMask() {
        String mask = "00.00;0;0;0";
        assertThat(Format(8.3, mask)).isEqualTo("08,30");
        assertThat(Format(0, mask)).isEqualTo("0");
        assertThat(Format(0.0, mask)).isEqualTo("0");
        assertThat(Format(null, mask)).isEqualTo("0");
        assertThat(Format(-8.3, mask)).isEqualTo("8"); // the negative section prints no sign
    }

    @Test
    void sections() {
        assertThat(Format(-0.4, "0;(0)")).isEqualTo("(0)");
        assertThat(Format(-5, "0;(0)")).isEqualTo("(5)");
        assertThat(Format(0, "0.00;;\"nulla\"")).isEqualTo("nulla");
        assertThat(Format(-5, "0;;x")).isEqualTo("-5"); // an empty section falls back on the first
        assertThat(Format(null, "0.00")).isEqualTo("");
        assertThat(Format(null, "0;0;0;\"nincs\"")).isEqualTo("nincs");
        assertThat(Format(-8.3, "00.00")).isEqualTo("-08,30");
    }

    @Test
    void roundingIsHalfAwayFromZeroOnTheDecimalValue() {
        assertThat(Format(2.5, "0")).isEqualTo("3");
        assertThat(Format(-2.5, "0")).isEqualTo("-3");
        assertThat(Format(0.125, "0.00")).isEqualTo("0,13");
        assertThat(Format(1.005, "0.00")).isEqualTo("1,01");
        assertThat(Format(8.305, "00.00")).isEqualTo("08,31");
    }

    @Test
    void hashPlaceholdersAndTheDecimalSeparator() {
        assertThat(Format(0.5, "#.00")).isEqualTo(",50");
        assertThat(Format(8, "#.##")).isEqualTo("8,"); // VB keeps the separator
        assertThat(Format(8.5, "#.##")).isEqualTo("8,5");
        assertThat(Format(0, "#")).isEqualTo("");
        assertThat(Format(12345, "0")).isEqualTo("12345");
        assertThat(Format(12345, "00")).isEqualTo("12345");
        assertThat(Format(5, "000")).isEqualTo("005");
        assertThat(Format(5, "#0#")).isEqualTo("05");
    }

    @Test
    void groupingScalingPercentAndScientific() {
        assertThat(Format(1234.5, "#,##0.00")).isEqualTo("1 234,50");
        assertThat(Format(1234567.891, "#,##0.00")).isEqualTo("1 234 567,89");
        assertThat(Format(999, "#,##0")).isEqualTo("999");
        assertThat(Format(-1234567, "#,##0")).isEqualTo("-1 234 567");
        assertThat(Format(1234567, "0,")).isEqualTo("1235");
        assertThat(Format(0.1234, "0.0%")).isEqualTo("12,3%");
        assertThat(Format(1234.5, "0.00E+00")).isEqualTo("1,23E+03");
        assertThat(Format(0.000123, "0.0E-00")).isEqualTo("1,2E-04");
        assertThat(Format(9.999, "0.00E+00")).isEqualTo("1,00E+01");
    }

    @Test
    void literals() {
        assertThat(Format(5, "\"Összesen: \"0")).isEqualTo("Összesen: 5");
        assertThat(Format(5, "0 \\k\\m")).isEqualTo("5 km");
        assertThat(Format(1234.5, "#,##0.00 \"Ft\"")).isEqualTo("1 234,50 Ft");
        assertThat(Format(-5, "$0")).isEqualTo("-$5");
    }

    @Test
    void namedNumberFormats() {
        assertThat(Format(1234.5, "Currency")).isEqualTo("1 234,50 Ft");
        assertThat(Format(-1234.5, "currency")).isEqualTo("-1 234,50 Ft");
        assertThat(Format(new BigDecimal("1234.5"), "Currency")).isEqualTo("1 234,50 Ft");
        assertThat(Format(1234.5, "Fixed")).isEqualTo("1234,50");
        assertThat(Format(1234.5, "Standard")).isEqualTo("1 234,50");
        assertThat(Format(1234.5, "General Number")).isEqualTo("1234,5");
        assertThat(Format(0.1234, "Percent")).isEqualTo("12,34%");
        assertThat(Format(1234.5, "Scientific")).isEqualTo("1,23E+03");
        assertThat(Format(0, "Yes/No")).isEqualTo("No");
        assertThat(Format(true, "True/False")).isEqualTo("True");
        assertThat(Format(null, "Currency")).isEqualTo("");
    }

    @Test
    void dateMasks() {
        assertThat(Format(TRIP, "YYYY/MM/DD HH:NN:SS")).isEqualTo("2013.03.05 08:30:00");
        assertThat(Format(TRIP, "yyyy/mm/dd hh:nn:ss")).isEqualTo("2013.03.05 08:30:00");
        assertThat(Format(TRIP, "yyyy.mm.dd")).isEqualTo("2013.03.05");
        assertThat(Format(TRIP, "d/m/yy")).isEqualTo("5.3.13");
        assertThat(Format(TRIP, "hh:mm")).isEqualTo("08:30"); // m after h is the minute
        assertThat(Format(TRIP, "h:n:s")).isEqualTo("8:30:0");
        assertThat(Format(TRIP, "mmmm")).isEqualTo("március");
        assertThat(Format(TRIP, "mmm")).isEqualTo("márc.");
        assertThat(Format(TRIP, "dddd")).isEqualTo("kedd");
        assertThat(Format(TRIP, "ddd")).isEqualTo("K");
        assertThat(Format(TRIP, "q")).isEqualTo("1");
        assertThat(Format(TRIP, "w")).isEqualTo("3");
        assertThat(Format(TRIP, "y")).isEqualTo("64");
        assertThat(Format(TRIP, "h:nn AM/PM")).isEqualTo("8:30 AM");
        assertThat(Format(TRIP.plusHours(12), "hh:nn am/pm")).isEqualTo("08:30 pm");
        assertThat(Format(TRIP.plusHours(12), "h:nn AMPM")).isEqualTo("8:30 du.");
        assertThat(Format(TRIP, "\"Nap: \"dd")).isEqualTo("Nap: 05");
        assertThat(Format(TRIP, "ddddd")).isEqualTo("2013.03.05.");
        assertThat(Format(TRIP, "ttttt")).isEqualTo("8:30:00");
    }

    @Test
    void namedDateFormats() {
        assertThat(Format(TRIP, "Short Date")).isEqualTo("2013.03.05.");
        assertThat(Format(TRIP, "Long Date")).isEqualTo("2013. március 5.");
        assertThat(Format(TRIP, "Medium Date")).isEqualTo("05-márc.-13");
        assertThat(Format(TRIP, "Short Time")).isEqualTo("08:30");
        assertThat(Format(TRIP, "Long Time")).isEqualTo("8:30:00");
        assertThat(Format(TRIP, "Medium Time")).isEqualTo("08:30 de.");
        assertThat(Format(TRIP, "General Date")).isEqualTo("2013.03.05. 8:30:00");
        assertThat(Format(LocalDateTime.of(2013, 3, 5, 0, 0), "General Date")).isEqualTo("2013.03.05.");
    }

    @Test
    void numbersAndDatesCrossOver() {
        assertThat(Format(0.5, "hh:nn")).isEqualTo("12:00"); // a number under a date mask is a date
        assertThat(Format(41338.0, "yyyy.mm.dd")).isEqualTo("2013.03.05");
        assertThat(Format(LocalDateTime.of(2013, 3, 5, 12, 0), "0.0")).isEqualTo("41338,5");
        assertThat(Format(true, "0")).isEqualTo("-1");
    }

    @Test
    void textValues() {
        assertThat(Format("8,3", "00.00")).isEqualTo("08,30");
        assertThat(Format("abc", "00.00")).isEqualTo("abc");
        assertThat(Format("2013.03.05.", "yyyy/mm/dd")).isEqualTo("2013.03.05");
        assertThat(Format("abc", ">@@@@@")).isEqualTo("  ABC");
        assertThat(Format("abc", "!@@@@@")).isEqualTo("abc  ");
        assertThat(Format("abcdef", "@@-@@")).isEqualTo("abcd-ef");
    }
}
