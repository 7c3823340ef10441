package kerova.core.vb;

import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.temporal.ChronoUnit;

/**
 * VB's clock functions (Now, Date, Timer) over the system clock, or over a fixed moment for tests.
 * VB's Now has whole seconds; Timer has the fractions.
 */
public final class VbClock {
    private static volatile LocalDateTime fixed;

    private VbClock() {
    }

    /** Fixes the clock at the given moment until {@link #reset()}; null is the same as reset. */
    public static void setFixed(LocalDateTime moment) {
        fixed = moment;
    }

    /** Back to the system clock. */
    public static void reset() {
        fixed = null;
    }

    /** The current moment with its fraction of a second (the base of the other functions). */
    private static LocalDateTime current() {
        LocalDateTime f = fixed;
        return f != null ? f : LocalDateTime.now();
    }

    /** VB Now: the date and time of day, to the second. */
    public static LocalDateTime now() {
        return current().truncatedTo(ChronoUnit.SECONDS);
    }

    /** VB Date as a Date variant: today at midnight. */
    public static LocalDateTime today() {
        return current().toLocalDate().atStartOfDay();
    }

    /** Today's date. */
    public static LocalDate date() {
        return current().toLocalDate();
    }

    /** VB Timer: the seconds since midnight, with the milliseconds as the fraction (30600.25 at 8:30:00.25). */
    public static double secondsSinceMidnight() {
        long millis = current().toLocalTime().toNanoOfDay() / 1_000_000L;
        return millis / 1000.0;
    }

    /**
     * VB Timer exactly as VB types it, a Single: CStr of it has at most 7 significant digits, as the
     * program's texts built from Timer had ("30600,25", "45123,46").
     */
    public static float timer() {
        return (float) secondsSinceMidnight();
    }
}
