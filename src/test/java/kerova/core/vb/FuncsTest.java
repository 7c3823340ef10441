package kerova.core.vb;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.math.BigDecimal;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.util.Locale;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;

/** Module Funcs (Part 1.1) and VbClock, with a JVM default locale other than Hungarian. */
class FuncsTest {
    private static Locale saved;

    @BeforeAll
    static void foreignLocale() {
        saved = Locale.getDefault();
        Locale.setDefault(Locale.GERMANY);
    }

    @AfterAll
    static void restoreLocale() {
        Locale.setDefault(saved);
    }

    @AfterEach
    void systemClock() {
        VbClock.reset();
        Err.Clear();
    }

    private static void assertVbError(int number, org.assertj.core.api.ThrowableAssert.ThrowingCallable call) {
        assertThatThrownBy(call).isInstanceOf(VbException.class)
                .satisfies(e -> assertThat(((VbException) e).getNumber()).isEqualTo(number));
    }

    // NullToNum

    @Test
    void nullToNumOfNullIsTheInteger0() {
        assertThat(Funcs.NullToNum(null)).isEqualTo(0).isInstanceOf(Integer.class);
        assertThat(Funcs.nullToDouble(null)).isZero();
    }

    @Test
    void nullToNumOfAValueIsADouble() {
        assertThat(Funcs.NullToNum(5)).isEqualTo(5.0).isInstanceOf(Double.class);
        assertThat(Funcs.NullToNum((short) 3)).isEqualTo(3.0);
        assertThat(Funcs.NullToNum("7,5")).isEqualTo(7.5);
        assertThat(Funcs.NullToNum(" 12 ")).isEqualTo(12.0);
        assertThat(Funcs.NullToNum(new BigDecimal("1.25"))).isEqualTo(1.25);
        assertThat(Funcs.NullToNum(true)).isEqualTo(-1.0);
        assertThat(Funcs.nullToDouble("7,5")).isEqualTo(7.5);
    }

    @Test
    void nullToNumOfATextThatIsNoNumberRaises13() {
        assertVbError(13, () -> Funcs.NullToNum("abc"));
        assertVbError(13, () -> Funcs.NullToNum(""));
        assertVbError(13, () -> Funcs.NullToNum("7.5"));
    }

    @Test
    void nullToNumUnderResumedErrorsRecordsTheNumber() {
        Object r = Err.resume(() -> Funcs.NullToNum("abc"), null);
        assertThat(r).isNull();
        assertThat(Err.Number()).isEqualTo(13);
    }

    // NullToDate

    @Test
    void nullToDateOfNullIsTodayAtMidnight() {
        VbClock.setFixed(LocalDateTime.of(2026, 11, 22, 8, 30, 15));
        assertThat(Funcs.NullToDate(null)).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
        assertThat(Conv.CStr(Funcs.NullToDate(null))).isEqualTo("2026.11.22.");
        assertThat(Funcs.nullToDateValue(null)).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
    }

    @Test
    void nullToDateOfAValueIsTheValueAsADate() {
        LocalDateTime d = LocalDateTime.of(2013, 3, 31, 0, 0);
        assertThat(Funcs.NullToDate(d)).isEqualTo(d);
        assertThat(Funcs.NullToDate("2013.03.31.")).isEqualTo(d);
        assertThat(Funcs.NullToDate(36526.5)).isEqualTo(LocalDateTime.of(2000, 1, 1, 12, 0));
        assertVbError(13, () -> Funcs.NullToDate("abc"));
    }

    // NullToStr

    @Test
    void nullToStrOfNullIsTheEmptyText() {
        assertThat(Funcs.NullToStr(null)).isEqualTo("");
        assertThat(Funcs.nullToText(null)).isEmpty();
    }

    @Test
    void nullToStrOfAValueIsItsText() {
        assertThat(Funcs.NullToStr("ABC-123")).isEqualTo("ABC-123");
        assertThat(Funcs.NullToStr(7.5)).isEqualTo("7,5");
        assertThat(Funcs.NullToStr(9.0)).isEqualTo("9");
        assertThat(Funcs.NullToStr(42)).isEqualTo("42");
        assertThat(Funcs.NullToStr(true)).isEqualTo("True");
        assertThat(Funcs.NullToStr(LocalDateTime.of(2026, 11, 22, 0, 0))).isEqualTo("2026.11.22.");
        assertThat(Funcs.nullToText(2.5)).isEqualTo("2,5");
    }

    // VbClock

    @Test
    void fixedClock() {
        VbClock.setFixed(LocalDateTime.of(2026, 11, 22, 8, 30, 0, 250_000_000));
        assertThat(VbClock.now()).isEqualTo(LocalDateTime.of(2026, 11, 22, 8, 30, 0));
        assertThat(VbClock.today()).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
        assertThat(VbClock.date()).isEqualTo(LocalDate.of(2026, 11, 22));
        assertThat(VbClock.secondsSinceMidnight()).isEqualTo(30600.25);
        assertThat(VbClock.timer()).isEqualTo(30600.25f);
        assertThat(Conv.CStr(VbClock.timer())).isEqualTo("30600,25");
    }

    @Test
    void systemClockAfterReset() {
        VbClock.setFixed(LocalDateTime.of(2000, 1, 1, 0, 0));
        VbClock.reset();
        LocalDateTime before = LocalDateTime.now().withNano(0);
        LocalDateTime now = VbClock.now();
        LocalDateTime after = LocalDateTime.now();
        assertThat(now).isBetween(before, after);
        assertThat(now.getNano()).isZero();
        assertThat(VbClock.secondsSinceMidnight()).isBetween(0.0, 86400.0);
    }
}
