package kerova.core.vb;

import java.math.BigDecimal;
import java.math.BigInteger;
import java.math.MathContext;
import java.math.RoundingMode;
import java.sql.Timestamp;
import java.time.DateTimeException;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.time.temporal.ChronoUnit;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * VB6 conversions as on a Hungarian Windows, whatever the machine's locale (DESIGN.md "VB semantics").
 * Values are VB variants: null (Null), String, Byte/Short/Integer/Long/Double/Float, BigDecimal (Currency),
 * Boolean, LocalDateTime (Date; a time-only value lies on 1899-12-30, VB's date zero).
 *
 * <p>Nothing here uses the JVM's default locale: all texts are built by hand. The Hungarian settings that
 * VB took from Windows are fixed here: decimal separator ",", digit grouping " " (also the no-break space),
 * short date "yyyy.MM.dd.", time "H:mm:ss".
 *
 * <p>Errors are raised as {@link VbException} with VB's numbers and (English) runtime descriptions:
 * 6 Overflow, 13 Type mismatch, 94 Invalid use of Null.
 */
public final class Conv {
    private Conv() {
    }

    /** VB's date zero: day 0 of the OLE Automation date, also the date of a time-only value. */
    public static final LocalDateTime DATE_ZERO = LocalDateTime.of(1899, 12, 30, 0, 0);

    private static final LocalDate DAY_ZERO = DATE_ZERO.toLocalDate();

    /** The range of VB's Date type as OLE Automation dates: 100-01-01 .. 9999-12-31 23:59:59. */
    private static final double MIN_OA_DATE = -657434.0;
    private static final double MAX_OA_DATE = 2958466.0;

    /** The texts of the Booleans. VB6's CStr(True) gives "True" on every Windows, Hungarian too. */
    private static final String TRUE_TEXT = "True";
    private static final String FALSE_TEXT = "False";
    /** The Hungarian names of the Booleans, which oleaut32 accepts in text-to-Boolean conversion. */
    private static final String TRUE_TEXT_HU = "Igaz";
    private static final String FALSE_TEXT_HU = "Hamis";

    private static final BigDecimal CURRENCY_MAX = new BigDecimal("922337203685477.5807");
    private static final BigDecimal CURRENCY_MIN = new BigDecimal("-922337203685477.5808");

    // ------------------------------------------------------------------------------------------------
    // Errors

    static VbException overflow() {
        return new VbException(VbException.OVERFLOW, "Overflow");
    }

    static VbException typeMismatch() {
        return new VbException(VbException.TYPE_MISMATCH, "Type mismatch");
    }

    static VbException invalidUseOfNull() {
        return new VbException(VbException.INVALID_USE_OF_NULL, "Invalid use of Null");
    }

    // ------------------------------------------------------------------------------------------------
    // CStr

    /**
     * CStr and implicit conversion to text, as on a Hungarian Windows.
     * <ul>
     * <li>Double: at most 15 significant digits, decimal comma, no grouping; scientific form outside
     * 1E-5 .. 1E+15 ("1E+20", "1E-05", "1,5E-07"), as oleaut32's VarBstrFromR8 does.</li>
     * <li>Float (Single): the same with 7 significant digits.</li>
     * <li>BigDecimal (Currency/Decimal): all its digits, trailing zeros dropped, decimal comma.</li>
     * <li>Byte/Short/Integer/Long/BigInteger: the digits (a Byte is VB's unsigned byte).</li>
     * <li>Boolean: "True"/"False". VB6 gives these English words on a Hungarian Windows as well (it
     * doesn't pass the localised-Boolean flag to oleaut32), so they are kept.</li>
     * <li>Date: the Hungarian short date "2026.11.22."; with a time "2026.11.22. 8:30:00"; on the date
     * zero 1899-12-30 the time alone ("8:30:00", "0:00:00").</li>
     * <li>Null: error 94.</li>
     * </ul>
     */
    public static String CStr(Object v) {
        if (v == null) {
            throw invalidUseOfNull();
        }
        if (v instanceof String s) {
            return s;
        }
        if (v instanceof Character c) {
            return String.valueOf(c);
        }
        if (v instanceof Boolean b) {
            return b ? TRUE_TEXT : FALSE_TEXT;
        }
        if (v instanceof Double d) {
            return numberText(d, 15, ',');
        }
        if (v instanceof Float f) {
            return numberText(f.doubleValue(), 7, ',');
        }
        if (v instanceof BigDecimal bd) {
            return decimalText(bd, ',');
        }
        if (v instanceof Byte b) {
            return Integer.toString(Byte.toUnsignedInt(b));
        }
        if (v instanceof Short || v instanceof Integer || v instanceof Long || v instanceof BigInteger) {
            return v.toString();
        }
        if (v instanceof Number n) {
            return numberText(n.doubleValue(), 15, ',');
        }
        LocalDateTime d = asDate(v);
        if (d != null) {
            return dateTimeText(d);
        }
        throw typeMismatch();
    }

    /** A date as the Hungarian short date: "2026.11.22." (the time of day is left out). */
    public static String dateText(LocalDateTime d) {
        return dateText(d.toLocalDate());
    }

    /** A date as the Hungarian short date: "2026.11.22.". */
    public static String dateText(LocalDate d) {
        StringBuilder sb = new StringBuilder(11);
        pad(sb, d.getYear(), 4).append('.');
        pad(sb, d.getMonthValue(), 2).append('.');
        pad(sb, d.getDayOfMonth(), 2).append('.');
        return sb.toString();
    }

    /** The time of day as the Hungarian long time: "8:30:00" (rounded to the second). */
    public static String timeText(LocalDateTime d) {
        return timeText(roundToSecond(d).toLocalTime());
    }

    /** The time of day as the Hungarian long time: "8:30:00". */
    public static String timeText(LocalTime t) {
        StringBuilder sb = new StringBuilder(8);
        sb.append(t.getHour()).append(':');
        pad(sb, t.getMinute(), 2).append(':');
        pad(sb, t.getSecond(), 2);
        return sb.toString();
    }

    /** A date as CStr gives it: date, date and time, or the time alone on the date zero. */
    public static String dateTimeText(LocalDateTime d) {
        LocalDateTime r = roundToSecond(d);
        if (r.toLocalDate().equals(DAY_ZERO)) {
            return timeText(r.toLocalTime());
        }
        if (r.toLocalTime().equals(LocalTime.MIDNIGHT)) {
            return dateText(r.toLocalDate());
        }
        return dateText(r.toLocalDate()) + " " + timeText(r.toLocalTime());
    }

    private static LocalDateTime roundToSecond(LocalDateTime d) {
        LocalDateTime t = d.truncatedTo(ChronoUnit.SECONDS);
        return d.getNano() >= 500_000_000 ? t.plusSeconds(1) : t;
    }

    private static StringBuilder pad(StringBuilder sb, int n, int width) {
        String s = Integer.toString(n);
        for (int i = s.length(); i < width; i++) {
            sb.append('0');
        }
        return sb.append(s);
    }

    /**
     * A floating-point number as C's "%.{precision}G" with VB's touches: trailing zeros dropped, the
     * exponent with a sign and at least two digits, the given decimal separator, no "-0".
     */
    static String numberText(double d, int precision, char decimalSeparator) {
        if (Double.isNaN(d) || Double.isInfinite(d)) {
            throw overflow();
        }
        if (d == 0) {
            return "0";
        }
        if (d == Math.rint(d) && Math.abs(d) < 1e15 && precision >= 15) {
            return Long.toString((long) d);
        }
        if (d == Math.rint(d) && Math.abs(d) < 1e7) {
            return Long.toString((long) d);
        }
        BigDecimal bd = new BigDecimal(d).round(new MathContext(precision, RoundingMode.HALF_EVEN));
        boolean negative = bd.signum() < 0;
        bd = bd.abs();
        int exponent = bd.precision() - bd.scale() - 1;
        String text;
        if (exponent < -4 || exponent >= precision) {
            String mantissa = plain(bd.movePointLeft(exponent));
            int e = Math.abs(exponent);
            text = mantissa + "E" + (exponent < 0 ? '-' : '+') + (e < 10 ? "0" : "") + e;
        } else {
            text = plain(bd);
        }
        if (decimalSeparator != '.') {
            text = text.replace('.', decimalSeparator);
        }
        return negative ? "-" + text : text;
    }

    private static String plain(BigDecimal bd) {
        if (bd.signum() == 0) {
            return "0";
        }
        return bd.stripTrailingZeros().toPlainString();
    }

    private static String decimalText(BigDecimal bd, char decimalSeparator) {
        String text = plain(bd);
        return decimalSeparator == '.' ? text : text.replace('.', decimalSeparator);
    }

    // ------------------------------------------------------------------------------------------------
    // Str

    /**
     * Str: a number as text with "." as the decimal point and a leading blank for non-negative values;
     * the zero before the point of a fraction is left out, as VB does: Str(5) = " 5", Str(-5) = "-5",
     * Str(2.5) = " 2.5", Str(0.5) = " .5", Str(1E+20) = " 1E+20". A text is first read by CDbl (so
     * Str("7,5") = " 7.5"). Str(Null) is Null (the Variant form of Str). A Boolean gives "True"/"False",
     * a Date its CStr text (this is what Jet's str(dátum) yields: "2026.11.22.").
     */
    public static String Str(Object v) {
        if (v == null) {
            return null;
        }
        if (v instanceof Boolean b) {
            return b ? TRUE_TEXT : FALSE_TEXT;
        }
        LocalDateTime date = asDate(v);
        if (date != null) {
            return dateTimeText(date);
        }
        String text;
        if (v instanceof String || v instanceof Character) {
            text = numberText(CDbl(v), 15, '.');
        } else if (v instanceof Double d) {
            text = numberText(d, 15, '.');
        } else if (v instanceof Float f) {
            text = numberText(f.doubleValue(), 7, '.');
        } else if (v instanceof BigDecimal bd) {
            text = decimalText(bd, '.');
        } else if (v instanceof Byte b) {
            text = Integer.toString(Byte.toUnsignedInt(b));
        } else if (v instanceof Short || v instanceof Integer || v instanceof Long || v instanceof BigInteger) {
            text = v.toString();
        } else if (v instanceof Number n) {
            text = numberText(n.doubleValue(), 15, '.');
        } else {
            throw typeMismatch();
        }
        boolean negative = text.startsWith("-");
        String digits = negative ? text.substring(1) : text;
        if (digits.startsWith("0.")) {
            digits = digits.substring(1);
        }
        return (negative ? "-" : " ") + digits;
    }

    // ------------------------------------------------------------------------------------------------
    // Text to number (Hungarian locale)

    /**
     * Reads a text as oleaut32 does under the Hungarian locale (VarParseNumFromStr with NUMPRS_STD):
     * blanks around it; a sign before or after the number, or parentheses for a negative one; digits
     * with blanks (or no-break spaces) between them as the digit grouping; "," as the decimal separator;
     * an exponent "E" with an optional sign; or a hexadecimal "&amp;H..." or octal "&amp;O..." integer.
     * "." is neither a decimal nor a grouping character in Hungarian, so "7.5" isn't a number.
     *
     * @return the exact value, or null if the text isn't a number
     * @throws VbException 6 if the exponent is beyond any double
     */
    static BigDecimal parseNumber(String s) {
        int n = s.length();
        int i = 0;
        while (i < n && isBlank(s.charAt(i))) {
            i++;
        }
        while (n > i && isBlank(s.charAt(n - 1))) {
            n--;
        }
        if (i >= n) {
            return null;
        }
        if (s.charAt(i) == '&') {
            return parseHexOct(s, i + 1, n);
        }
        boolean negative = false;
        boolean leadingSign = false;
        boolean parens = false;
        char c = s.charAt(i);
        if (c == '+' || c == '-') {
            negative = c == '-';
            leadingSign = true;
            i++;
        } else if (c == '(') {
            parens = true;
            negative = true;
            i++;
        }
        StringBuilder digits = new StringBuilder();
        int fractionDigits = 0;
        boolean anyDigit = false;
        // integer part, with grouping blanks between digits
        while (i < n) {
            c = s.charAt(i);
            if (c >= '0' && c <= '9') {
                digits.append(c);
                anyDigit = true;
                i++;
            } else if ((c == ' ' || c == '\u00A0') && anyDigit && i + 1 < n && isDigit(s.charAt(i + 1))) {
                i++;
            } else {
                break;
            }
        }
        if (i < n && s.charAt(i) == ',') {
            i++;
            while (i < n && isDigit(s.charAt(i))) {
                digits.append(s.charAt(i));
                fractionDigits++;
                anyDigit = true;
                i++;
            }
        }
        if (!anyDigit) {
            return null;
        }
        long exponent = 0;
        if (i < n && (s.charAt(i) == 'e' || s.charAt(i) == 'E')) {
            i++;
            boolean expNegative = false;
            if (i < n && (s.charAt(i) == '+' || s.charAt(i) == '-')) {
                expNegative = s.charAt(i) == '-';
                i++;
            }
            if (i >= n || !isDigit(s.charAt(i))) {
                return null;
            }
            while (i < n && isDigit(s.charAt(i))) {
                if (exponent < 100_000) {
                    exponent = exponent * 10 + (s.charAt(i) - '0');
                }
                i++;
            }
            if (expNegative) {
                exponent = -exponent;
            }
        }
        if (parens) {
            if (i >= n || s.charAt(i) != ')') {
                return null;
            }
            i++;
        } else if (!leadingSign && i < n && (s.charAt(i) == '+' || s.charAt(i) == '-')) {
            negative = s.charAt(i) == '-';
            i++;
        }
        if (i != n) {
            return null;
        }
        BigDecimal value = new BigDecimal(new BigInteger(digits.toString()), fractionDigits);
        if (value.signum() == 0) {
            return BigDecimal.ZERO;
        }
        long magnitude = value.precision() - value.scale() + exponent;
        if (magnitude > 400) {
            throw overflow();
        }
        if (magnitude < -400) {
            return BigDecimal.ZERO;
        }
        value = value.scaleByPowerOfTen((int) exponent);
        return negative ? value.negate() : value;
    }

    /** "&amp;H1F", "&amp;O17", "&amp;17" (octal): VB's hexadecimal and octal integers, 16 or 32 bits. */
    private static BigDecimal parseHexOct(String s, int i, int n) {
        int radix = 8;
        if (i < n && (s.charAt(i) == 'H' || s.charAt(i) == 'h')) {
            radix = 16;
            i++;
        } else if (i < n && (s.charAt(i) == 'O' || s.charAt(i) == 'o')) {
            i++;
        }
        if (i >= n) {
            return null;
        }
        long value = 0;
        for (; i < n; i++) {
            int digit = Character.digit(s.charAt(i), radix);
            if (digit < 0 || s.charAt(i) > 'f') {
                return null;
            }
            value = value * radix + digit;
            if (value > 0xFFFF_FFFFL) {
                throw overflow();
            }
        }
        return BigDecimal.valueOf(signExtend(value, false));
    }

    /** A hexadecimal or octal literal is an Integer if it fits 16 bits, else a Long: &amp;HFFFF is -1. */
    private static long signExtend(long value, boolean forceLong) {
        if (!forceLong && value <= 0xFFFF) {
            return (short) value;
        }
        return (int) value;
    }

    private static boolean isBlank(char c) {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\u000B' || c == '\u00A0';
    }

    private static boolean isDigit(char c) {
        return c >= '0' && c <= '9';
    }

    /**
     * The exact value of a whole number (a Byte as unsigned, a Short, Integer, Long or BigInteger) or of a
     * Boolean (True as -1); null for any other value.
     */
    static BigDecimal wholeValue(Object v) {
        if (v instanceof Byte b) {
            return BigDecimal.valueOf(Byte.toUnsignedInt(b));
        }
        if (v instanceof Short || v instanceof Integer || v instanceof Long) {
            return BigDecimal.valueOf(((Number) v).longValue());
        }
        if (v instanceof BigInteger bi) {
            return new BigDecimal(bi);
        }
        if (v instanceof Boolean b) {
            return b ? BigDecimal.ONE.negate() : BigDecimal.ZERO;
        }
        return null;
    }

    /**
     * The exact numeric value of a variant, as the numeric conversions see it: a number as it is, a text
     * read under the Hungarian locale, True as -1, a date as its OLE Automation number.
     */
    private static BigDecimal exactValue(Object v) {
        if (v == null) {
            throw invalidUseOfNull();
        }
        if (v instanceof BigDecimal bd) {
            return bd;
        }
        if (v instanceof Double || v instanceof Float) {
            double d = ((Number) v).doubleValue();
            if (Double.isNaN(d) || Double.isInfinite(d)) {
                throw overflow();
            }
            return new BigDecimal(d);
        }
        BigDecimal whole = wholeValue(v);
        if (whole != null) {
            return whole;
        }
        if (v instanceof Number n) {
            return exactValue(n.doubleValue());
        }
        if (v instanceof String || v instanceof Character) {
            BigDecimal bd = parseNumber(v.toString());
            if (bd == null) {
                throw typeMismatch();
            }
            return bd;
        }
        LocalDateTime d = asDate(v);
        if (d != null) {
            return new BigDecimal(toOADate(d));
        }
        throw typeMismatch();
    }

    // ------------------------------------------------------------------------------------------------
    // CDbl, CSng, CCur, CInt, CLng

    /**
     * CDbl and implicit text-to-number: a text under the Hungarian locale ("7,5" is 7.5, blanks around it
     * are allowed, "" and "abc" raise 13, and so does "7.5"); True is -1; a date is its OLE Automation
     * number; Null raises 94; beyond the double range raises 6.
     */
    public static double CDbl(Object v) {
        if (v instanceof Double d) {
            return d;
        }
        if (v instanceof Number n && !(v instanceof BigDecimal) && !(v instanceof BigInteger)) {
            if (v instanceof Byte b) {
                return Byte.toUnsignedInt(b);
            }
            return n.doubleValue();
        }
        LocalDateTime d = v == null ? null : asDate(v);
        if (d != null) {
            return toOADate(d);
        }
        double r = exactValue(v).doubleValue();
        if (Double.isInfinite(r)) {
            throw overflow();
        }
        return r;
    }

    /** CSng: as CDbl, narrowed to a Single; beyond its range raises 6. */
    public static float CSng(Object v) {
        double d = CDbl(v);
        float f = (float) d;
        if (Float.isInfinite(f)) {
            throw overflow();
        }
        return f;
    }

    /**
     * CCur: a Currency value, rounded to 4 decimals with halves to even, overflow (6) outside
     * -922337203685477.5808 .. 922337203685477.5807. A Double is scaled by 10000 and rounded as VB does.
     */
    public static BigDecimal CCur(Object v) {
        BigDecimal r;
        if (v instanceof Double || v instanceof Float) {
            double scaled = ((Number) v).doubleValue() * 10000.0;
            if (Double.isNaN(scaled) || Math.abs(scaled) >= 9.3e18) {
                throw overflow();
            }
            r = BigDecimal.valueOf((long) Math.rint(scaled), 4);
        } else {
            r = exactValue(v).setScale(4, RoundingMode.HALF_EVEN);
        }
        if (r.compareTo(CURRENCY_MAX) > 0 || r.compareTo(CURRENCY_MIN) < 0) {
            throw overflow();
        }
        return r;
    }

    /** CInt: rounds halves to even (7.5 is 8, 6.5 is 6), overflow (6) outside -32768..32767. */
    public static short CInt(Object v) {
        return (short) roundedInteger(v, Short.MIN_VALUE, Short.MAX_VALUE);
    }

    /** CLng: rounds halves to even, overflow (6) outside the 32-bit range. */
    public static int CLng(Object v) {
        return (int) roundedInteger(v, Integer.MIN_VALUE, Integer.MAX_VALUE);
    }

    private static long roundedInteger(Object v, long min, long max) {
        BigDecimal r = exactValue(v).setScale(0, RoundingMode.HALF_EVEN);
        if (r.compareTo(BigDecimal.valueOf(min)) < 0 || r.compareTo(BigDecimal.valueOf(max)) > 0) {
            throw overflow();
        }
        return r.longValueExact();
    }

    // ------------------------------------------------------------------------------------------------
    // Val

    /**
     * Val: reads the numeric prefix of a text, with "." as the decimal point whatever the locale: blanks,
     * tabs and line feeds are skipped anywhere; an optional sign, digits, ".", digits, an exponent with
     * "E" or "D"; or "&amp;H"/"&amp;O" integers ("&amp;HFFFF" is -1, "&amp;HFFFF&amp;" is 65535). Reading
     * stops at the first character that doesn't fit: Val("7,5") = 7, Val("7.5") = 7.5, Val("abc") = 0,
     * Val(" 12 ab") = 12.
     *
     * <p>A non-text argument is turned into text by CStr first, as VB does with Val's String parameter:
     * on a Hungarian Windows Val(7.5) is therefore 7 (CStr gives "7,5"). Null raises 94.
     */
    public static double Val(Object v) {
        String s = v instanceof String str ? str : CStr(v);
        StringBuilder b = new StringBuilder(s.length());
        for (int i = 0; i < s.length(); i++) {
            char c = s.charAt(i);
            if (c != ' ' && c != '\t' && c != '\n') {
                b.append(c);
            }
        }
        String t = b.toString();
        int n = t.length();
        if (n > 1 && t.charAt(0) == '&') {
            return valHexOct(t);
        }
        int i = 0;
        StringBuilder num = new StringBuilder();
        if (i < n && (t.charAt(i) == '+' || t.charAt(i) == '-')) {
            if (t.charAt(i) == '-') {
                num.append('-');
            }
            i++;
        }
        boolean anyDigit = false;
        while (i < n && isDigit(t.charAt(i))) {
            num.append(t.charAt(i++));
            anyDigit = true;
        }
        if (i < n && t.charAt(i) == '.') {
            i++;
            num.append('.');
            while (i < n && isDigit(t.charAt(i))) {
                num.append(t.charAt(i++));
                anyDigit = true;
            }
        }
        if (!anyDigit) {
            return 0;
        }
        if (num.charAt(num.length() - 1) == '.') {
            num.setLength(num.length() - 1);
        }
        BigDecimal value = new BigDecimal(num.toString());
        if (i < n && "eEdD".indexOf(t.charAt(i)) >= 0) {
            int j = i + 1;
            boolean expNegative = false;
            if (j < n && (t.charAt(j) == '+' || t.charAt(j) == '-')) {
                expNegative = t.charAt(j) == '-';
                j++;
            }
            long exponent = 0;
            boolean expDigit = false;
            while (j < n && isDigit(t.charAt(j))) {
                if (exponent < 100_000) {
                    exponent = exponent * 10 + (t.charAt(j) - '0');
                }
                expDigit = true;
                j++;
            }
            if (expDigit && value.signum() != 0) {
                if (expNegative) {
                    exponent = -exponent;
                }
                long magnitude = value.precision() - value.scale() + exponent;
                if (magnitude > 400) {
                    throw overflow();
                }
                if (magnitude < -400) {
                    return 0;
                }
                value = value.scaleByPowerOfTen((int) exponent);
            }
        }
        double d = value.doubleValue();
        if (Double.isInfinite(d)) {
            throw overflow();
        }
        return d == 0 ? 0 : d;
    }

    private static double valHexOct(String t) {
        int i = 1;
        int n = t.length();
        int radix = 8;
        char c = t.charAt(i);
        if (c == 'H' || c == 'h') {
            radix = 16;
            i++;
        } else if (c == 'O' || c == 'o') {
            i++;
        }
        long value = 0;
        boolean anyDigit = false;
        while (i < n) {
            char d = t.charAt(i);
            int digit = d > 'f' ? -1 : Character.digit(d, radix);
            if (digit < 0) {
                break;
            }
            value = value * radix + digit;
            if (value > 0xFFFF_FFFFL) {
                throw overflow();
            }
            anyDigit = true;
            i++;
        }
        if (!anyDigit) {
            return 0;
        }
        boolean forceLong = i < n && t.charAt(i) == '&';
        return signExtend(value, forceLong);
    }

    // ------------------------------------------------------------------------------------------------
    // IsNumeric, CBool

    /**
     * IsNumeric under the Hungarian locale: numbers and Booleans are; a text is if CDbl would take it
     * ("7,5", " 12 ", "1 234", "&amp;H1F", "1E3"; not "7.5", "", "abc"); Null and dates are not.
     */
    public static boolean isNumeric(Object v) {
        if (v == null) {
            return false;
        }
        if (v instanceof Number || v instanceof Boolean) {
            return true;
        }
        if (v instanceof String || v instanceof Character) {
            try {
                BigDecimal bd = parseNumber(v.toString());
                return bd != null && !Double.isInfinite(bd.doubleValue());
            } catch (VbException e) {
                return false;
            }
        }
        return false;
    }

    /**
     * CBool: a number is True if non-zero; a text "True"/"False" or the Hungarian "Igaz"/"Hamis" (any
     * case, blanks around allowed), or a number text as CDbl reads it; otherwise 13. A date is True if not
     * the date zero. Null raises 94.
     */
    public static boolean CBool(Object v) {
        if (v == null) {
            throw invalidUseOfNull();
        }
        if (v instanceof Boolean b) {
            return b;
        }
        if (v instanceof String || v instanceof Character) {
            String s = v.toString().strip();
            if (s.equalsIgnoreCase(TRUE_TEXT) || s.equalsIgnoreCase(TRUE_TEXT_HU)) {
                return true;
            }
            if (s.equalsIgnoreCase(FALSE_TEXT) || s.equalsIgnoreCase(FALSE_TEXT_HU)) {
                return false;
            }
        }
        if (v instanceof Double || v instanceof Float) {
            double d = ((Number) v).doubleValue();
            if (Double.isNaN(d)) {
                throw overflow();
            }
            return d != 0;
        }
        return exactValue(v).signum() != 0;
    }

    // ------------------------------------------------------------------------------------------------
    // Dates

    /**
     * CDate: a date as it is; a number as an OLE Automation date (days since 1899-12-30, the fraction is
     * the time); a text in the Hungarian forms "2026.11.22.", "2026.11.22", "2026. 11. 22.",
     * "2026.11.22. 8:30", "2026.11.22. 8:30:15", "2026-11-22", "2026/11/22", also day first with a
     * four-digit year last ("22.11.2026"), a two-digit year (years 00-29 are 20xx, 30-99 are 19xx), or a
     * time alone ("8:30", on 1899-12-30). A text that isn't a date raises 13; Null raises 94; a number
     * outside years 100..9999 raises 6.
     */
    public static LocalDateTime CDate(Object v) {
        if (v == null) {
            throw invalidUseOfNull();
        }
        LocalDateTime d = asDate(v);
        if (d != null) {
            return d;
        }
        if (v instanceof String || v instanceof Character) {
            LocalDateTime parsed = parseDate(v.toString());
            if (parsed == null) {
                throw typeMismatch();
            }
            return parsed;
        }
        return fromOADate(CDbl(v));
    }

    /** IsDate: a date, or a text that CDate takes. */
    public static boolean isDate(Object v) {
        if (v == null) {
            return false;
        }
        if (asDate(v) != null) {
            return true;
        }
        return (v instanceof String || v instanceof Character) && parseDate(v.toString()) != null;
    }

    private static final Pattern DATE_TEXT = Pattern.compile(
            "(\\d{1,4})\\s*([./-])\\s*(\\d{1,2})\\s*\\2\\s*(\\d{1,4})\\s*\\.?"
                    + "(?:(?:\\s+|T)(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?)?");
    private static final Pattern TIME_TEXT = Pattern.compile("(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?");

    /** A Hungarian date text, or null if the text isn't one. */
    static LocalDateTime parseDate(String text) {
        String s = text.strip();
        try {
            Matcher m = DATE_TEXT.matcher(s);
            if (m.matches()) {
                String a = m.group(1);
                String c = m.group(4);
                int month = Integer.parseInt(m.group(3));
                int year;
                int day;
                if (a.length() >= 3 || c.length() <= 2) {
                    // year first, the Hungarian order
                    year = fullYear(a);
                    day = Integer.parseInt(c);
                    if (c.length() > 2) {
                        return null;
                    }
                } else {
                    // day first with the year last
                    day = Integer.parseInt(a);
                    year = fullYear(c);
                }
                if (year < 100) {
                    return null;
                }
                LocalDate date = LocalDate.of(year, month, day);
                LocalTime time = m.group(5) == null ? LocalTime.MIDNIGHT : time(m.group(5), m.group(6), m.group(7));
                return time == null ? null : date.atTime(time);
            }
            m = TIME_TEXT.matcher(s);
            if (m.matches()) {
                LocalTime time = time(m.group(1), m.group(2), m.group(3));
                return time == null ? null : DAY_ZERO.atTime(time);
            }
        } catch (DateTimeException | NumberFormatException e) {
            return null;
        }
        return null;
    }

    private static int fullYear(String digits) {
        int y = Integer.parseInt(digits);
        if (digits.length() <= 2) {
            return y < 30 ? 2000 + y : 1900 + y;
        }
        return y;
    }

    private static LocalTime time(String h, String m, String s) {
        int hour = Integer.parseInt(h);
        int minute = Integer.parseInt(m);
        int second = s == null ? 0 : Integer.parseInt(s);
        if (hour > 23 || minute > 59 || second > 59) {
            return null;
        }
        return LocalTime.of(hour, minute, second);
    }

    /** A date-valued variant as a LocalDateTime (LocalDate, LocalTime and java.util.Date taken too), else null. */
    private static LocalDateTime asDate(Object v) {
        if (v instanceof LocalDateTime d) {
            return d;
        }
        if (v instanceof LocalDate d) {
            return d.atStartOfDay();
        }
        if (v instanceof LocalTime t) {
            return DAY_ZERO.atTime(t);
        }
        if (v instanceof java.util.Date d) {
            return new Timestamp(d.getTime()).toLocalDateTime();
        }
        return null;
    }

    /**
     * A date as VB's Date number (OLE Automation date): days since 1899-12-30, the fraction the time of
     * day. Before 1899-12-30 the fraction counts away from zero, as in VB: 1899-12-29 06:00 is -1.25.
     */
    public static double toOADate(LocalDateTime d) {
        long days = ChronoUnit.DAYS.between(DAY_ZERO, d.toLocalDate());
        double fraction = d.toLocalTime().toNanoOfDay() / 86_400e9;
        return days >= 0 ? days + fraction : days - fraction;
    }

    /**
     * A VB Date number as a date, to the millisecond: the whole part counts days from 1899-12-30, the
     * absolute value of the fraction is the time of day (-1.25 is 1899-12-29 06:00, -0.5 is 1899-12-30
     * 12:00). Outside years 100..9999 raises 6.
     */
    public static LocalDateTime fromOADate(double d) {
        if (Double.isNaN(d) || d < MIN_OA_DATE || d >= MAX_OA_DATE) {
            throw overflow();
        }
        long days = (long) d;
        double fraction = Math.abs(d - days);
        long millis = Math.round(fraction * 86_400_000d);
        return DATE_ZERO.plusDays(days).plus(millis, ChronoUnit.MILLIS);
    }
}
