package kerova.core.db.sql;

import java.util.List;

/**
 * The parsed form of an expression of the program's Access SQL. Names are kept as written; they are
 * resolved to column indexes when a statement is bound to a table.
 */
public sealed interface Expr {

    /** A column: {@code name}, {@code [name]}, or {@code table.name} (qualifier null when absent). */
    record Column(String qualifier, String name) implements Expr {
    }

    /** A literal: Integer, Double, String, Boolean or LocalDateTime, or null for {@code Null}. */
    record Literal(Object value) implements Expr {
    }

    /** Unary {@code -}, {@code +} or {@code not}. */
    record Unary(String op, Expr operand) implements Expr {
    }

    /**
     * Binary operator, lowercase: {@code + - * / \ mod ^ &}, comparisons {@code = <> < <= > >=},
     * logic {@code and or xor}.
     */
    record Binary(String op, Expr left, Expr right) implements Expr {
    }

    /** {@code value [not] like pattern}, Jet wildcards {@code * ? # [list] [!list]}. */
    record Like(Expr value, Expr pattern, boolean negated) implements Expr {
    }

    /** {@code value is [not] null}. */
    record IsNull(Expr value, boolean negated) implements Expr {
    }

    /** {@code value [not] between low and high}. */
    record Between(Expr value, Expr low, Expr high, boolean negated) implements Expr {
    }

    /** {@code value [not] in (a, b, ...)}. */
    record In(Expr value, List<Expr> list, boolean negated) implements Expr {
    }

    /** A function call; {@code name} in lower case. {@code count(*)} has the single argument {@link Star}. */
    record Call(String name, List<Expr> args) implements Expr {
    }

    /** The {@code *} of {@code count(*)}. */
    record Star() implements Expr {
    }

    /** Whether the expression holds an aggregate function (sum, count, min, max, avg, first, last). */
    static boolean hasAggregate(Expr e) {
        if (e instanceof Call c) {
            if (Functions.isAggregate(c.name())) {
                return true;
            }
            return c.args().stream().anyMatch(Expr::hasAggregate);
        }
        if (e instanceof Unary u) {
            return hasAggregate(u.operand());
        }
        if (e instanceof Binary b) {
            return hasAggregate(b.left()) || hasAggregate(b.right());
        }
        if (e instanceof Like l) {
            return hasAggregate(l.value()) || hasAggregate(l.pattern());
        }
        if (e instanceof IsNull n) {
            return hasAggregate(n.value());
        }
        if (e instanceof Between b) {
            return hasAggregate(b.value()) || hasAggregate(b.low()) || hasAggregate(b.high());
        }
        if (e instanceof In in) {
            return hasAggregate(in.value()) || in.list().stream().anyMatch(Expr::hasAggregate);
        }
        return false;
    }
}
