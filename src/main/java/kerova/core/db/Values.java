package kerova.core.db;

import com.healthmarketscience.jackcess.Column;
import java.math.BigDecimal;
import java.time.LocalDateTime;
import kerova.core.vb.Conv;
import kerova.core.vb.VbException;

/** Conversion of a VB value to a column's type, as DAO does when a field is assigned. */
final class Values {
    private Values() {
    }

    static Object toColumn(Column col, Object v) {
        if (v == null) {
            return null;
        }
        try {
            switch (col.getType()) {
                case TEXT:
                case MEMO: {
                    String s = v instanceof String str ? str : Conv.CStr(v);
                    if (col.getType() == com.healthmarketscience.jackcess.DataType.TEXT
                            && s.length() > col.getLengthInUnits()) {
                        throw new DaoException(DaoException.FIELD_TOO_SMALL,
                                "The field is too small to accept the amount of data you attempted to add.");
                    }
                    return s;
                }
                case BOOLEAN:
                    return Conv.CBool(v);
                case BYTE:
                    return (byte) checkRange(number(v), 0, 255, true);
                case INT:
                    return (short) checkRange(number(v), Short.MIN_VALUE, Short.MAX_VALUE, true);
                case LONG:
                    return (int) checkRange(number(v), Integer.MIN_VALUE, Integer.MAX_VALUE, true);
                case DOUBLE:
                    return number(v);
                case FLOAT:
                    return (float) number(v);
                case MONEY:
                case NUMERIC:
                    return v instanceof BigDecimal bd ? bd : BigDecimal.valueOf(number(v));
                case SHORT_DATE_TIME:
                    return v instanceof LocalDateTime d ? d : Conv.CDate(v);
                default:
                    return v;
            }
        } catch (VbException e) {
            if (e instanceof DaoException) {
                throw e;
            }
            throw new DaoException(DaoException.DATA_TYPE_CONVERSION, "Data type conversion error.", e);
        }
    }

    private static double number(Object v) {
        if (v instanceof String s && s.isBlank()) {
            throw new DaoException(DaoException.DATA_TYPE_CONVERSION, "Data type conversion error.");
        }
        if (v instanceof Boolean b) {
            return b ? -1 : 0;
        }
        if (v instanceof LocalDateTime d) {
            return oaDate(d);
        }
        return Conv.CDbl(v);
    }

    private static double oaDate(LocalDateTime d) {
        long days = java.time.temporal.ChronoUnit.DAYS.between(java.time.LocalDate.of(1899, 12, 30), d.toLocalDate());
        return days + d.toLocalTime().toSecondOfDay() / 86400.0;
    }

    /** Whole-number columns take the value rounded half to even, as Jet does. */
    private static long checkRange(double d, long min, long max, boolean round) {
        double r = round ? Math.rint(d) : d;
        if (r < min || r > max) {
            throw new VbException(VbException.OVERFLOW, "Overflow");
        }
        return (long) r;
    }
}
