package kerova.core.vb;

import java.time.LocalDateTime;

/**
 * VB6 conversions as on a Hungarian Windows, whatever the machine's locale (DESIGN.md "VB semantics").
 * Values are VB variants: null (Null), String, Short/Integer/Long/Double/Float/BigDecimal, Boolean,
 * LocalDateTime (Date).
 */
public final class Conv {
    private Conv() {
    }

    /** CStr and implicit number-to-text: decimal comma, no grouping, at most 15 significant digits. */
    public static String CStr(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** CDbl and implicit text-to-number: accepts the decimal comma. */
    public static double CDbl(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** CInt: halves to even, overflow (error 6) outside -32768..32767. */
    public static short CInt(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** CLng: halves to even, overflow outside the 32-bit range. */
    public static int CLng(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** Val: reads a numeric prefix with "." as the decimal point ("7,5" gives 7). */
    public static double Val(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** Str: a number with a leading blank for non-negative values, "." as the decimal point. */
    public static String Str(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    /** CDate: a date, or a text in the Hungarian short date form. */
    public static LocalDateTime CDate(Object v) {
        throw new UnsupportedOperationException("TODO");
    }

    public static boolean CBool(Object v) {
        throw new UnsupportedOperationException("TODO");
    }
}
