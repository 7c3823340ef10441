package kerova.core.db.sql;

import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import kerova.core.db.DaoException;

/** Splits a statement or filter into tokens. Quotes, brackets and {@code #dates#} must be closed. */
final class Lexer {

    enum Kind { IDENT, NUMBER, STRING, DATE, SYMBOL, EOF }

    /**
     * One token. {@code text} is the identifier (without brackets), the symbol, or the literal's source;
     * {@code value} the literal's value; {@code start}/{@code end} its span in the source.
     */
    record Token(Kind kind, String text, Object value, boolean bracketed, int start, int end) {
        boolean isSymbol(String s) {
            return kind == Kind.SYMBOL && text.equals(s);
        }

        /** A bare (unbracketed) word equal to {@code word}, without regard to case. */
        boolean isWord(String word) {
            return kind == Kind.IDENT && !bracketed && text.equalsIgnoreCase(word);
        }
    }

    private final String src;
    private int pos;

    private Lexer(String src) {
        this.src = src;
    }

    static List<Token> tokenize(String src) {
        return new Lexer(src).run();
    }

    private List<Token> run() {
        List<Token> out = new ArrayList<>();
        int n = src.length();
        while (true) {
            while (pos < n && Character.isWhitespace(src.charAt(pos))) {
                pos++;
            }
            if (pos >= n) {
                out.add(new Token(Kind.EOF, "", null, false, n, n));
                return out;
            }
            int start = pos;
            char c = src.charAt(pos);
            if (c == '\'' || c == '"') {
                out.add(string(c, start));
            } else if (c == '[') {
                int close = src.indexOf(']', pos + 1);
                if (close < 0) {
                    throw error("Invalid bracketing of name '" + src.substring(start) + "'.");
                }
                String name = src.substring(pos + 1, close);
                if (name.isBlank()) {
                    throw error("Invalid bracketing of name '[]'.");
                }
                pos = close + 1;
                out.add(new Token(Kind.IDENT, name, null, true, start, pos));
            } else if (c == '#') {
                int close = src.indexOf('#', pos + 1);
                if (close < 0) {
                    throw error("Syntax error in date in query expression '" + src.substring(start) + "'.");
                }
                String body = src.substring(pos + 1, close);
                pos = close + 1;
                LocalDateTime d = parseDate(body);
                if (d == null) {
                    throw error("Syntax error in date in query expression '" + src.substring(start, pos) + "'.");
                }
                out.add(new Token(Kind.DATE, src.substring(start, pos), d, false, start, pos));
            } else if (isDigit(c) || (c == '.' && pos + 1 < n && isDigit(src.charAt(pos + 1)))) {
                out.add(number(start));
            } else if (Character.isLetter(c) || c == '_') {
                while (pos < n && (Character.isLetterOrDigit(src.charAt(pos)) || src.charAt(pos) == '_')) {
                    pos++;
                }
                out.add(new Token(Kind.IDENT, src.substring(start, pos), null, false, start, pos));
            } else {
                String sym = symbol(c);
                if (sym == null) {
                    throw error("Syntax error (missing operator) in query expression '" + src.substring(start) + "'.");
                }
                pos += sym.length();
                out.add(new Token(Kind.SYMBOL, sym, null, false, start, pos));
            }
        }
    }

    private String symbol(char c) {
        String two = pos + 1 < src.length() ? src.substring(pos, pos + 2) : "";
        if (two.equals("<=") || two.equals(">=") || two.equals("<>")) {
            return two;
        }
        return "=<>+-*/\\^&(),;.!".indexOf(c) >= 0 ? String.valueOf(c) : null;
    }

    /** 'text' or "text"; the quote doubled inside stands for itself, as in Jet. */
    private Token string(char quote, int start) {
        StringBuilder sb = new StringBuilder();
        pos++;
        int n = src.length();
        while (true) {
            if (pos >= n) {
                throw error("Syntax error in string in query expression '" + src.substring(start) + "'.");
            }
            char c = src.charAt(pos++);
            if (c == quote) {
                if (pos < n && src.charAt(pos) == quote) {
                    sb.append(quote);
                    pos++;
                } else {
                    break;
                }
            } else {
                sb.append(c);
            }
        }
        return new Token(Kind.STRING, src.substring(start, pos), sb.toString(), false, start, pos);
    }

    private Token number(int start) {
        int n = src.length();
        boolean fraction = false;
        while (pos < n && isDigit(src.charAt(pos))) {
            pos++;
        }
        if (pos < n && src.charAt(pos) == '.') {
            fraction = true;
            pos++;
            while (pos < n && isDigit(src.charAt(pos))) {
                pos++;
            }
        }
        if (pos < n && (src.charAt(pos) == 'e' || src.charAt(pos) == 'E')) {
            int p = pos + 1;
            if (p < n && (src.charAt(p) == '+' || src.charAt(p) == '-')) {
                p++;
            }
            if (p < n && isDigit(src.charAt(p))) {
                fraction = true;
                pos = p;
                while (pos < n && isDigit(src.charAt(pos))) {
                    pos++;
                }
            }
        }
        if (pos < n && (Character.isLetter(src.charAt(pos)) || src.charAt(pos) == '_')) {
            throw error("Syntax error (missing operator) in query expression '" + src.substring(start) + "'.");
        }
        String text = src.substring(start, pos);
        Object value;
        if (fraction) {
            value = Double.parseDouble(text);
        } else {
            try {
                long l = Long.parseLong(text);
                value = l <= Integer.MAX_VALUE ? (Object) (int) l : (Object) (double) l;
            } catch (NumberFormatException e) {
                value = Double.parseDouble(text);
            }
        }
        return new Token(Kind.NUMBER, text, value, false, start, pos);
    }

    private static boolean isDigit(char c) {
        return c >= '0' && c <= '9';
    }

    private static DaoException error(String message) {
        return new DaoException(DaoException.SYNTAX_ERROR, message);
    }

    /**
     * The body of a {@code #...#} literal as Jet reads it: month/day/year (a first number above 12 is
     * taken as the day), or year-month-day, each with an optional time "H:MM[:SS] [AM|PM]"; or a time
     * alone (on 1899-12-30). Two-digit years: 00-29 are 20xx, 30-99 are 19xx. Null if not a date.
     */
    static LocalDateTime parseDate(String body) {
        String s = body.strip();
        if (s.isEmpty()) {
            return null;
        }
        try {
            String datePart = s;
            String timePart = null;
            int space = s.indexOf(' ');
            if (s.indexOf(':') >= 0 && (space < 0 || s.indexOf(':') < space)) {
                return timeOnly(s);
            }
            if (space >= 0) {
                datePart = s.substring(0, space);
                timePart = s.substring(space + 1).strip();
            }
            LocalDate date;
            if (datePart.matches("\\d{1,2}/\\d{1,2}/\\d{1,4}")) {
                String[] p = datePart.split("/");
                int a = Integer.parseInt(p[0]);
                int b = Integer.parseInt(p[1]);
                int y = year(p[2]);
                date = a > 12 ? LocalDate.of(y, b, a) : LocalDate.of(y, a, b);
            } else if (datePart.matches("\\d{3,4}-\\d{1,2}-\\d{1,2}")) {
                String[] p = datePart.split("-");
                date = LocalDate.of(Integer.parseInt(p[0]), Integer.parseInt(p[1]), Integer.parseInt(p[2]));
            } else {
                return null;
            }
            if (timePart == null || timePart.isEmpty()) {
                return date.atStartOfDay();
            }
            LocalDateTime t = timeOnly(timePart);
            return t == null ? null : date.atTime(t.toLocalTime());
        } catch (RuntimeException e) {
            return null;
        }
    }

    private static LocalDateTime timeOnly(String s) {
        String t = s.strip().toUpperCase(Locale.ROOT);
        int shift = -1;
        if (t.endsWith("AM") || t.endsWith("PM")) {
            shift = t.endsWith("PM") ? 12 : 0;
            t = t.substring(0, t.length() - 2).strip();
        }
        if (!t.matches("\\d{1,2}:\\d{1,2}(:\\d{1,2})?")) {
            return null;
        }
        String[] p = t.split(":");
        int h = Integer.parseInt(p[0]);
        int m = Integer.parseInt(p[1]);
        int sec = p.length > 2 ? Integer.parseInt(p[2]) : 0;
        if (shift >= 0) {
            if (h < 1 || h > 12) {
                return null;
            }
            h = h % 12 + shift;
        }
        return LocalDate.of(1899, 12, 30).atTime(LocalTime.of(h, m, sec));
    }

    private static int year(String digits) {
        int y = Integer.parseInt(digits);
        if (digits.length() <= 2) {
            return y < 30 ? 2000 + y : 1900 + y;
        }
        return y;
    }
}
