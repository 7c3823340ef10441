package kerova.core.db.sql;

import java.math.BigDecimal;
import java.math.BigInteger;
import java.math.MathContext;
import java.math.RoundingMode;
import java.text.CollationKey;
import java.text.Collator;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.util.Locale;
import kerova.core.db.DaoException;
import kerova.core.vb.Conv;
import kerova.core.vb.VbException;

/**
 * Jet's operators on VB variants: comparison (text without regard to case under the Hungarian
 * collation, numbers across types, dates, True as -1), three-valued logic, arithmetic with Jet's
 * Null propagation, text and date rules.
 */
public final class Values {
    private Values() {
    }

    private static final Collator COLLATOR;

    static {
        COLLATOR = Collator.getInstance(Locale.forLanguageTag("hu-HU"));
        COLLATOR.setStrength(Collator.SECONDARY); // case doesn't count, accents do
    }

    /** The hu-HU collator at secondary strength (thread-safe: RuleBasedCollator synchronises). */
    public static Collator collator() {
        return COLLATOR;
    }

    /** Compares two texts as Jet does under the Hungarian sort order: case ignored, accents significant. */
    public static int compareText(String a, String b) {
        if (a.equalsIgnoreCase(b)) {
            return 0;
        }
        return COLLATOR.compare(a, b);
    }

    /**
     * Equality of texts under the collation, fast: equal ignoring case is equal; two texts of plain
     * characters (printable ASCII and Latin-1/Latin Extended-A, which the hu-HU collator neither
     * ignores nor expands, except Æ æ Þ þ) that differ otherwise are different; the rest asks the collator.
     */
    static boolean textEquals(String a, String b) {
        if (a.equalsIgnoreCase(b)) {
            return true;
        }
        if (plain(a) && plain(b)) {
            return false;
        }
        return COLLATOR.compare(a, b) == 0;
    }

    private static boolean plain(String s) {
        for (int i = 0; i < s.length(); i++) {
            char c = s.charAt(i);
            if (c < 0x20 || (c >= 0x7F && c < 0xA0) || c > 0x17F || c == 0xC6 || c == 0xE6 || c == 0xDE
                    || c == 0xFE || c == 0xAD) {
                return false;
            }
        }
        return true;
    }

    static CollationKey key(String s) {
        return COLLATOR.getCollationKey(s);
    }

    /**
     * Characters that the hu-HU collator weighs with one collation element each, independent of
     * their neighbours (digits and common punctuation): a text made only of these gets a cheap sort
     * key built as a collation key is (the non-zero primary weights, a separator, then every
     * secondary weight), much cheaper than asking the collator (the arrival-time texts
     * "2013.03.05 10:15:00" of Part 3.2). SqlEvalTest checks that the order is the collator's.
     */
    static final String FAST_CHARS = " 0123456789.,:;-/+()";
    private static final int[] PRIMARY = new int[128];
    private static final int[] SECONDARY = new int[128];
    private static final boolean[] FAST = new boolean[128];

    static {
        if (COLLATOR instanceof java.text.RuleBasedCollator rbc) {
            for (char c : FAST_CHARS.toCharArray()) {
                java.text.CollationElementIterator it = rbc.getCollationElementIterator(String.valueOf(c));
                int first = it.next();
                if (first != java.text.CollationElementIterator.NULLORDER
                        && it.next() == java.text.CollationElementIterator.NULLORDER) {
                    PRIMARY[c] = java.text.CollationElementIterator.primaryOrder(first);
                    SECONDARY[c] = java.text.CollationElementIterator.secondaryOrder(first);
                    FAST[c] = true;
                }
            }
        }
    }

    /** A text as a sort key: the cheap key when it has only {@link #FAST_CHARS}, else its collation key. */
    static final class TextKey {
        final String text;
        private final String ranks;
        private CollationKey key;

        TextKey(String text) {
            this.text = text;
            this.ranks = ranks(text);
        }

        private static String ranks(String s) {
            int n = s.length();
            StringBuilder r = new StringBuilder(2 * n + 1);
            for (int i = 0; i < n; i++) {
                char c = s.charAt(i);
                if (c >= 128 || !FAST[c]) {
                    return null;
                }
                if (PRIMARY[c] != 0) {
                    r.append((char) (PRIMARY[c] + 1));
                }
            }
            r.append('\0');
            for (int i = 0; i < n; i++) {
                r.append((char) (SECONDARY[s.charAt(i)] + 1));
            }
            return r.toString();
        }

        CollationKey collationKey() {
            if (key == null) {
                key = COLLATOR.getCollationKey(text);
            }
            return key;
        }

        int compareTo(TextKey o) {
            if (ranks != null && o.ranks != null) {
                return ranks.compareTo(o.ranks);
            }
            return collationKey().compareTo(o.collationKey());
        }
    }

    // ---- errors ----

    static DaoException mismatch() {
        return new DaoException(DaoException.DATA_TYPE_MISMATCH, "Data type mismatch in criteria expression.");
    }

    static DaoException divisionByZero() {
        return new DaoException(Sql.DIVISION_BY_ZERO, "Division by zero");
    }

    /** A VB conversion error met while evaluating, as Jet reports it. */
    static DaoException wrap(VbException e) {
        if (e instanceof DaoException d) {
            return d;
        }
        if (e.getNumber() == VbException.OVERFLOW) {
            return new DaoException(Sql.OVERFLOW, "Overflow", e);
        }
        return new DaoException(DaoException.DATA_TYPE_MISMATCH, "Data type mismatch in criteria expression.", e);
    }

    // ---- kinds ----

    /** The variant as Jet's expression service sees it: a java.util.Date or LocalDate as LocalDateTime. */
    static Object norm(Object v) {
        if (v instanceof java.util.Date || v instanceof LocalDate || v instanceof LocalTime) {
            return Conv.CDate(v);
        }
        return v;
    }

    static boolean isIntegral(Object v) {
        return v instanceof Integer || v instanceof Short || v instanceof Long || v instanceof Byte;
    }

    static boolean isFloating(Object v) {
        return v instanceof Double || v instanceof Float;
    }

    static boolean isNumeric(Object v) {
        return v instanceof Number || v instanceof Boolean;
    }

    static boolean isDate(Object v) {
        return v instanceof LocalDateTime || v instanceof java.util.Date || v instanceof LocalDate
                || v instanceof LocalTime;
    }

    static long longOf(Object v) {
        if (v instanceof Byte b) {
            return Byte.toUnsignedInt(b);
        }
        return ((Number) v).longValue();
    }

    static double doubleOf(Object v) {
        if (v instanceof Boolean b) {
            return b ? -1 : 0;
        }
        if (v instanceof Byte b) {
            return Byte.toUnsignedInt(b);
        }
        return ((Number) v).doubleValue();
    }

    static BigDecimal decimalOf(Object v) {
        if (v instanceof BigDecimal bd) {
            return bd;
        }
        if (v instanceof BigInteger bi) {
            return new BigDecimal(bi);
        }
        if (isIntegral(v)) {
            return BigDecimal.valueOf(longOf(v));
        }
        return new BigDecimal(doubleOf(v), MathContext.DECIMAL64);
    }

    /** A Boolean as Jet's number (True is -1); other variants unchanged. */
    static Object jet(Object v) {
        if (v instanceof Boolean b) {
            return b ? (short) -1 : (short) 0;
        }
        return norm(v);
    }

    /** The variant as a number for arithmetic: numbers stay, True is -1, a numeric text is read by CDbl. */
    static Object number(Object v) {
        if (v instanceof Number) {
            return v;
        }
        if (v instanceof Boolean b) {
            return b ? -1 : 0;
        }
        if (v instanceof String s) {
            if (!Conv.isNumeric(s)) {
                throw mismatch();
            }
            return Conv.CDbl(s);
        }
        if (isDate(v)) {
            return Conv.toOADate(Conv.CDate(v));
        }
        throw mismatch();
    }

    static LocalDateTime date(Object v) {
        try {
            return Conv.CDate(jet(v));
        } catch (VbException e) {
            throw wrap(e);
        }
    }

    /** The variant as text, as Jet converts it (numbers with the decimal comma, True as "-1"). */
    static String text(Object v) {
        if (v instanceof String s) {
            return s;
        }
        try {
            return Conv.CStr(jet(v));
        } catch (VbException e) {
            throw wrap(e);
        }
    }

    /** Truth of a condition's value: non-null and non-zero. */
    static boolean isTrue(Object v) {
        if (v == null) {
            return false;
        }
        if (v instanceof Boolean b) {
            return b;
        }
        if (v instanceof Number) {
            return doubleOf(v) != 0;
        }
        try {
            return Conv.CBool(norm(v));
        } catch (VbException e) {
            throw wrap(e);
        }
    }

    // ---- comparison ----

    /**
     * Compares two non-null values as Jet does: texts by the collation, numbers numerically across
     * types (True = -1), dates chronologically; a date and a number by the date's serial number; a
     * number and a numeric text numerically; anything else is a type mismatch (3464).
     */
    static int compare(Object a, Object b) {
        if (a instanceof String s && b instanceof String t) {
            return compareText(s, t);
        }
        if (isNumeric(a) && isNumeric(b)) {
            return compareNumbers(a, b);
        }
        if (isDate(a) && isDate(b)) {
            return Conv.CDate(a).compareTo(Conv.CDate(b));
        }
        if (isDate(a) || isDate(b)) {
            Object other = isDate(a) ? b : a;
            int sign = isDate(a) ? 1 : -1;
            LocalDateTime d = Conv.CDate(isDate(a) ? a : b);
            if (other instanceof String s) {
                if (!Conv.isDate(s)) {
                    throw mismatch();
                }
                return sign * d.compareTo(Conv.CDate(s));
            }
            if (isNumeric(other)) {
                return sign * Double.compare(Conv.toOADate(d), doubleOf(other));
            }
            throw mismatch();
        }
        if (a instanceof String || b instanceof String) {
            Object num = a instanceof String ? b : a;
            String s = (String) (a instanceof String ? a : b);
            if (isNumeric(num) && Conv.isNumeric(s)) {
                double d = Conv.CDbl(s);
                return a instanceof String ? compareNumbers(d, num) : compareNumbers(num, d);
            }
        }
        throw mismatch();
    }

    static int compareNumbers(Object a, Object b) {
        if (a instanceof Boolean) {
            a = doubleOf(a);
        }
        if (b instanceof Boolean) {
            b = doubleOf(b);
        }
        if (isIntegral(a) && isIntegral(b)) {
            return Long.compare(longOf(a), longOf(b));
        }
        if (!isFloating(a) && !isFloating(b)) {
            return decimalOf(a).compareTo(decimalOf(b));
        }
        double x = doubleOf(a);
        double y = doubleOf(b);
        return x < y ? -1 : x > y ? 1 : 0;
    }

    /** A comparison operator; Null if either side is Null. */
    static Object compareOp(String op, Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        if (a instanceof String s && b instanceof String t && (op.equals("=") || op.equals("<>"))) {
            return textEquals(s, t) == op.equals("=");
        }
        int c = compare(a, b);
        return switch (op) {
            case "=" -> c == 0;
            case "<>" -> c != 0;
            case "<" -> c < 0;
            case "<=" -> c <= 0;
            case ">" -> c > 0;
            case ">=" -> c >= 0;
            default -> throw new IllegalArgumentException(op);
        };
    }

    /**
     * The order of sort keys (see {@link #sortKey}): Null first; numbers and Booleans (True = -1)
     * numerically; dates; texts by their collation keys; a total order across kinds.
     */
    static int sortCompare(Object a, Object b) {
        if (a == b) {
            return 0;
        }
        if (a == null) {
            return -1;
        }
        if (b == null) {
            return 1;
        }
        int ra = rank(a);
        int rb = rank(b);
        if (ra != rb) {
            return Integer.compare(ra, rb);
        }
        switch (ra) {
            case 1 -> {
                if (isIntegral(a) && isIntegral(b)) {
                    return Long.compare(longOf(a), longOf(b));
                }
                if (!isFloating(a) && !isFloating(b)) {
                    return decimalOf(a).compareTo(decimalOf(b));
                }
                return Double.compare(doubleOf(a), doubleOf(b));
            }
            case 2 -> {
                return ((LocalDateTime) a).compareTo((LocalDateTime) b);
            }
            case 3 -> {
                return ((TextKey) a).compareTo((TextKey) b);
            }
            default -> {
                return a.toString().compareTo(b.toString());
            }
        }
    }

    private static int rank(Object v) {
        if (v instanceof Number) {
            return 1;
        }
        if (v instanceof LocalDateTime) {
            return 2;
        }
        if (v instanceof TextKey) {
            return 3;
        }
        return 4;
    }

    /** A value as a sort key: texts become {@link TextKey}s (one per text), Booleans -1/0, dates LocalDateTime. */
    static Object sortKey(Object v, java.util.Map<String, TextKey> cache) {
        if (v instanceof String s) {
            TextKey k = cache.get(s);
            if (k == null) {
                k = new TextKey(s);
                cache.put(s, k);
            }
            return k;
        }
        if (v instanceof Boolean b) {
            return b ? -1 : 0;
        }
        return norm(v);
    }

    // ---- logic ----

    static Object not(Object v) {
        return v == null ? null : !isTrue(v);
    }

    // ---- arithmetic ----

    static Object negate(Object v) {
        if (v == null) {
            return null;
        }
        if (isDate(v)) {
            return Conv.fromOADate(-Conv.toOADate(Conv.CDate(v)));
        }
        Object n = number(v);
        if (isIntegral(n)) {
            long l = longOf(n);
            return l == Long.MIN_VALUE ? (Object) (-(double) l) : narrow(-l);
        }
        if (n instanceof BigDecimal bd) {
            return bd.negate();
        }
        return -doubleOf(n);
    }

    static Object add(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        if (a instanceof String s && b instanceof String t) {
            return s + t;
        }
        if (isDate(a) || isDate(b)) {
            return Conv.fromOADate(serial(a) + serial(b));
        }
        return arith('+', number(a), number(b));
    }

    static Object subtract(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        if (isDate(a) && isDate(b)) {
            return serial(a) - serial(b);
        }
        if (isDate(a)) {
            return Conv.fromOADate(serial(a) - serial(b));
        }
        if (isDate(b)) {
            return serial(a) - serial(b);
        }
        return arith('-', number(a), number(b));
    }

    static Object multiply(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        return arith('*', number(a), number(b));
    }

    static Object divide(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        double y = doubleOf(number(b));
        if (y == 0) {
            throw divisionByZero();
        }
        return doubleOf(number(a)) / y;
    }

    static Object intDivide(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        long y = roundToLong(number(b));
        if (y == 0) {
            throw divisionByZero();
        }
        return narrow(roundToLong(number(a)) / y);
    }

    static Object modulo(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        long y = roundToLong(number(b));
        if (y == 0) {
            throw divisionByZero();
        }
        return narrow(roundToLong(number(a)) % y);
    }

    static Object power(Object a, Object b) {
        if (a == null || b == null) {
            return null;
        }
        return Math.pow(doubleOf(number(a)), doubleOf(number(b)));
    }

    /** {@code &}: texts joined, Null as "" unless both are Null. */
    static Object concat(Object a, Object b) {
        if (a == null && b == null) {
            return null;
        }
        return (a == null ? "" : text(a)) + (b == null ? "" : text(b));
    }

    private static double serial(Object v) {
        if (isDate(v)) {
            return Conv.toOADate(Conv.CDate(v));
        }
        return doubleOf(number(v));
    }

    /** Integer arithmetic stays whole (widening on overflow), Currency stays exact, else Double. */
    private static Object arith(char op, Object x, Object y) {
        if (isIntegral(x) && isIntegral(y)) {
            long a = longOf(x);
            long b = longOf(y);
            try {
                return narrow(switch (op) {
                    case '+' -> Math.addExact(a, b);
                    case '-' -> Math.subtractExact(a, b);
                    default -> Math.multiplyExact(a, b);
                });
            } catch (ArithmeticException e) {
                // beyond 64 bits: fall through to Double
            }
        } else if (!isFloating(x) && !isFloating(y)) {
            BigDecimal a = decimalOf(x);
            BigDecimal b = decimalOf(y);
            return switch (op) {
                case '+' -> a.add(b);
                case '-' -> a.subtract(b);
                default -> a.multiply(b);
            };
        }
        double a = doubleOf(x);
        double b = doubleOf(y);
        return switch (op) {
            case '+' -> a + b;
            case '-' -> a - b;
            default -> a * b;
        };
    }

    static Object narrow(long l) {
        return l >= Integer.MIN_VALUE && l <= Integer.MAX_VALUE ? (Object) (int) l : (Object) l;
    }

    /** A number rounded to a whole one, halves to even (as VB's integer operators do). */
    static long roundToLong(Object n) {
        if (isIntegral(n)) {
            return longOf(n);
        }
        return decimalOf(n).setScale(0, RoundingMode.HALF_EVEN).longValue();
    }
}
