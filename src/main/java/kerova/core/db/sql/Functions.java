package kerova.core.db.sql;

import java.math.BigDecimal;
import java.math.RoundingMode;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.temporal.ChronoUnit;
import java.time.temporal.IsoFields;
import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import kerova.core.vb.Conv;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbFormat;

/**
 * The functions of Jet's expression service that the dialect knows. Arguments arrive evaluated
 * (except {@code iif}, which the compiler evaluates lazily); Null in gives Null out unless a function
 * says otherwise.
 */
final class Functions {
    private Functions() {
    }

    @FunctionalInterface
    interface Fn {
        Object apply(Object[] a);
    }

    record Def(int min, int max, Fn fn) {
    }

    private static final Set<String> AGGREGATES = Set.of("sum", "count", "min", "max", "avg", "first", "last");

    private static final Map<String, Def> DEFS = new HashMap<>();

    private static void def(String name, int min, int max, Fn fn) {
        DEFS.put(name, new Def(min, max, fn));
    }

    static boolean exists(String name) {
        return DEFS.containsKey(name) || AGGREGATES.contains(name) || name.equals("iif");
    }

    static boolean isAggregate(String name) {
        return AGGREGATES.contains(name);
    }

    static boolean arityOk(String name, int n) {
        if (AGGREGATES.contains(name)) {
            return n == 1;
        }
        if (name.equals("iif")) {
            return n == 3;
        }
        Def d = DEFS.get(name);
        return n >= d.min() && n <= d.max();
    }

    static Def def(String name) {
        return DEFS.get(name);
    }

    private static boolean anyNull(Object[] a) {
        for (Object o : a) {
            if (o == null) {
                return true;
            }
        }
        return false;
    }

    private static int intArg(Object v) {
        return Conv.CLng(Values.jet(v));
    }

    static {
        // dates
        def("year", 1, 1, a -> a[0] == null ? null : Values.date(a[0]).getYear());
        def("month", 1, 1, a -> a[0] == null ? null : Values.date(a[0]).getMonthValue());
        def("day", 1, 1, a -> a[0] == null ? null : Values.date(a[0]).getDayOfMonth());
        def("hour", 1, 1, a -> a[0] == null ? null : roundSecond(Values.date(a[0])).getHour());
        def("minute", 1, 1, a -> a[0] == null ? null : roundSecond(Values.date(a[0])).getMinute());
        def("second", 1, 1, a -> a[0] == null ? null : roundSecond(Values.date(a[0])).getSecond());
        def("weekday", 1, 1, a -> a[0] == null ? null : Values.date(a[0]).getDayOfWeek().getValue() % 7 + 1);
        def("datepart", 2, 2, a -> anyNull(a) ? null : datePart(Values.text(a[0]), Values.date(a[1])));
        def("timeserial", 3, 3, a -> anyNull(a) ? null
                : Conv.DATE_ZERO.plusSeconds(intArg(a[0]) * 3600L + intArg(a[1]) * 60L + intArg(a[2])));
        def("dateserial", 3, 3, a -> anyNull(a) ? null : dateSerial(intArg(a[0]), intArg(a[1]), intArg(a[2])));
        def("date", 0, 0, a -> VbClock.today());
        def("now", 0, 0, a -> VbClock.now());
        def("time", 0, 0, a -> Conv.DATE_ZERO.plusNanos(VbClock.now().toLocalTime().toNanoOfDay()));
        def("cdate", 1, 1, a -> a[0] == null ? null : Values.date(a[0]));
        def("datevalue", 1, 1, a -> a[0] == null ? null : Values.date(a[0]).toLocalDate().atStartOfDay());
        def("isdate", 1, 1, a -> a[0] != null && Conv.isDate(Values.norm(a[0])));

        // texts
        def("str", 1, 1, a -> a[0] == null ? null : Conv.Str(Values.jet(a[0])));
        def("format", 1, 2, a -> a[0] == null && a.length < 2 ? null
                : VbFormat.Format(Values.jet(a[0]), a.length < 2 || a[1] == null ? "" : Values.text(a[1])));
        def("left", 2, 2, a -> {
            if (a[0] == null) {
                return null;
            }
            String s = Values.text(a[0]);
            int n = nonNegative(a[1]);
            return s.substring(0, Math.min(n, s.length()));
        });
        def("right", 2, 2, a -> {
            if (a[0] == null) {
                return null;
            }
            String s = Values.text(a[0]);
            int n = nonNegative(a[1]);
            return s.substring(Math.max(0, s.length() - n));
        });
        def("mid", 2, 3, a -> {
            if (a[0] == null) {
                return null;
            }
            String s = Values.text(a[0]);
            int start = intArg(a[1]);
            if (start < 1) {
                throw Values.wrap(new kerova.core.vb.VbException(5, "Invalid procedure call or argument"));
            }
            int from = Math.min(start - 1, s.length());
            int len = a.length > 2 && a[2] != null ? nonNegative(a[2]) : s.length();
            return s.substring(from, Math.min(s.length(), from + len));
        });
        def("len", 1, 1, a -> a[0] == null ? null : Values.text(a[0]).length());
        def("trim", 1, 1, a -> a[0] == null ? null : strip(Values.text(a[0]), true, true));
        def("ltrim", 1, 1, a -> a[0] == null ? null : strip(Values.text(a[0]), true, false));
        def("rtrim", 1, 1, a -> a[0] == null ? null : strip(Values.text(a[0]), false, true));
        def("ucase", 1, 1, a -> a[0] == null ? null : Values.text(a[0]).toUpperCase(Locale.ROOT));
        def("lcase", 1, 1, a -> a[0] == null ? null : Values.text(a[0]).toLowerCase(Locale.ROOT));
        def("space", 1, 1, a -> a[0] == null ? null : " ".repeat(nonNegative(a[0])));
        def("instr", 2, 3, a -> {
            int start = 1;
            Object s1 = a[0];
            Object s2 = a[1];
            if (a.length == 3) {
                if (a[0] == null) {
                    return null;
                }
                start = intArg(a[0]);
                s1 = a[1];
                s2 = a[2];
            }
            if (s1 == null || s2 == null) {
                return null;
            }
            String hay = Values.text(s1).toLowerCase(Locale.ROOT);
            String needle = Values.text(s2).toLowerCase(Locale.ROOT);
            if (start > hay.length()) {
                return 0;
            }
            return hay.indexOf(needle, Math.max(0, start - 1)) + 1;
        });

        // conversions
        def("val", 1, 1, a -> a[0] == null ? null : Conv.Val(Values.jet(a[0])));
        def("cdbl", 1, 1, a -> a[0] == null ? null : Conv.CDbl(Values.jet(a[0])));
        def("csng", 1, 1, a -> a[0] == null ? null : Conv.CSng(Values.jet(a[0])));
        def("ccur", 1, 1, a -> a[0] == null ? null : Conv.CCur(Values.jet(a[0])));
        def("cint", 1, 1, a -> a[0] == null ? null : Conv.CInt(Values.jet(a[0])));
        def("clng", 1, 1, a -> a[0] == null ? null : Conv.CLng(Values.jet(a[0])));
        def("cstr", 1, 1, a -> a[0] == null ? null : Values.text(a[0]));
        def("cbool", 1, 1, a -> a[0] == null ? null : Values.isTrue(a[0]));
        def("nz", 1, 2, a -> a[0] != null ? a[0] : a.length > 1 ? a[1] : "");
        def("isnull", 1, 1, a -> a[0] == null);
        def("isnumeric", 1, 1, a -> a[0] != null && Conv.isNumeric(Values.norm(a[0])));

        // numbers
        def("abs", 1, 1, a -> {
            if (a[0] == null) {
                return null;
            }
            Object n = Values.number(a[0]);
            return Values.compareNumbers(n, 0) < 0 ? Values.negate(n) : n;
        });
        def("int", 1, 1, a -> a[0] == null ? null : wholePart(Values.number(a[0]), RoundingMode.FLOOR));
        def("fix", 1, 1, a -> a[0] == null ? null : wholePart(Values.number(a[0]), RoundingMode.DOWN));
        def("sgn", 1, 1, a -> a[0] == null ? null : Values.compareNumbers(Values.number(a[0]), 0));
        def("sqr", 1, 1, a -> a[0] == null ? null : Math.sqrt(Values.doubleOf(Values.number(a[0]))));
        def("round", 1, 2, a -> {
            if (a[0] == null) {
                return null;
            }
            Object n = Values.number(a[0]);
            int places = a.length > 1 && a[1] != null ? intArg(a[1]) : 0;
            if (Values.isIntegral(n)) {
                return n;
            }
            BigDecimal r = (n instanceof BigDecimal bd ? bd : BigDecimal.valueOf(Values.doubleOf(n)))
                    .setScale(places, RoundingMode.HALF_EVEN);
            return n instanceof BigDecimal ? r : (Object) r.doubleValue();
        });
    }

    private static LocalDateTime roundSecond(LocalDateTime d) {
        LocalDateTime t = d.truncatedTo(ChronoUnit.SECONDS);
        return d.getNano() >= 500_000_000 ? t.plusSeconds(1) : t;
    }

    private static Object datePart(String interval, LocalDateTime d) {
        return switch (interval.toLowerCase(Locale.ROOT)) {
            case "yyyy" -> d.getYear();
            case "q" -> (d.getMonthValue() - 1) / 3 + 1;
            case "m" -> d.getMonthValue();
            case "y" -> d.getDayOfYear();
            case "d" -> d.getDayOfMonth();
            case "w" -> d.getDayOfWeek().getValue() % 7 + 1;
            case "ww" -> d.get(IsoFields.WEEK_OF_WEEK_BASED_YEAR);
            case "h" -> d.getHour();
            case "n" -> d.getMinute();
            case "s" -> d.getSecond();
            default -> throw Values.wrap(new kerova.core.vb.VbException(5, "Invalid procedure call or argument"));
        };
    }

    private static LocalDateTime dateSerial(int year, int month, int day) {
        int y = year >= 0 && year < 30 ? 2000 + year : year >= 30 && year < 100 ? 1900 + year : year;
        return LocalDate.of(y, 1, 1).plusMonths(month - 1L).plusDays(day - 1L).atStartOfDay();
    }

    private static int nonNegative(Object v) {
        if (v == null) {
            throw Values.wrap(new kerova.core.vb.VbException(94, "Invalid use of Null"));
        }
        int n = intArg(v);
        if (n < 0) {
            throw Values.wrap(new kerova.core.vb.VbException(5, "Invalid procedure call or argument"));
        }
        return n;
    }

    private static String strip(String s, boolean left, boolean right) {
        int b = 0;
        int e = s.length();
        while (left && b < e && s.charAt(b) == ' ') {
            b++;
        }
        while (right && e > b && s.charAt(e - 1) == ' ') {
            e--;
        }
        return s.substring(b, e);
    }

    private static Object wholePart(Object n, RoundingMode mode) {
        if (Values.isIntegral(n)) {
            return n;
        }
        if (n instanceof BigDecimal bd) {
            return bd.setScale(0, mode);
        }
        double d = Values.doubleOf(n);
        return mode == RoundingMode.FLOOR ? Math.floor(d) : (d < 0 ? Math.ceil(d) : Math.floor(d));
    }
}
