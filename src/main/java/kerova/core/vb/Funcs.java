package kerova.core.vb;

import java.time.LocalDateTime;

/**
 * Module Funcs of Part 1.1: the three null conversions that every form uses when it takes a column into a
 * variable or a control. Each takes a variant and returns a variant.
 */
public final class Funcs {
    private Funcs() {
    }

    /**
     * Null gives the Integer 0; a value gives a Double by CDbl (a text under the Hungarian locale; a text
     * that isn't a number, also "", raises 13).
     */
    public static Object NullToNum(Object v) {
        if (v == null) {
            return Integer.valueOf(0);
        }
        return Double.valueOf(Conv.CDbl(v));
    }

    /**
     * Null gives today's date at midnight (VbClock): a missing date silently reads as today. A value gives
     * the value as a date by CDate (a text that isn't a date raises 13).
     */
    public static Object NullToDate(Object v) {
        if (v == null) {
            return VbClock.today();
        }
        return Conv.CDate(v);
    }

    /** Null gives the empty text; a value gives its text by CStr. */
    public static Object NullToStr(Object v) {
        if (v == null) {
            return "";
        }
        return Conv.CStr(v);
    }

    /** {@link #NullToNum} as a Java double, for callers that compute with it. */
    public static double nullToDouble(Object v) {
        return v == null ? 0 : Conv.CDbl(v);
    }

    /** {@link #NullToDate} as a LocalDateTime. */
    public static LocalDateTime nullToDateValue(Object v) {
        return v == null ? VbClock.today() : Conv.CDate(v);
    }

    /** {@link #NullToStr} as a String. */
    public static String nullToText(Object v) {
        return v == null ? "" : Conv.CStr(v);
    }
}
