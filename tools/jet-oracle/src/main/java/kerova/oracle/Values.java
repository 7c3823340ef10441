package kerova.oracle;

import java.math.BigDecimal;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.time.format.DateTimeParseException;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.DataType;

/**
 * The text notation of values shared by the dump and the write scripts: formatting what Jackcess
 * read, and parsing script values back into what Jackcess writes.
 */
final class Values {
    private Values() {}

    static final String NULL = "\\N";

    static String format(Column column, Object value) {
        if (value == null) {
            return NULL;
        }
        switch (column.getType()) {
            case BOOLEAN:
                return ((Boolean) value) ? "1" : "0";
            case BYTE:
                return Integer.toString(((Number) value).intValue() & 0xFF);
            case INT:
            case LONG:
                return Long.toString(((Number) value).longValue());
            case MONEY:
                return ((BigDecimal) value).setScale(4).toPlainString();
            case FLOAT:
                return String.format("0x%08x", Float.floatToRawIntBits((Float) value));
            case DOUBLE:
                return String.format("0x%016x", Double.doubleToRawLongBits((Double) value));
            case SHORT_DATE_TIME:
                return formatDate((LocalDateTime) value);
            case TEXT:
            case MEMO:
                return escape(value.toString());
            case BINARY:
            case OLE:
                return "x" + hex((byte[]) value);
            case NUMERIC:
                return ((BigDecimal) value).toPlainString();
            case GUID:
            default:
                return escape(value.toString());
        }
    }

    /** yyyy-MM-dd HH:mm:ss.SSS; the year is zero-padded to at least four digits. */
    static String formatDate(LocalDateTime t) {
        return String.format("%04d-%02d-%02d %02d:%02d:%02d.%03d", t.getYear(), t.getMonthValue(),
                t.getDayOfMonth(), t.getHour(), t.getMinute(), t.getSecond(), t.getNano() / 1_000_000);
    }

    static String escape(String s) {
        StringBuilder b = null;
        for (int i = 0; i < s.length(); i++) {
            char c = s.charAt(i);
            String rep = switch (c) {
                case '\\' -> "\\\\";
                case '\t' -> "\\t";
                case '\n' -> "\\n";
                case '\r' -> "\\r";
                default -> null;
            };
            if (rep != null && b == null) {
                b = new StringBuilder(s.length() + 8).append(s, 0, i);
            }
            if (b != null) {
                if (rep != null) b.append(rep); else b.append(c);
            }
        }
        return b == null ? s : b.toString();
    }

    static String unescape(String s) {
        if (s.indexOf('\\') < 0) {
            return s;
        }
        StringBuilder b = new StringBuilder(s.length());
        for (int i = 0; i < s.length(); i++) {
            char c = s.charAt(i);
            if (c != '\\') {
                b.append(c);
                continue;
            }
            if (++i >= s.length()) {
                throw new Main.Failure("text ends with a lone backslash: " + s);
            }
            switch (s.charAt(i)) {
                case '\\' -> b.append('\\');
                case 't' -> b.append('\t');
                case 'n' -> b.append('\n');
                case 'r' -> b.append('\r');
                default -> throw new Main.Failure("unknown escape \\" + s.charAt(i) + " in: " + s);
            }
        }
        return b.toString();
    }

    static String hex(byte[] bytes) {
        StringBuilder b = new StringBuilder(bytes.length * 2);
        for (byte x : bytes) {
            b.append(Character.forDigit((x >> 4) & 0xF, 16)).append(Character.forDigit(x & 0xF, 16));
        }
        return b.toString();
    }

    /**
     * A script value for a column: the dump's notation, plus plain decimals for FLOAT and DOUBLE,
     * dates without seconds or milliseconds, and "memo:COUNT:PATTERN" for long texts.
     */
    static Object parse(Column column, String text) {
        if (text.equals(NULL)) {
            return null;
        }
        DataType type = column.getType();
        try {
            switch (type) {
                case BOOLEAN:
                    if (text.equals("1") || text.equalsIgnoreCase("true")) return Boolean.TRUE;
                    if (text.equals("0") || text.equalsIgnoreCase("false")) return Boolean.FALSE;
                    throw new Main.Failure("not a boolean: " + text);
                case BYTE: {
                    int v = Integer.parseInt(text);
                    if (v < 0 || v > 255) throw new Main.Failure("byte out of range: " + text);
                    return (byte) v;
                }
                case INT:
                    return Short.parseShort(text);
                case LONG:
                    return Integer.parseInt(text);
                case MONEY:
                case NUMERIC:
                    return new BigDecimal(text);
                case FLOAT:
                    if (text.startsWith("0x")) return Float.intBitsToFloat(Integer.parseUnsignedInt(text.substring(2), 16));
                    return Float.parseFloat(text);
                case DOUBLE:
                    if (text.startsWith("0x")) return Double.longBitsToDouble(Long.parseUnsignedLong(text.substring(2), 16));
                    return Double.parseDouble(text);
                case SHORT_DATE_TIME:
                    return parseDate(text);
                case TEXT:
                case MEMO:
                    return parseText(text);
                case BINARY:
                case OLE:
                    return parseHex(text);
                case GUID:
                    return text;
                default:
                    throw new Main.Failure("cannot write values of type " + type);
            }
        } catch (NumberFormatException e) {
            throw new Main.Failure("bad " + type + " value for column " + column.getName() + ": " + text);
        }
    }

    static String parseText(String text) {
        if (text.startsWith("memo:")) {
            int colon = text.indexOf(':', 5);
            if (colon > 5) {
                try {
                    int count = Integer.parseInt(text.substring(5, colon));
                    String pattern = unescape(text.substring(colon + 1));
                    if (count >= 0 && !pattern.isEmpty()) {
                        return repeat(pattern, count);
                    }
                } catch (NumberFormatException e) {
                    // not the shorthand: an ordinary text
                }
            }
        }
        return unescape(text);
    }

    /** The pattern repeated and cut to exactly count UTF-16 units. */
    static String repeat(String pattern, int count) {
        StringBuilder b = new StringBuilder(count);
        while (b.length() < count) {
            b.append(pattern, 0, Math.min(pattern.length(), count - b.length()));
        }
        return b.toString();
    }

    static LocalDateTime parseDate(String text) {
        try {
            if (text.length() == 10) {
                return LocalDate.parse(text).atStartOfDay();
            }
            int space = text.indexOf(' ');
            if (space != 10) throw new Main.Failure("not a date: " + text);
            return LocalDateTime.of(LocalDate.parse(text.substring(0, 10)), LocalTime.parse(text.substring(11)));
        } catch (DateTimeParseException e) {
            throw new Main.Failure("not a date: " + text);
        }
    }

    static byte[] parseHex(String text) {
        if (!text.startsWith("x") || (text.length() % 2) != 1) {
            throw new Main.Failure("binary values are x followed by pairs of hex digits: " + text);
        }
        byte[] out = new byte[(text.length() - 1) / 2];
        for (int i = 0; i < out.length; i++) {
            int hi = Character.digit(text.charAt(1 + 2 * i), 16);
            int lo = Character.digit(text.charAt(2 + 2 * i), 16);
            if (hi < 0 || lo < 0) throw new Main.Failure("bad hex digit in: " + text);
            out[i] = (byte) ((hi << 4) | lo);
        }
        return out;
    }
}
