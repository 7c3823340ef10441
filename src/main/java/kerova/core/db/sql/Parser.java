package kerova.core.db.sql;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.Set;
import kerova.core.db.DaoException;
import kerova.core.db.sql.Lexer.Kind;
import kerova.core.db.sql.Lexer.Token;

/** Recursive-descent parser of the program's Access SQL (Jet's operator precedence, as VB's). */
final class Parser {

    /** Bare words that can't be column or table names (they may still be used in brackets). */
    private static final Set<String> RESERVED = Set.of("select", "from", "where", "order", "by", "group", "having",
            "as", "and", "or", "not", "xor", "eqv", "imp", "like", "is", "null", "true", "false", "between", "in",
            "mod", "set", "update", "distinct", "distinctrow", "union", "join", "on", "into", "values", "insert",
            "delete", "asc", "desc", "top", "all");

    private final String src;
    private final List<Token> toks;
    private int i;

    private Parser(String src) {
        this.src = src;
        this.toks = Lexer.tokenize(src);
    }

    // ---- entry points ----

    static Statement statement(String text) {
        if (text == null || text.isBlank()) {
            throw new DaoException(Sql.INVALID_STATEMENT, invalidStatementMessage());
        }
        Parser p = new Parser(text);
        Statement st;
        if (p.peek().isWord("select")) {
            st = p.select();
        } else if (p.peek().isWord("update")) {
            st = p.update();
        } else {
            throw new DaoException(Sql.INVALID_STATEMENT, invalidStatementMessage());
        }
        p.end();
        return st;
    }

    static Expr condition(String text) {
        if (text == null || text.isBlank()) {
            throw new DaoException(DaoException.SYNTAX_ERROR, "Syntax error (missing operator) in expression.");
        }
        Parser p = new Parser(text);
        Expr e = p.expr();
        if (p.peek().kind() != Kind.EOF) {
            throw p.missingOperator(0);
        }
        return e;
    }

    private static String invalidStatementMessage() {
        return "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'.";
    }

    // ---- statements ----

    private SelectStatement select() {
        next(); // SELECT
        boolean distinct = false;
        if (peek().isWord("distinct")) {
            distinct = true;
            next();
        } else if (peek().isWord("distinctrow") || peek().isWord("all")) {
            next(); // DISTINCTROW on one table changes nothing; ALL is the default
        }
        if (peek().isWord("top")) {
            throw new DaoException(Sql.SELECT_SYNTAX, "TOP is not supported in this dialect.");
        }
        List<SelectStatement.Item> items = new ArrayList<>();
        do {
            items.add(selectItem(items.isEmpty()));
        } while (acceptSymbol(","));
        if (!peek().isWord("from")) {
            Token t = peek();
            if (t.kind() == Kind.EOF || t.isSymbol(";")) {
                throw new DaoException(Sql.SELECT_SYNTAX, "The SELECT statement includes a reserved word or an"
                        + " argument name that is misspelled or missing, or the punctuation is incorrect.");
            }
            throw missingOperator(items.get(items.size() - 1).start());
        }
        next(); // FROM
        Token table = peek();
        if (!isName(table)) {
            throw new DaoException(DaoException.SYNTAX_ERROR_FROM, "Syntax error in FROM clause.");
        }
        next();
        String alias = tableAlias();
        Expr where = null;
        int whereStart = -1;
        if (peek().isWord("where")) {
            next();
            whereStart = peek().start();
            where = expr();
            Token t = peek();
            if (!(t.isWord("order") || t.isSymbol(";") || t.kind() == Kind.EOF)) {
                throw missingOperator(whereStart);
            }
        }
        List<SelectStatement.Order> order = new ArrayList<>();
        if (peek().isWord("order")) {
            next();
            if (!peek().isWord("by")) {
                throw new DaoException(Sql.ORDER_BY_SYNTAX, "Syntax error in ORDER BY clause.");
            }
            next();
            do {
                int start = peek().start();
                Expr e = expr();
                boolean desc = false;
                if (peek().isWord("desc")) {
                    desc = true;
                    next();
                } else if (peek().isWord("asc")) {
                    next();
                }
                order.add(new SelectStatement.Order(e, desc, src.substring(start, prev().end())));
            } while (acceptSymbol(","));
            Token t = peek();
            if (!(t.isSymbol(";") || t.kind() == Kind.EOF)) {
                throw new DaoException(Sql.ORDER_BY_SYNTAX, "Syntax error in ORDER BY clause.");
            }
        } else if (!(peek().isSymbol(";") || peek().kind() == Kind.EOF)) {
            throw new DaoException(DaoException.SYNTAX_ERROR_FROM, "Syntax error in FROM clause.");
        }
        return new SelectStatement(src, distinct, items, table.text(), alias, where, order);
    }

    private SelectStatement.Item selectItem(boolean first) {
        Token t = peek();
        int start = t.start();
        if (t.isSymbol("*")) {
            next();
            if (!first) {
                throw new DaoException(Sql.SELECT_SYNTAX, "'*' must come first in the select list.");
            }
            return new SelectStatement.Item(null, null, start, true);
        }
        if (isName(t) && peek(1).isSymbol(".") && peek(2).isSymbol("*")) {
            next();
            next();
            next();
            if (!first) {
                throw new DaoException(Sql.SELECT_SYNTAX, "'*' must come first in the select list.");
            }
            return new SelectStatement.Item(null, t.text(), start, true); // qualifier kept in alias slot
        }
        Expr e = expr();
        String alias = null;
        if (peek().isWord("as")) {
            next();
            Token a = peek();
            if (a.kind() != Kind.IDENT) {
                throw missingOperator(start);
            }
            next();
            alias = a.text();
        }
        return new SelectStatement.Item(e, alias, start, false);
    }

    private String tableAlias() {
        if (peek().isWord("as")) {
            next();
            Token a = peek();
            if (!isName(a)) {
                throw new DaoException(DaoException.SYNTAX_ERROR_FROM, "Syntax error in FROM clause.");
            }
            next();
            return a.text();
        }
        if (isName(peek())) {
            return next().text();
        }
        return null;
    }

    private UpdateStatement update() {
        next(); // UPDATE
        Token table = peek();
        if (!isName(table)) {
            throw updateError();
        }
        next();
        String alias = tableAlias();
        if (!peek().isWord("set")) {
            throw updateError();
        }
        next();
        List<UpdateStatement.Assignment> sets = new ArrayList<>();
        do {
            Token t = peek();
            if (!isName(t)) {
                throw updateError();
            }
            Expr target = column();
            if (!(target instanceof Expr.Column col)) {
                throw updateError();
            }
            if (!acceptSymbol("=")) {
                throw updateError();
            }
            Expr value = expr();
            sets.add(new UpdateStatement.Assignment(col, value));
        } while (acceptSymbol(","));
        Expr where = null;
        if (peek().isWord("where")) {
            next();
            int whereStart = peek().start();
            where = expr();
            if (!(peek().isSymbol(";") || peek().kind() == Kind.EOF)) {
                throw missingOperator(whereStart);
            }
        } else if (!(peek().isSymbol(";") || peek().kind() == Kind.EOF)) {
            throw updateError();
        }
        return new UpdateStatement(src, table.text(), alias, sets, where);
    }

    private static DaoException updateError() {
        return new DaoException(Sql.UPDATE_SYNTAX, "Syntax error in UPDATE statement.");
    }

    /** Optional ';', then nothing: a second statement can't follow. */
    private void end() {
        if (acceptSymbol(";") && peek().kind() == Kind.EOF) {
            return;
        }
        if (peek().kind() != Kind.EOF) {
            throw new DaoException(Sql.CHARACTERS_AFTER_END, "Characters found after end of SQL statement.");
        }
    }

    // ---- expressions ----

    Expr expr() {
        Expr left = xorExpr();
        while (peek().isWord("or")) {
            next();
            left = new Expr.Binary("or", left, xorExpr());
        }
        return left;
    }

    private Expr xorExpr() {
        Expr left = andExpr();
        while (peek().isWord("xor")) {
            next();
            left = new Expr.Binary("xor", left, andExpr());
        }
        return left;
    }

    private Expr andExpr() {
        Expr left = notExpr();
        while (peek().isWord("and")) {
            next();
            left = new Expr.Binary("and", left, notExpr());
        }
        return left;
    }

    private Expr notExpr() {
        if (peek().isWord("not")) {
            next();
            return new Expr.Unary("not", notExpr());
        }
        return comparison();
    }

    private Expr comparison() {
        Expr left = concat();
        while (true) {
            Token t = peek();
            if (t.kind() == Kind.SYMBOL && (t.text().equals("=") || t.text().equals("<>") || t.text().equals("<")
                    || t.text().equals("<=") || t.text().equals(">") || t.text().equals(">="))) {
                next();
                left = new Expr.Binary(t.text(), left, concat());
            } else if (t.isWord("is")) {
                next();
                boolean negated = false;
                if (peek().isWord("not")) {
                    next();
                    negated = true;
                }
                if (!peek().isWord("null")) {
                    throw missingOperator(0);
                }
                next();
                left = new Expr.IsNull(left, negated);
            } else if (t.isWord("like") || t.isWord("between") || t.isWord("in")
                    || (t.isWord("not") && (peek(1).isWord("like") || peek(1).isWord("between")
                    || peek(1).isWord("in")))) {
                boolean negated = false;
                if (t.isWord("not")) {
                    next();
                    negated = true;
                }
                Token op = next();
                if (op.isWord("like")) {
                    left = new Expr.Like(left, concat(), negated);
                } else if (op.isWord("between")) {
                    Expr low = concat();
                    if (!peek().isWord("and")) {
                        throw missingOperator(0);
                    }
                    next();
                    left = new Expr.Between(left, low, concat(), negated);
                } else {
                    expectSymbol("(");
                    List<Expr> list = new ArrayList<>();
                    do {
                        list.add(expr());
                    } while (acceptSymbol(","));
                    expectSymbol(")");
                    left = new Expr.In(left, list, negated);
                }
            } else {
                return left;
            }
        }
    }

    private Expr concat() {
        Expr left = additive();
        while (peek().isSymbol("&")) {
            next();
            left = new Expr.Binary("&", left, additive());
        }
        return left;
    }

    private Expr additive() {
        Expr left = modulo();
        while (peek().isSymbol("+") || peek().isSymbol("-")) {
            String op = next().text();
            left = new Expr.Binary(op, left, modulo());
        }
        return left;
    }

    private Expr modulo() {
        Expr left = intDiv();
        while (peek().isWord("mod")) {
            next();
            left = new Expr.Binary("mod", left, intDiv());
        }
        return left;
    }

    private Expr intDiv() {
        Expr left = multiplicative();
        while (peek().isSymbol("\\")) {
            next();
            left = new Expr.Binary("\\", left, multiplicative());
        }
        return left;
    }

    private Expr multiplicative() {
        Expr left = unary();
        while (peek().isSymbol("*") || peek().isSymbol("/")) {
            String op = next().text();
            left = new Expr.Binary(op, left, unary());
        }
        return left;
    }

    private Expr unary() {
        if (peek().isSymbol("-") || peek().isSymbol("+")) {
            String op = next().text();
            return new Expr.Unary(op, unary());
        }
        return power();
    }

    private Expr power() {
        Expr left = primary();
        while (peek().isSymbol("^")) {
            next();
            Expr right;
            if (peek().isSymbol("-") || peek().isSymbol("+")) {
                String op = next().text();
                right = new Expr.Unary(op, primary());
            } else {
                right = primary();
            }
            left = new Expr.Binary("^", left, right);
        }
        return left;
    }

    private Expr primary() {
        Token t = peek();
        switch (t.kind()) {
            case NUMBER, STRING, DATE -> {
                next();
                return new Expr.Literal(t.value());
            }
            case SYMBOL -> {
                if (t.isSymbol("(")) {
                    next();
                    Expr e = expr();
                    expectSymbol(")");
                    return e;
                }
                throw missingOperator(0);
            }
            case IDENT -> {
                if (!t.bracketed()) {
                    if (t.isWord("true") || t.isWord("false")) {
                        next();
                        return new Expr.Literal(t.isWord("true"));
                    }
                    if (t.isWord("null")) {
                        next();
                        return new Expr.Literal(null);
                    }
                    if (peek(1).isSymbol("(")) {
                        return call();
                    }
                }
                if (!isName(t)) {
                    throw missingOperator(0);
                }
                return column();
            }
            default -> throw missingOperator(0);
        }
    }

    private Expr call() {
        Token nameTok = next();
        String name = nameTok.text().toLowerCase(Locale.ROOT);
        if (!Functions.exists(name)) {
            throw new DaoException(Sql.UNDEFINED_FUNCTION,
                    "Undefined function '" + nameTok.text() + "' in expression.");
        }
        next(); // (
        List<Expr> args = new ArrayList<>();
        if (name.equals("count") && peek().isSymbol("*")) {
            next();
            args.add(new Expr.Star());
        } else if (!peek().isSymbol(")")) {
            do {
                args.add(expr());
            } while (acceptSymbol(","));
        }
        expectSymbol(")");
        if (!Functions.arityOk(name, args.size())) {
            throw new DaoException(DaoException.SYNTAX_ERROR,
                    "Wrong number of arguments used with function in query expression '"
                            + src.substring(nameTok.start(), prev().end()) + "'.");
        }
        return new Expr.Call(name, List.copyOf(args));
    }

    private Expr column() {
        Token first = next();
        if ((peek().isSymbol(".") || peek().isSymbol("!")) && peek(1).kind() == Kind.IDENT) {
            next();
            Token second = next();
            return new Expr.Column(first.text(), second.text());
        }
        return new Expr.Column(null, first.text());
    }

    // ---- tokens ----

    private static boolean isName(Token t) {
        return t.kind() == Kind.IDENT && (t.bracketed() || !RESERVED.contains(t.text().toLowerCase(Locale.ROOT)));
    }

    private Token peek() {
        return toks.get(i);
    }

    private Token peek(int ahead) {
        return toks.get(Math.min(i + ahead, toks.size() - 1));
    }

    private Token prev() {
        return toks.get(Math.max(0, i - 1));
    }

    private Token next() {
        Token t = toks.get(i);
        if (t.kind() != Kind.EOF) {
            i++;
        }
        return t;
    }

    private boolean acceptSymbol(String s) {
        if (peek().isSymbol(s)) {
            next();
            return true;
        }
        return false;
    }

    private void expectSymbol(String s) {
        if (!acceptSymbol(s)) {
            throw missingOperator(0);
        }
    }

    /** Jet's error 3075, quoting the expression from {@code from} to the end of the text. */
    private DaoException missingOperator(int from) {
        String quoted = src.substring(Math.max(0, Math.min(from, src.length()))).strip();
        return new DaoException(DaoException.SYNTAX_ERROR,
                "Syntax error (missing operator) in query expression '" + quoted + "'.");
    }
}
