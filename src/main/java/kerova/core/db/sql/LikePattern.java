package kerova.core.db.sql;

import java.util.ArrayList;
import java.util.List;
import kerova.core.db.DaoException;

/**
 * A Jet (ANSI-89) LIKE pattern: {@code *} any run of characters, {@code ?} one character, {@code #}
 * one digit, {@code [abc]}, {@code [a-z]}, {@code [!abc]} one character of (or not of) a list. Letters
 * match without regard to case; accents count.
 */
final class LikePattern {
    private static final int LITERAL = 0;
    private static final int ANY_ONE = 1;
    private static final int DIGIT = 2;
    private static final int SET = 3;
    private static final int ANY_RUN = 4;

    private final int[] kinds;
    private final char[] chars;      // LITERAL: the character in lower case
    private final String[] sets;     // SET: pairs of range bounds (a-a for a single char), lower case
    private final boolean[] negated; // SET: [!...]
    private final String prefix;     // non-null when the pattern is "literal*"
    private final String exact;      // non-null when the pattern is only literals

    private LikePattern(int[] kinds, char[] chars, String[] sets, boolean[] negated) {
        this.kinds = kinds;
        this.chars = chars;
        this.sets = sets;
        this.negated = negated;
        int n = kinds.length;
        boolean allLiteral = true;
        for (int i = 0; i < n; i++) {
            if (kinds[i] != LITERAL && !(i == n - 1 && kinds[i] == ANY_RUN)) {
                allLiteral = false;
            }
        }
        if (allLiteral && n > 0 && kinds[n - 1] == ANY_RUN) {
            prefix = new String(chars, 0, n - 1);
            exact = null;
        } else if (allLiteral) {
            prefix = null;
            exact = new String(chars, 0, n);
        } else {
            prefix = null;
            exact = null;
        }
    }

    static LikePattern compile(String pattern) {
        List<Integer> kinds = new ArrayList<>();
        StringBuilder chars = new StringBuilder();
        List<String> sets = new ArrayList<>();
        List<Boolean> negs = new ArrayList<>();
        int n = pattern.length();
        for (int i = 0; i < n; i++) {
            char c = pattern.charAt(i);
            String set = null;
            boolean neg = false;
            int kind;
            switch (c) {
                case '*' -> {
                    if (!kinds.isEmpty() && kinds.get(kinds.size() - 1) == ANY_RUN) {
                        continue; // "**" is "*"
                    }
                    kind = ANY_RUN;
                }
                case '?' -> kind = ANY_ONE;
                case '#' -> kind = DIGIT;
                case '[' -> {
                    int close = pattern.indexOf(']', i + 1);
                    if (close < 0) {
                        throw new DaoException(DaoException.SYNTAX_ERROR, "Invalid pattern string");
                    }
                    String body = pattern.substring(i + 1, close);
                    i = close;
                    if (body.startsWith("!") && body.length() > 1) {
                        neg = true;
                        body = body.substring(1);
                    }
                    if (body.isEmpty()) {
                        continue; // "[]" matches the empty string
                    }
                    StringBuilder ranges = new StringBuilder();
                    for (int j = 0; j < body.length(); j++) {
                        char lo = Character.toLowerCase(body.charAt(j));
                        char hi = lo;
                        if (j + 2 < body.length() && body.charAt(j + 1) == '-') {
                            hi = Character.toLowerCase(body.charAt(j + 2));
                            j += 2;
                            if (hi < lo) {
                                throw new DaoException(DaoException.SYNTAX_ERROR, "Invalid pattern string");
                            }
                        }
                        ranges.append(lo).append(hi);
                    }
                    set = ranges.toString();
                    kind = SET;
                }
                default -> kind = LITERAL;
            }
            kinds.add(kind);
            chars.append(kind == LITERAL ? Character.toLowerCase(c) : '\0');
            sets.add(set);
            negs.add(neg);
        }
        int[] k = kinds.stream().mapToInt(Integer::intValue).toArray();
        boolean[] ng = new boolean[negs.size()];
        for (int i = 0; i < ng.length; i++) {
            ng[i] = negs.get(i);
        }
        return new LikePattern(k, chars.toString().toCharArray(), sets.toArray(new String[0]), ng);
    }

    boolean matches(String s) {
        if (prefix != null) {
            return s.regionMatches(true, 0, prefix, 0, prefix.length()) && sameLower(s, prefix.length());
        }
        if (exact != null) {
            return s.length() == exact.length() && s.regionMatches(true, 0, exact, 0, exact.length())
                    && sameLower(s, exact.length());
        }
        // classic wildcard matching with one backtrack point per '*'
        int n = s.length();
        int m = kinds.length;
        int si = 0;
        int pi = 0;
        int starP = -1;
        int starS = -1;
        while (si < n) {
            if (pi < m && kinds[pi] == ANY_RUN) {
                starP = pi++;
                starS = si;
            } else if (pi < m && one(pi, s.charAt(si))) {
                pi++;
                si++;
            } else if (starP >= 0) {
                pi = starP + 1;
                si = ++starS;
            } else {
                return false;
            }
        }
        while (pi < m && kinds[pi] == ANY_RUN) {
            pi++;
        }
        return pi == m;
    }

    /** regionMatches(ignoreCase) also equates characters that differ only in upper case; check lower case. */
    private boolean sameLower(String s, int len) {
        for (int i = 0; i < len; i++) {
            if (Character.toLowerCase(s.charAt(i)) != chars[i]) {
                return false;
            }
        }
        return true;
    }

    private boolean one(int p, char c) {
        switch (kinds[p]) {
            case LITERAL:
                return Character.toLowerCase(c) == chars[p];
            case ANY_ONE:
                return true;
            case DIGIT:
                return c >= '0' && c <= '9';
            case SET: {
                char lc = Character.toLowerCase(c);
                String r = sets[p];
                boolean in = false;
                for (int i = 0; i < r.length(); i += 2) {
                    if (lc >= r.charAt(i) && lc <= r.charAt(i + 1)) {
                        in = true;
                        break;
                    }
                }
                return in != negated[p];
            }
            default:
                return false;
        }
    }
}
