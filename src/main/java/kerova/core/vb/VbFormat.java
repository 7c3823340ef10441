package kerova.core.vb;

import java.math.BigDecimal;
import java.math.MathContext;
import java.math.RoundingMode;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.time.temporal.ChronoUnit;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/**
 * VB's {@code Format(value, mask)} as on a Hungarian Windows, whatever the machine's locale.
 *
 * <p>Hungarian settings (fixed here, as in {@link Conv}): decimal separator ",", digit grouping " ",
 * date separator "." (so the mask's "/" prints "."), time separator ":", currency "1 234,50 Ft",
 * AMPM texts "de."/"du.". In a numeric mask "." is the place of the decimal separator and "," that of
 * the grouping, so {@code Format(8.3, "00.00")} is "08,30".
 *
 * <ul>
 * <li>No mask (null or ""): CStr; Null gives "".</li>
 * <li>Named formats (any case): General Number, Currency, Fixed, Standard, Percent, Scientific,
 * Yes/No, True/False, On/Off, General Date, Long Date, Medium Date, Short Date, Long Time,
 * Medium Time, Short Time.</li>
 * <li>Numeric masks: {@code 0 # . , % E+ E- e+ e-}, literals ({@code "text"}, {@code \c}, other
 * characters), up to four sections {@code positive;negative;zero;null}. Rounding is half away from
 * zero on the decimal value (at most 15 significant digits of a Double, 7 of a Single). A one-section
 * mask puts "-" before a negative number; a negative section prints the absolute value. A mask with
 * "." always prints the decimal separator ({@code Format(8, "#.##")} is "8,"), as VB does.</li>
 * <li>Date masks (any case): {@code yyyy yy y m mm mmm mmmm d dd ddd dddd ddddd dddddd w ww q h hh
 * n nn s ss ttttt c AM/PM am/pm A/P a/p AMPM / :}; {@code m}/{@code mm} right after an hour is the
 * minute.</li>
 * <li>Text masks with {@code @ & < > !}.</li>
 * <li>Null with a mask: the fourth section if the mask has one (formatted as zero), else "".</li>
 * <li>A text value is read as a number (Hungarian CDbl) for a numeric mask, as a date for a date mask;
 * a text that isn't one comes back unchanged.</li>
 * </ul>
 */
public final class VbFormat {
    private VbFormat() {
    }

    static final char DECIMAL = ',';
    static final String GROUP = " ";
    static final String DATE_SEPARATOR = ".";
    static final String TIME_SEPARATOR = ":";
    static final String AM = "de.";
    static final String PM = "du.";

    private static final String[] MONTHS = {"január", "február", "március", "április", "május", "június",
        "július", "augusztus", "szeptember", "október", "november", "december"};
    private static final String[] MONTHS_SHORT = {"jan.", "febr.", "márc.", "ápr.", "máj.", "jún.", "júl.",
        "aug.", "szept.", "okt.", "nov.", "dec."};
    /** Sunday first, as VB's weekday numbers. */
    private static final String[] DAYS = {"vasárnap", "hétfő", "kedd", "szerda", "csütörtök", "péntek",
        "szombat"};
    private static final String[] DAYS_SHORT = {"V", "H", "K", "Sze", "Cs", "P", "Szo"};

    /** Format(value): CStr, with Null as "". */
    public static String Format(Object value) {
        return Format(value, "");
    }

    public static String Format(Object value, String mask) {
        Object v = normalize(value);
        if (mask == null || mask.isEmpty()) {
            return v == null ? "" : Conv.CStr(v);
        }
        String named = named(v, mask);
        if (named != null) {
            return named;
        }
        Mask m = mask(mask);
        List<String> sections = m.sections();
        if (v == null) {
            if (sections.size() >= 4) {
                return m.number(3).format(BigDecimal.ZERO, false);
            }
            return "";
        }
        boolean digits = m.digits();
        boolean dateTokens = m.dateTokens();
        if (v instanceof String s) {
            if (m.text() && !digits) {
                return formatText(s, sections);
            }
            if (dateTokens && !digits) {
                if (Conv.isDate(s)) {
                    v = Conv.CDate(s);
                } else if (Conv.isNumeric(s)) {
                    v = Conv.CDbl(s);
                } else {
                    return s;
                }
            } else if (Conv.isNumeric(s)) {
                v = Conv.CDbl(s);
            } else {
                return s;
            }
        }
        boolean asDate = v instanceof LocalDateTime ? dateTokens || !digits : !digits && dateTokens;
        if (asDate) {
            LocalDateTime d = v instanceof LocalDateTime ldt ? ldt : Conv.fromOADate(Conv.CDbl(v));
            return formatDate(d, sections.get(0));
        }
        BigDecimal n = exact(v);
        int sign = n.signum();
        if (sign < 0 && sections.size() >= 2 && !sections.get(1).isEmpty()) {
            return m.number(1).format(n.abs(), false);
        }
        if (sign == 0 && sections.size() >= 3 && !sections.get(2).isEmpty()) {
            return m.number(2).format(BigDecimal.ZERO, false);
        }
        return m.number(0).format(n.abs(), sign < 0);
    }

    /** A mask analysed once: its sections, what kind of placeholders it holds, its numeric sections. */
    private record Mask(List<String> sections, boolean digits, boolean dateTokens, boolean text,
                        NumberSection[] numbers) {
        NumberSection number(int section) {
            return numbers[section];
        }
    }

    private static final java.util.Map<String, Mask> MASKS = new java.util.concurrent.ConcurrentHashMap<>();

    private static Mask mask(String mask) {
        Mask m = MASKS.get(mask);
        if (m == null) {
            List<String> sections = sections(mask);
            NumberSection[] numbers = new NumberSection[sections.size()];
            for (int i = 0; i < numbers.length; i++) {
                numbers[i] = new NumberSection(sections.get(i));
            }
            m = new Mask(List.copyOf(sections), hasDigitPlaceholder(mask), hasDateToken(mask),
                    hasTextPlaceholder(mask), numbers);
            if (MASKS.size() > 500) {
                MASKS.clear(); // masks built from data: keep the cache small
            }
            MASKS.put(mask, m);
        }
        return m;
    }

    // ------------------------------------------------------------------------------------------------
    // values

    private static Object normalize(Object v) {
        if (v instanceof java.util.Date || v instanceof LocalDate || v instanceof LocalTime) {
            return Conv.CDate(v);
        }
        return v;
    }

    private static final MathContext DOUBLE_DIGITS = new MathContext(15, RoundingMode.HALF_EVEN);
    private static final MathContext SINGLE_DIGITS = new MathContext(7, RoundingMode.HALF_EVEN);

    /** The exact decimal value of a number: a Double to 15 significant digits, a Single to 7. */
    private static BigDecimal exact(Object v) {
        if (v instanceof BigDecimal bd) {
            return bd;
        }
        if (v instanceof Double d) {
            checkFinite(d);
            return d == 0 ? BigDecimal.ZERO : BigDecimal.valueOf(d).round(DOUBLE_DIGITS);
        }
        if (v instanceof Float f) {
            checkFinite(f);
            return f == 0 ? BigDecimal.ZERO : new BigDecimal(f).round(SINGLE_DIGITS);
        }
        BigDecimal whole = Conv.wholeValue(v);
        if (whole != null) {
            return whole;
        }
        if (v instanceof LocalDateTime d) {
            return exact(Conv.toOADate(d));
        }
        if (v instanceof Number n) {
            return exact(n.doubleValue());
        }
        return exact(Conv.CDbl(v));
    }

    private static void checkFinite(double d) {
        if (Double.isNaN(d) || Double.isInfinite(d)) {
            throw new VbException(VbException.OVERFLOW, "Overflow");
        }
    }

    // ------------------------------------------------------------------------------------------------
    // named formats

    private static String named(Object v, String mask) {
        String name = mask.strip().toLowerCase(Locale.ROOT);
        switch (name) {
            case "general number", "currency", "fixed", "standard", "percent", "scientific",
                 "yes/no", "true/false", "on/off" -> {
                if (v == null) {
                    return "";
                }
                Object n = v;
                if (v instanceof String s) {
                    if (!Conv.isNumeric(s)) {
                        return s;
                    }
                    n = Conv.CDbl(s);
                }
                if (n instanceof LocalDateTime d) {
                    n = Conv.toOADate(d);
                }
                return switch (name) {
                    case "general number" -> Conv.CStr(n instanceof Boolean b ? (b ? -1 : 0) : n);
                    case "currency" -> Format(n, "#,##0.00 \"Ft\"");
                    case "fixed" -> Format(n, "0.00");
                    case "standard" -> Format(n, "#,##0.00");
                    case "percent" -> Format(n, "0.00%");
                    case "scientific" -> Format(n, "0.00E+00");
                    case "yes/no" -> exact(n).signum() == 0 ? "No" : "Yes";
                    case "true/false" -> exact(n).signum() == 0 ? "False" : "True";
                    default -> exact(n).signum() == 0 ? "Off" : "On";
                };
            }
            case "general date", "long date", "medium date", "short date", "long time", "medium time",
                 "short time" -> {
                if (v == null) {
                    return "";
                }
                LocalDateTime d;
                if (v instanceof LocalDateTime ldt) {
                    d = ldt;
                } else if (v instanceof String s) {
                    if (Conv.isDate(s)) {
                        d = Conv.CDate(s);
                    } else if (Conv.isNumeric(s)) {
                        d = Conv.fromOADate(Conv.CDbl(s));
                    } else {
                        return s;
                    }
                } else {
                    d = Conv.fromOADate(Conv.CDbl(v));
                }
                return switch (name) {
                    case "general date" -> Conv.dateTimeText(d);
                    case "long date" -> formatDate(d, "dddddd");
                    case "medium date" -> formatDate(d, "dd-mmm-yy");
                    case "short date" -> formatDate(d, "ddddd");
                    case "long time" -> formatDate(d, "ttttt");
                    case "medium time" -> formatDate(d, "hh:nn AMPM");
                    default -> formatDate(d, "hh:nn");
                };
            }
            default -> {
                return null;
            }
        }
    }

    // ------------------------------------------------------------------------------------------------
    // mask scanning

    /** The mask split at ';' outside quotes and escapes. */
    static List<String> sections(String mask) {
        List<String> out = new ArrayList<>();
        StringBuilder cur = new StringBuilder();
        boolean quoted = false;
        for (int i = 0; i < mask.length(); i++) {
            char c = mask.charAt(i);
            if (quoted) {
                cur.append(c);
                if (c == '"') {
                    quoted = false;
                }
            } else if (c == '"') {
                quoted = true;
                cur.append(c);
            } else if (c == '\\' && i + 1 < mask.length()) {
                cur.append(c).append(mask.charAt(++i));
            } else if (c == ';') {
                out.add(cur.toString());
                cur.setLength(0);
            } else {
                cur.append(c);
            }
        }
        out.add(cur.toString());
        return out;
    }

    /** The characters of the mask outside quotes and escapes. */
    private static String bare(String mask) {
        StringBuilder sb = new StringBuilder();
        boolean quoted = false;
        for (int i = 0; i < mask.length(); i++) {
            char c = mask.charAt(i);
            if (quoted) {
                if (c == '"') {
                    quoted = false;
                }
            } else if (c == '"') {
                quoted = true;
            } else if (c == '\\') {
                i++;
            } else {
                sb.append(c);
            }
        }
        return sb.toString();
    }

    private static boolean hasDigitPlaceholder(String mask) {
        String b = bare(mask);
        return b.indexOf('0') >= 0 || b.indexOf('#') >= 0;
    }

    private static boolean hasTextPlaceholder(String mask) {
        String b = bare(mask);
        return b.indexOf('@') >= 0 || b.indexOf('&') >= 0;
    }

    private static boolean hasDateToken(String mask) {
        String b = bare(mask).toLowerCase(Locale.ROOT);
        for (int i = 0; i < b.length(); i++) {
            if ("dmyhnswqc".indexOf(b.charAt(i)) >= 0) {
                return true;
            }
        }
        return b.contains("ttttt") || b.contains("am/pm") || b.contains("a/p") || b.contains("ampm");
    }

    // ------------------------------------------------------------------------------------------------
    // numbers

    private enum T { ZERO, HASH, POINT, COMMA, PERCENT, EXP, LIT }

    private record Tok(T type, String text) {
        boolean digit() {
            return type == T.ZERO || type == T.HASH;
        }
    }

    private static List<Tok> numberTokens(String section) {
        List<Tok> toks = new ArrayList<>();
        boolean point = false;
        for (int i = 0; i < section.length(); i++) {
            char c = section.charAt(i);
            switch (c) {
                case '"' -> {
                    int close = section.indexOf('"', i + 1);
                    int end = close < 0 ? section.length() : close;
                    toks.add(new Tok(T.LIT, section.substring(i + 1, end)));
                    i = end;
                }
                case '\\' -> {
                    if (i + 1 < section.length()) {
                        toks.add(new Tok(T.LIT, String.valueOf(section.charAt(++i))));
                    }
                }
                case '0' -> toks.add(new Tok(T.ZERO, "0"));
                case '#' -> toks.add(new Tok(T.HASH, "#"));
                case '.' -> {
                    if (point) {
                        toks.add(new Tok(T.LIT, "."));
                    } else {
                        point = true;
                        toks.add(new Tok(T.POINT, "."));
                    }
                }
                case ',' -> toks.add(new Tok(T.COMMA, ","));
                case '%' -> toks.add(new Tok(T.PERCENT, "%"));
                case 'E', 'e' -> {
                    if (i + 1 < section.length() && (section.charAt(i + 1) == '+' || section.charAt(i + 1) == '-')) {
                        toks.add(new Tok(T.EXP, section.substring(i, i + 2)));
                        i++;
                    } else {
                        toks.add(new Tok(T.LIT, String.valueOf(c)));
                    }
                }
                default -> toks.add(new Tok(T.LIT, String.valueOf(c)));
            }
        }
        return toks;
    }

    /** One section of a numeric mask, analysed once. */
    private static final class NumberSection {
        private final List<Tok> toks;
        private final int expAt;
        private final List<Tok> expo;
        private final int pointAt;
        private final List<Tok> intPart;
        private final List<Tok> fracPart;
        private final int intPlaces;
        private final boolean grouping;
        private final int fracPlaces;
        private final int shift;
        private final int minLen;

        NumberSection(String section) {
            toks = numberTokens(section);
            int expAt = -1;
            for (int i = 0; i < toks.size(); i++) {
                if (toks.get(i).type() == T.EXP) {
                    expAt = i;
                    break;
                }
            }
            this.expAt = expAt;
            List<Tok> mantissa = expAt < 0 ? toks : toks.subList(0, expAt);
            expo = expAt < 0 ? List.of() : toks.subList(expAt + 1, toks.size());
            int pointAt = -1;
            for (int i = 0; i < mantissa.size(); i++) {
                if (mantissa.get(i).type() == T.POINT) {
                    pointAt = i;
                    break;
                }
            }
            this.pointAt = pointAt;
            intPart = pointAt < 0 ? mantissa : mantissa.subList(0, pointAt);
            fracPart = pointAt < 0 ? List.of() : mantissa.subList(pointAt + 1, mantissa.size());

            int intPlaces = 0;
            int lastIntDigit = -1;
            int firstIntDigit = -1;
            for (int i = 0; i < intPart.size(); i++) {
                if (intPart.get(i).digit()) {
                    intPlaces++;
                    lastIntDigit = i;
                    if (firstIntDigit < 0) {
                        firstIntDigit = i;
                    }
                }
            }
            this.intPlaces = intPlaces;
            boolean grouping = false;
            int scaling = 0;
            for (int i = 0; i < intPart.size(); i++) {
                if (intPart.get(i).type() == T.COMMA && firstIntDigit >= 0 && i > firstIntDigit) {
                    if (i < lastIntDigit) {
                        grouping = true;
                    } else {
                        scaling++;
                    }
                }
            }
            this.grouping = grouping;
            int fracPlaces = 0;
            for (Tok t : fracPart) {
                if (t.digit()) {
                    fracPlaces++;
                }
            }
            this.fracPlaces = fracPlaces;
            int percents = 0;
            for (Tok t : toks) {
                if (t.type() == T.PERCENT) {
                    percents++;
                }
            }
            shift = 2 * percents - 3 * scaling;
            int zeroFrom = -1;
            int q = 0;
            for (Tok t : intPart) {
                if (t.digit()) {
                    if (t.type() == T.ZERO && zeroFrom < 0) {
                        zeroFrom = q;
                    }
                    q++;
                }
            }
            minLen = zeroFrom < 0 ? 0 : intPlaces - zeroFrom;
        }

        /** Formats a non-negative value; {@code minus} puts "-" in front. */
        String format(BigDecimal value, boolean minus) {
            BigDecimal a = value.scaleByPowerOfTen(shift);

            String expText = null;
            if (expAt >= 0) {
                int exponent = 0;
                BigDecimal m = a;
                if (a.signum() != 0) {
                    int e = a.precision() - a.scale() - 1;
                    int move = e - (intPlaces - 1);
                    m = a.movePointLeft(move).setScale(fracPlaces, RoundingMode.HALF_UP);
                    BigDecimal limit = BigDecimal.TEN.pow(Math.max(intPlaces, 0));
                    if (m.compareTo(limit) >= 0) {
                        move++;
                        m = a.movePointLeft(move).setScale(fracPlaces, RoundingMode.HALF_UP);
                    }
                    exponent = move;
                }
                a = m;
                expText = exponentText(exponent, toks.get(expAt).text(), expo);
            }
            BigDecimal rounded = a.setScale(fracPlaces, RoundingMode.HALF_UP);
            String intDigits = rounded.abs().toBigInteger().toString();
            if (intDigits.equals("0")) {
                intDigits = "";
            }
            String fracDigits = fracPlaces == 0 ? ""
                    : rounded.abs().remainder(BigDecimal.ONE).movePointRight(fracPlaces).toBigInteger().toString();
            while (fracDigits.length() < fracPlaces) {
                fracDigits = "0" + fracDigits;
            }

            StringBuilder out = new StringBuilder();
            if (minus) {
                out.append('-');
            }
            // integer part: placeholders filled from the right, the surplus digits at the first one
            StringBuilder digits = new StringBuilder(intDigits);
            while (digits.length() < minLen) {
                digits.insert(0, '0');
            }
            int len = digits.length();
            int next = 0; // next digit of 'digits' to print
            int q = 0;
            for (int i = 0; i < intPart.size(); i++) {
                Tok t = intPart.get(i);
                if (t.digit()) {
                    int fromRight = intPlaces - 1 - q;
                    int upTo = len - fromRight; // print digits [next, upTo)
                    while (next < upTo) {
                        appendDigit(out, digits, next++, grouping);
                    }
                    q++;
                } else if (t.type() == T.LIT) {
                    out.append(t.text());
                } else if (t.type() == T.PERCENT) {
                    out.append('%');
                }
            }
            if (intPlaces == 0) {
                while (next < len) {
                    appendDigit(out, digits, next++, grouping);
                }
            }
            if (pointAt >= 0) {
                out.append(DECIMAL);
                int lastNeeded = -1;
                int t2 = 0;
                for (Tok t : fracPart) {
                    if (t.digit()) {
                        if (t.type() == T.ZERO || fracDigits.charAt(t2) != '0') {
                            lastNeeded = t2;
                        }
                        t2++;
                    }
                }
                t2 = 0;
                for (Tok t : fracPart) {
                    if (t.digit()) {
                        if (t2 <= lastNeeded) {
                            out.append(fracDigits.charAt(t2));
                        }
                        t2++;
                    } else if (t.type() == T.LIT) {
                        out.append(t.text());
                    } else if (t.type() == T.PERCENT) {
                        out.append('%');
                    }
                }
            }
            if (expText != null) {
                out.append(expText);
            }
            return out.toString();
        }
    }

    private static void appendDigit(StringBuilder out, CharSequence digits, int j, boolean grouping) {
        out.append(digits.charAt(j));
        int rest = digits.length() - 1 - j;
        if (grouping && rest > 0 && rest % 3 == 0) {
            out.append(GROUP);
        }
    }

    private static String exponentText(int exponent, String marker, List<Tok> expo) {
        StringBuilder sb = new StringBuilder();
        sb.append(marker.charAt(0));
        if (exponent < 0) {
            sb.append('-');
        } else if (marker.charAt(1) == '+') {
            sb.append('+');
        }
        int zeros = 0;
        for (Tok t : expo) {
            if (t.type() == T.ZERO) {
                zeros++;
            }
        }
        String d = Integer.toString(Math.abs(exponent));
        if (d.equals("0") && zeros == 0) {
            d = "";
        }
        for (int i = d.length(); i < zeros; i++) {
            sb.append('0');
        }
        sb.append(d);
        for (Tok t : expo) {
            if (t.type() == T.LIT) {
                sb.append(t.text());
            }
        }
        return sb.toString();
    }

    // ------------------------------------------------------------------------------------------------
    // dates

    private static String formatDate(LocalDateTime value, String section) {
        LocalDateTime d = value.truncatedTo(ChronoUnit.SECONDS);
        if (value.getNano() >= 500_000_000) {
            d = d.plusSeconds(1);
        }
        boolean twelve = false;
        if (section.indexOf('a') >= 0 || section.indexOf('A') >= 0) {
            String lower = section.toLowerCase(Locale.ROOT);
            twelve = lower.contains("am/pm") || lower.contains("a/p") || lower.contains("ampm");
        }
        StringBuilder out = new StringBuilder();
        boolean afterHour = false;
        int n = section.length();
        for (int i = 0; i < n; i++) {
            char c = section.charAt(i);
            char lc = Character.toLowerCase(c);
            int run = 1;
            while (i + run < n && Character.toLowerCase(section.charAt(i + run)) == lc) {
                run++;
            }
            switch (lc) {
                case '"' -> {
                    int close = section.indexOf('"', i + 1);
                    int end = close < 0 ? n : close;
                    out.append(section, i + 1, end);
                    i = end;
                    continue;
                }
                case '\\' -> {
                    if (i + 1 < n) {
                        out.append(section.charAt(++i));
                    }
                    continue;
                }
                case 'y' -> {
                    if (run >= 3) {
                        pad(out, d.getYear(), 4);
                    } else if (run == 2) {
                        pad(out, d.getYear() % 100, 2);
                    } else {
                        out.append(d.getDayOfYear());
                    }
                    afterHour = false;
                }
                case 'm' -> {
                    if (run <= 2 && afterHour) {
                        pad(out, d.getMinute(), run);
                    } else if (run == 1) {
                        out.append(d.getMonthValue());
                    } else if (run == 2) {
                        pad(out, d.getMonthValue(), 2);
                    } else if (run == 3) {
                        out.append(MONTHS_SHORT[d.getMonthValue() - 1]);
                    } else {
                        out.append(MONTHS[d.getMonthValue() - 1]);
                    }
                    afterHour = false;
                }
                case 'd' -> {
                    int wd = d.getDayOfWeek().getValue() % 7;
                    switch (Math.min(run, 6)) {
                        case 1 -> out.append(d.getDayOfMonth());
                        case 2 -> pad(out, d.getDayOfMonth(), 2);
                        case 3 -> out.append(DAYS_SHORT[wd]);
                        case 4 -> out.append(DAYS[wd]);
                        case 5 -> out.append(Conv.dateText(d));
                        default -> {
                            out.append(d.getYear()).append(". ").append(MONTHS[d.getMonthValue() - 1])
                                    .append(' ').append(d.getDayOfMonth()).append('.');
                        }
                    }
                    afterHour = false;
                }
                case 'w' -> {
                    if (run >= 2) {
                        // VB's default: weeks start on Sunday, week 1 holds January 1
                        int jan1 = d.withDayOfYear(1).getDayOfWeek().getValue() % 7;
                        out.append((d.getDayOfYear() - 1 + jan1) / 7 + 1);
                    } else {
                        out.append(d.getDayOfWeek().getValue() % 7 + 1);
                    }
                    afterHour = false;
                }
                case 'q' -> {
                    out.append((d.getMonthValue() - 1) / 3 + 1);
                    afterHour = false;
                }
                case 'h' -> {
                    int h = d.getHour();
                    if (twelve) {
                        h = h % 12 == 0 ? 12 : h % 12;
                    }
                    pad(out, h, Math.min(run, 2));
                    afterHour = true;
                }
                case 'n' -> {
                    pad(out, d.getMinute(), Math.min(run, 2));
                    afterHour = false;
                }
                case 's' -> {
                    pad(out, d.getSecond(), Math.min(run, 2));
                    afterHour = false;
                }
                case 'c' -> {
                    out.append(Conv.dateTimeText(d));
                    afterHour = false;
                }
                case 't' -> {
                    if (run >= 5) {
                        out.append(Conv.timeText(d));
                        run = 5;
                    } else {
                        out.append(section, i, i + run);
                    }
                    afterHour = false;
                }
                case 'a' -> {
                    String rest = section.substring(i);
                    String restLower = rest.toLowerCase(Locale.ROOT);
                    boolean pm = d.getHour() >= 12;
                    if (restLower.startsWith("am/pm")) {
                        String word = pm ? rest.substring(3, 5) : rest.substring(0, 2);
                        out.append(word);
                        run = 5;
                    } else if (restLower.startsWith("a/p")) {
                        out.append(pm ? rest.charAt(2) : rest.charAt(0));
                        run = 3;
                    } else if (restLower.startsWith("ampm")) {
                        out.append(pm ? PM : AM);
                        run = 4;
                    } else {
                        out.append(c);
                        run = 1;
                    }
                }
                case '/' -> {
                    out.append(DATE_SEPARATOR);
                    run = 1;
                }
                case ':' -> {
                    out.append(TIME_SEPARATOR);
                    run = 1;
                }
                default -> {
                    out.append(c);
                    run = 1;
                }
            }
            i += run - 1;
        }
        return out.toString();
    }

    private static void pad(StringBuilder sb, int n, int width) {
        String s = Integer.toString(n);
        for (int i = s.length(); i < width; i++) {
            sb.append('0');
        }
        sb.append(s);
    }

    // ------------------------------------------------------------------------------------------------
    // texts

    private static String formatText(String s, List<String> sections) {
        String section = s.isEmpty() && sections.size() >= 2 ? sections.get(1) : sections.get(0);
        String b = section;
        boolean leftToRight = false;
        int upperLower = 0;
        List<String> parts = new ArrayList<>(); // "@", "&" or literal texts
        for (int i = 0; i < b.length(); i++) {
            char c = b.charAt(i);
            switch (c) {
                case '"' -> {
                    int close = b.indexOf('"', i + 1);
                    int end = close < 0 ? b.length() : close;
                    parts.add("L" + b.substring(i + 1, end));
                    i = end;
                }
                case '\\' -> {
                    if (i + 1 < b.length()) {
                        parts.add("L" + b.charAt(++i));
                    }
                }
                case '@', '&' -> parts.add(String.valueOf(c));
                case '!' -> leftToRight = true;
                case '<' -> upperLower = -1;
                case '>' -> upperLower = 1;
                default -> parts.add("L" + c);
            }
        }
        String text = upperLower < 0 ? s.toLowerCase(Locale.ROOT) : upperLower > 0 ? s.toUpperCase(Locale.ROOT) : s;
        int places = 0;
        for (String p : parts) {
            if (!p.startsWith("L")) {
                places++;
            }
        }
        String[] fill = new String[places];
        int len = text.length();
        if (leftToRight) {
            for (int k = 0; k < places; k++) {
                fill[k] = k < len ? String.valueOf(text.charAt(k)) : null;
            }
            if (len > places && places > 0) {
                fill[places - 1] = fill[places - 1] + text.substring(places);
            }
        } else {
            for (int k = 0; k < places; k++) {
                int j = len - places + k;
                fill[k] = j >= 0 ? String.valueOf(text.charAt(j)) : null;
            }
            if (len > places && places > 0) {
                fill[0] = text.substring(0, len - places + 1);
            }
        }
        StringBuilder out = new StringBuilder();
        int k = 0;
        for (String p : parts) {
            if (p.startsWith("L")) {
                out.append(p, 1, p.length());
            } else {
                String f = fill[k++];
                out.append(f != null ? f : p.equals("@") ? " " : "");
            }
        }
        return out.toString();
    }
}
