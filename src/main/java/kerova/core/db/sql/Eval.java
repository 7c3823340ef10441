package kerova.core.db.sql;

import java.time.DateTimeException;
import kerova.core.db.DaoException;
import kerova.core.vb.VbException;

/** A bound expression: evaluates over a row indexed by table column (or over aggregate results). */
@FunctionalInterface
interface Eval {
    Object eval(Object[] row);

    /** Evaluates with VB conversion errors turned into Jet's errors. */
    static Object run(Eval e, Object[] row) {
        try {
            return e.eval(row);
        } catch (DaoException d) {
            throw d;
        } catch (VbException v) {
            throw Values.wrap(v);
        } catch (DateTimeException | ArithmeticException x) {
            throw new DaoException(DaoException.DATA_TYPE_MISMATCH, "Data type mismatch in criteria expression.", x);
        }
    }

    static boolean test(Eval e, Object[] row) {
        try {
            return Values.isTrue(e.eval(row));
        } catch (DaoException d) {
            throw d;
        } catch (VbException v) {
            throw Values.wrap(v);
        } catch (DateTimeException | ArithmeticException x) {
            throw new DaoException(DaoException.DATA_TYPE_MISMATCH, "Data type mismatch in criteria expression.", x);
        }
    }
}
