// Tokens and the recursive-descent parser of the program's SQL (Jet's operator precedence, as
// VB's): or < xor < and < not < comparisons, like, between, in, is < & < + - < mod < \ < * / <
// unary - + < ^.
#include <algorithm>
#include <charconv>
#include <cmath>

#include "db/error.h"
#include "db/sql/ast.h"
#include "db/sql/functions.h"
#include "db/sql/text.h"
#include "vb/conv.h"

namespace db::sql {

void fail(int number, const std::string& message) { throw DaoError(number, message); }

namespace {

enum class Tok { Ident, Number, String, Date, Symbol, End };

struct Token {
    Tok kind = Tok::End;
    std::string text;     // identifier (without brackets), symbol, or the literal's source
    vb::Variant value;    // literals
    bool bracketed = false;
    size_t start = 0, end = 0;

    bool isSymbol(std::string_view s) const { return kind == Tok::Symbol && text == s; }
    // A bare word, without regard to case.
    bool isWord(std::string_view w) const {
        if (kind != Tok::Ident || bracketed || text.size() != w.size()) return false;
        for (size_t i = 0; i < w.size(); ++i)
            if (std::tolower(static_cast<unsigned char>(text[i])) != w[i]) return false;
        return true;
    }
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }
// Letters: ASCII ones and anything beyond ASCII (accented letters arrive as UTF-8 sequences).
bool isNameStart(char c) {
    auto u = static_cast<unsigned char>(c);
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u >= 0x80;
}
bool isNamePart(char c) { return isNameStart(c) || isDigit(c); }

[[noreturn]] void syntax(const std::string& message) { fail(err::SyntaxError, message); }

std::string_view strip(std::string_view s) {
    while (!s.empty() && isSpace(s.front())) s.remove_prefix(1);
    while (!s.empty() && isSpace(s.back())) s.remove_suffix(1);
    return s;
}

bool allDigits(std::string_view s, size_t minLen, size_t maxLen) {
    return s.size() >= minLen && s.size() <= maxLen && std::all_of(s.begin(), s.end(), isDigit);
}

int toInt(std::string_view s) {
    int v = 0;
    std::from_chars(s.data(), s.data() + s.size(), v);
    return v;
}

std::vector<std::string_view> split(std::string_view s, char sep) {
    std::vector<std::string_view> out;
    size_t from = 0;
    for (;;) {
        size_t p = s.find(sep, from);
        out.push_back(s.substr(from, p == std::string_view::npos ? std::string_view::npos : p - from));
        if (p == std::string_view::npos) return out;
        from = p + 1;
    }
}

// "H:MM[:SS] [AM|PM]" as a fraction of a day; nullopt if malformed.
std::optional<double> timeOfDay(std::string_view s) {
    std::string t(strip(s));
    for (auto& c : t) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    int shift = -1;
    if (t.size() >= 2 && (t.ends_with("AM") || t.ends_with("PM"))) {
        shift = t.ends_with("PM") ? 12 : 0;
        t = std::string(strip(std::string_view(t).substr(0, t.size() - 2)));
    }
    auto p = split(t, ':');
    if (p.size() < 2 || p.size() > 3) return std::nullopt;
    for (auto part : p)
        if (!allDigits(part, 1, 2)) return std::nullopt;
    int h = toInt(p[0]), m = toInt(p[1]), sec = p.size() > 2 ? toInt(p[2]) : 0;
    if (shift >= 0) {
        if (h < 1 || h > 12) return std::nullopt;
        h = h % 12 + shift;
    }
    if (h > 23 || m > 59 || sec > 59) return std::nullopt;
    return (h * 3600 + m * 60 + sec) / 86400.0;
}

int fullYear(std::string_view digits) {
    int y = toInt(digits);
    if (digits.size() <= 2) return y < 30 ? 2000 + y : 1900 + y;
    return y;
}

}  // namespace

// The body of a #...# literal as Jet reads it: month/day/year (a first number above 12 is the
// day), or year-month-day, each with an optional time; or a time alone (on 1899-12-30).
std::optional<vb::Date> parseDateLiteral(std::string_view body) {
    std::string_view s = strip(body);
    if (s.empty()) return std::nullopt;
    size_t space = s.find(' ');
    size_t colon = s.find(':');
    if (colon != std::string_view::npos && (space == std::string_view::npos || colon < space)) {
        auto t = timeOfDay(s);
        if (!t) return std::nullopt;
        return vb::Date{*t};
    }
    std::string_view datePart = space == std::string_view::npos ? s : s.substr(0, space);
    std::string_view timePart = space == std::string_view::npos ? std::string_view{} : strip(s.substr(space + 1));
    int y = 0, m = 0, d = 0;
    auto slash = split(datePart, '/');
    auto dash = split(datePart, '-');
    if (slash.size() == 3 && allDigits(slash[0], 1, 2) && allDigits(slash[1], 1, 2) && allDigits(slash[2], 1, 4)) {
        int a = toInt(slash[0]), b = toInt(slash[1]);
        y = fullYear(slash[2]);
        if (a > 12) {
            d = a;
            m = b;
        } else {
            m = a;
            d = b;
        }
    } else if (dash.size() == 3 && allDigits(dash[0], 3, 4) && allDigits(dash[1], 1, 2) && allDigits(dash[2], 1, 2)) {
        y = toInt(dash[0]);
        m = toInt(dash[1]);
        d = toInt(dash[2]);
    } else {
        return std::nullopt;
    }
    if (y < 100 || !vb::validDate(y, m, d)) return std::nullopt;
    vb::DateParts parts;
    parts.year = y;
    parts.month = m;
    parts.day = d;
    double serial = vb::toDate(parts).serial;
    if (!timePart.empty()) {
        auto t = timeOfDay(timePart);
        if (!t) return std::nullopt;
        serial = serial >= 0 ? serial + *t : serial - *t;  // before 1899-12-30 the time counts away from zero
    }
    return vb::Date{serial};
}

namespace {

class Lexer {
public:
    explicit Lexer(std::string_view src) : src_(src) {}

    std::vector<Token> run() {
        std::vector<Token> out;
        size_t n = src_.size();
        for (;;) {
            while (pos_ < n && isSpace(src_[pos_])) ++pos_;
            if (pos_ >= n) {
                Token t;
                t.start = t.end = n;
                out.push_back(t);
                return out;
            }
            size_t start = pos_;
            char c = src_[pos_];
            if (c == '\'' || c == '"') {
                out.push_back(string(c, start));
            } else if (c == '[') {
                size_t close = src_.find(']', pos_ + 1);
                if (close == std::string_view::npos)
                    syntax("Invalid bracketing of name '" + std::string(src_.substr(start)) + "'.");
                std::string name(src_.substr(pos_ + 1, close - pos_ - 1));
                if (strip(name).empty()) syntax("Invalid bracketing of name '[]'.");
                pos_ = close + 1;
                Token t{Tok::Ident, name, {}, true, start, pos_};
                out.push_back(std::move(t));
            } else if (c == '#') {
                size_t close = src_.find('#', pos_ + 1);
                if (close == std::string_view::npos)
                    syntax("Syntax error in date in query expression '" + std::string(src_.substr(start)) + "'.");
                auto body = src_.substr(pos_ + 1, close - pos_ - 1);
                pos_ = close + 1;
                auto d = parseDateLiteral(body);
                std::string text(src_.substr(start, pos_ - start));
                if (!d) syntax("Syntax error in date in query expression '" + text + "'.");
                out.push_back(Token{Tok::Date, text, *d, false, start, pos_});
            } else if (isDigit(c) || (c == '.' && pos_ + 1 < n && isDigit(src_[pos_ + 1]))) {
                out.push_back(number(start));
            } else if (isNameStart(c)) {
                while (pos_ < n && isNamePart(src_[pos_])) ++pos_;
                out.push_back(Token{Tok::Ident, std::string(src_.substr(start, pos_ - start)), {}, false, start, pos_});
            } else {
                std::string sym;
                if (pos_ + 1 < n) {
                    auto two = src_.substr(pos_, 2);
                    if (two == "<=" || two == ">=" || two == "<>") sym = two;
                }
                if (sym.empty() && std::string_view("=<>+-*/\\^&(),;.!").find(c) != std::string_view::npos)
                    sym = std::string(1, c);
                if (sym.empty())
                    syntax("Syntax error (missing operator) in query expression '" + std::string(src_.substr(start)) +
                           "'.");
                pos_ += sym.size();
                out.push_back(Token{Tok::Symbol, sym, {}, false, start, pos_});
            }
        }
    }

private:
    // 'text' or "text"; the quote doubled inside stands for itself.
    Token string(char quote, size_t start) {
        std::string s;
        ++pos_;
        size_t n = src_.size();
        for (;;) {
            if (pos_ >= n)
                syntax("Syntax error in string in query expression '" + std::string(src_.substr(start)) + "'.");
            char c = src_[pos_++];
            if (c == quote) {
                if (pos_ < n && src_[pos_] == quote) {
                    s.push_back(quote);
                    ++pos_;
                } else {
                    break;
                }
            } else {
                s.push_back(c);
            }
        }
        return Token{Tok::String, std::string(src_.substr(start, pos_ - start)), s, false, start, pos_};
    }

    Token number(size_t start) {
        size_t n = src_.size();
        bool fraction = false;
        while (pos_ < n && isDigit(src_[pos_])) ++pos_;
        if (pos_ < n && src_[pos_] == '.') {
            fraction = true;
            ++pos_;
            while (pos_ < n && isDigit(src_[pos_])) ++pos_;
        }
        if (pos_ < n && (src_[pos_] == 'e' || src_[pos_] == 'E')) {
            size_t p = pos_ + 1;
            if (p < n && (src_[p] == '+' || src_[p] == '-')) ++p;
            if (p < n && isDigit(src_[p])) {
                fraction = true;
                pos_ = p;
                while (pos_ < n && isDigit(src_[pos_])) ++pos_;
            }
        }
        if (pos_ < n && isNameStart(src_[pos_]))
            syntax("Syntax error (missing operator) in query expression '" + std::string(src_.substr(start)) + "'.");
        std::string text(src_.substr(start, pos_ - start));
        vb::Variant value;
        double d = 0;
        std::from_chars(text.data(), text.data() + text.size(), d);
        if (!fraction && d <= 2147483647.0) {
            int32_t i = 0;
            std::from_chars(text.data(), text.data() + text.size(), i);
            value = i;
        } else {
            if (!std::isfinite(d)) fail(err::Overflow, "Overflow");
            value = d;
        }
        return Token{Tok::Number, text, value, false, start, pos_};
    }

    std::string_view src_;
    size_t pos_ = 0;
};

// Bare words that can't be names (they may be used in brackets).
bool reserved(const std::string& word) {
    static const char* const kWords[] = {"select", "from", "where", "order", "by", "group", "having", "as", "and",
                                         "or", "not", "xor", "eqv", "imp", "like", "is", "null", "true", "false",
                                         "between", "in", "mod", "set", "update", "distinct", "distinctrow",
                                         "union", "join", "on", "into", "values", "insert", "delete", "asc",
                                         "desc", "top", "all"};
    std::string w = word;
    for (auto& c : w) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return std::find(std::begin(kWords), std::end(kWords), w) != std::end(kWords);
}

const char kInvalidStatement[] =
    "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'.";

ExprPtr make(Expr e) { return std::make_shared<const Expr>(std::move(e)); }

ExprPtr binary(std::string op, ExprPtr l, ExprPtr r) {
    Expr e;
    e.kind = Expr::Kind::Binary;
    e.op = std::move(op);
    e.args = {std::move(l), std::move(r)};
    return make(std::move(e));
}

ExprPtr unary(std::string op, ExprPtr x) {
    Expr e;
    e.kind = Expr::Kind::Unary;
    e.op = std::move(op);
    e.args = {std::move(x)};
    return make(std::move(e));
}

class Parser {
public:
    explicit Parser(std::string_view src) : src_(src), toks_(Lexer(src).run()) {}

    std::unique_ptr<StatementData> statement() {
        auto st = std::make_unique<StatementData>();
        st->text = std::string(src_);
        if (peek().isWord("select")) {
            select(*st);
        } else if (peek().isWord("update")) {
            update(*st);
        } else {
            fail(err::InvalidStatement, kInvalidStatement);
        }
        end();
        return st;
    }

    ExprPtr condition() {
        ExprPtr e = expr();
        if (peek().kind != Tok::End) throw missingOperator(0);
        return e;
    }

private:
    void select(StatementData& st) {
        st.kind = Statement::Kind::Select;
        next();
        if (peek().isWord("distinct")) {
            st.distinct = true;
            next();
        } else if (peek().isWord("distinctrow") || peek().isWord("all")) {
            next();  // DISTINCTROW on one table changes nothing; ALL is the default
        }
        if (peek().isWord("top")) fail(err::SelectSyntax, "TOP is not supported in this dialect.");
        do {
            st.items.push_back(selectItem(st.items.empty()));
        } while (acceptSymbol(","));
        if (!peek().isWord("from")) {
            const Token& t = peek();
            if (t.kind == Tok::End || t.isSymbol(";"))
                fail(err::SelectSyntax,
                     "The SELECT statement includes a reserved word or an argument name that is misspelled or "
                     "missing, or the punctuation is incorrect.");
            throw missingOperator(st.items.back().start);
        }
        next();
        const Token& table = peek();
        if (!isName(table)) fail(err::SyntaxErrorFrom, "Syntax error in FROM clause.");
        st.table = table.text;
        next();
        st.tableAlias = tableAlias();
        if (peek().isWord("where")) {
            next();
            size_t whereStart = peek().start;
            st.where = expr();
            const Token& t = peek();
            if (!(t.isWord("order") || t.isSymbol(";") || t.kind == Tok::End)) throw missingOperator(whereStart);
        }
        if (peek().isWord("order")) {
            next();
            if (!peek().isWord("by")) fail(err::OrderBySyntax, "Syntax error in ORDER BY clause.");
            next();
            do {
                size_t start = peek().start;
                OrderItem o;
                o.expr = expr();
                if (peek().isWord("desc")) {
                    o.descending = true;
                    next();
                } else if (peek().isWord("asc")) {
                    next();
                }
                o.text = std::string(src_.substr(start, prev().end - start));
                st.order.push_back(std::move(o));
            } while (acceptSymbol(","));
            if (!(peek().isSymbol(";") || peek().kind == Tok::End))
                fail(err::OrderBySyntax, "Syntax error in ORDER BY clause.");
        } else if (!(peek().isSymbol(";") || peek().kind == Tok::End)) {
            fail(err::SyntaxErrorFrom, "Syntax error in FROM clause.");
        }
    }

    SelectItem selectItem(bool first) {
        const Token& t = peek();
        SelectItem item;
        item.start = t.start;
        if (t.isSymbol("*")) {
            next();
            if (!first) fail(err::SelectSyntax, "'*' must come first in the select list.");
            item.star = true;
            return item;
        }
        if (isName(t) && peek(1).isSymbol(".") && peek(2).isSymbol("*")) {
            item.starQualifier = t.text;
            next();
            next();
            next();
            if (!first) fail(err::SelectSyntax, "'*' must come first in the select list.");
            item.star = true;
            return item;
        }
        item.expr = expr();
        if (peek().isWord("as")) {
            next();
            const Token& a = peek();
            if (a.kind != Tok::Ident) throw missingOperator(item.start);
            item.alias = a.text;
            next();
        }
        return item;
    }

    std::string tableAlias() {
        if (peek().isWord("as")) {
            next();
            const Token& a = peek();
            if (!isName(a)) fail(err::SyntaxErrorFrom, "Syntax error in FROM clause.");
            next();
            return a.text;
        }
        if (isName(peek())) return next().text;
        return {};
    }

    [[noreturn]] static void updateError() { fail(err::UpdateSyntax, "Syntax error in UPDATE statement."); }

    void update(StatementData& st) {
        st.kind = Statement::Kind::Update;
        next();
        const Token& table = peek();
        if (!isName(table)) updateError();
        st.table = table.text;
        next();
        st.tableAlias = tableAlias();
        if (!peek().isWord("set")) updateError();
        next();
        do {
            if (!isName(peek())) updateError();
            Assignment a;
            a.target = column();
            if (!acceptSymbol("=")) updateError();
            a.value = expr();
            st.sets.push_back(std::move(a));
        } while (acceptSymbol(","));
        if (peek().isWord("where")) {
            next();
            size_t whereStart = peek().start;
            st.where = expr();
            if (!(peek().isSymbol(";") || peek().kind == Tok::End)) throw missingOperator(whereStart);
        } else if (!(peek().isSymbol(";") || peek().kind == Tok::End)) {
            updateError();
        }
    }

    // An optional ';', then nothing: a second statement can't follow.
    void end() {
        if (acceptSymbol(";") && peek().kind == Tok::End) return;
        if (peek().kind != Tok::End) fail(err::CharactersAfterEnd, "Characters found after end of SQL statement.");
    }

    // ---- expressions ----

    ExprPtr expr() {
        ExprPtr left = xorExpr();
        while (peek().isWord("or")) {
            next();
            left = binary("or", left, xorExpr());
        }
        return left;
    }

    ExprPtr xorExpr() {
        ExprPtr left = andExpr();
        while (peek().isWord("xor")) {
            next();
            left = binary("xor", left, andExpr());
        }
        return left;
    }

    ExprPtr andExpr() {
        ExprPtr left = notExpr();
        while (peek().isWord("and")) {
            next();
            left = binary("and", left, notExpr());
        }
        return left;
    }

    ExprPtr notExpr() {
        if (peek().isWord("not")) {
            next();
            return unary("not", notExpr());
        }
        return comparison();
    }

    ExprPtr comparison() {
        ExprPtr left = concat();
        for (;;) {
            const Token& t = peek();
            if (t.kind == Tok::Symbol && (t.text == "=" || t.text == "<>" || t.text == "<" || t.text == "<=" ||
                                          t.text == ">" || t.text == ">=")) {
                std::string op = next().text;
                left = binary(op, left, concat());
            } else if (t.isWord("is")) {
                next();
                Expr e;
                e.kind = Expr::Kind::IsNull;
                if (peek().isWord("not")) {
                    next();
                    e.negated = true;
                }
                if (!peek().isWord("null")) throw missingOperator(0);
                next();
                e.args = {left};
                left = make(std::move(e));
            } else if (t.isWord("like") || t.isWord("between") || t.isWord("in") ||
                       (t.isWord("not") && (peek(1).isWord("like") || peek(1).isWord("between") ||
                                            peek(1).isWord("in")))) {
                Expr e;
                if (t.isWord("not")) {
                    next();
                    e.negated = true;
                }
                const Token& op = next();
                if (op.isWord("like")) {
                    e.kind = Expr::Kind::Like;
                    e.args = {left, concat()};
                } else if (op.isWord("between")) {
                    e.kind = Expr::Kind::Between;
                    ExprPtr low = concat();
                    if (!peek().isWord("and")) throw missingOperator(0);
                    next();
                    e.args = {left, low, concat()};
                } else {
                    e.kind = Expr::Kind::In;
                    expectSymbol("(");
                    e.args = {left};
                    do {
                        e.args.push_back(expr());
                    } while (acceptSymbol(","));
                    expectSymbol(")");
                }
                left = make(std::move(e));
            } else {
                return left;
            }
        }
    }

    ExprPtr concat() {
        ExprPtr left = additive();
        while (peek().isSymbol("&")) {
            next();
            left = binary("&", left, additive());
        }
        return left;
    }

    ExprPtr additive() {
        ExprPtr left = modulo();
        while (peek().isSymbol("+") || peek().isSymbol("-")) {
            std::string op = next().text;
            left = binary(op, left, modulo());
        }
        return left;
    }

    ExprPtr modulo() {
        ExprPtr left = intDiv();
        while (peek().isWord("mod")) {
            next();
            left = binary("mod", left, intDiv());
        }
        return left;
    }

    ExprPtr intDiv() {
        ExprPtr left = multiplicative();
        while (peek().isSymbol("\\")) {
            next();
            left = binary("\\", left, multiplicative());
        }
        return left;
    }

    ExprPtr multiplicative() {
        ExprPtr left = unaryExpr();
        while (peek().isSymbol("*") || peek().isSymbol("/")) {
            std::string op = next().text;
            left = binary(op, left, unaryExpr());
        }
        return left;
    }

    ExprPtr unaryExpr() {
        if (peek().isSymbol("-") || peek().isSymbol("+")) {
            std::string op = next().text;
            return unary(op, unaryExpr());
        }
        return power();
    }

    ExprPtr power() {
        ExprPtr left = primary();
        while (peek().isSymbol("^")) {
            next();
            ExprPtr right;
            if (peek().isSymbol("-") || peek().isSymbol("+")) {
                std::string op = next().text;
                right = unary(op, primary());
            } else {
                right = primary();
            }
            left = binary("^", left, right);
        }
        return left;
    }

    ExprPtr primary() {
        const Token& t = peek();
        switch (t.kind) {
        case Tok::Number:
        case Tok::String:
        case Tok::Date: {
            Expr e;
            e.kind = Expr::Kind::Literal;
            e.value = next().value;
            return make(std::move(e));
        }
        case Tok::Symbol:
            if (t.isSymbol("(")) {
                next();
                ExprPtr e = expr();
                expectSymbol(")");
                return e;
            }
            throw missingOperator(0);
        case Tok::Ident:
            if (!t.bracketed) {
                if (t.isWord("true") || t.isWord("false")) {
                    Expr e;
                    e.kind = Expr::Kind::Literal;
                    e.value = t.isWord("true");
                    next();
                    return make(std::move(e));
                }
                if (t.isWord("null")) {
                    next();
                    Expr e;
                    e.kind = Expr::Kind::Literal;
                    e.value = vb::Null{};
                    return make(std::move(e));
                }
                if (peek(1).isSymbol("(")) return call();
            }
            if (!isName(t)) throw missingOperator(0);
            return column();
        case Tok::End:
            break;
        }
        throw missingOperator(0);
    }

    ExprPtr call() {
        const Token& nameTok = next();
        std::string name = lowerText(nameTok.text);
        if (!functionExists(name)) fail(err::UndefinedFunction, "Undefined function '" + nameTok.text + "' in expression.");
        next();  // (
        Expr e;
        e.kind = Expr::Kind::Call;
        e.op = name;
        if (name == "count" && peek().isSymbol("*")) {
            next();
            Expr star;
            star.kind = Expr::Kind::Star;
            e.args.push_back(make(std::move(star)));
        } else if (!peek().isSymbol(")")) {
            do {
                e.args.push_back(expr());
            } while (acceptSymbol(","));
        }
        expectSymbol(")");
        if (!functionArityOk(name, e.args.size()))
            syntax("Wrong number of arguments used with function in query expression '" +
                   std::string(src_.substr(nameTok.start, prev().end - nameTok.start)) + "'.");
        return make(std::move(e));
    }

    ExprPtr column() {
        Expr e;
        e.kind = Expr::Kind::Column;
        const Token& first = next();
        if ((peek().isSymbol(".") || peek().isSymbol("!")) && peek(1).kind == Tok::Ident) {
            next();
            e.qualifier = first.text;
            e.name = next().text;
        } else {
            e.name = first.text;
        }
        return make(std::move(e));
    }

    // ---- tokens ----

    static bool isName(const Token& t) { return t.kind == Tok::Ident && (t.bracketed || !reserved(t.text)); }
    const Token& peek(size_t ahead = 0) const { return toks_[std::min(i_ + ahead, toks_.size() - 1)]; }
    const Token& prev() const { return toks_[i_ == 0 ? 0 : i_ - 1]; }
    const Token& next() {
        const Token& t = toks_[i_];
        if (t.kind != Tok::End) ++i_;
        return t;
    }
    bool acceptSymbol(std::string_view s) {
        if (!peek().isSymbol(s)) return false;
        next();
        return true;
    }
    void expectSymbol(std::string_view s) {
        if (!acceptSymbol(s)) throw missingOperator(0);
    }

    // Jet's 3075, quoting the text from `from` to the end.
    DaoError missingOperator(size_t from) const {
        std::string quoted(strip(src_.substr(std::min(from, src_.size()))));
        return DaoError(err::SyntaxError, "Syntax error (missing operator) in query expression '" + quoted + "'.");
    }

    std::string_view src_;
    std::vector<Token> toks_;
    size_t i_ = 0;
};

bool blank(std::string_view s) { return strip(s).empty(); }

}  // namespace

bool Expr::operator==(const Expr& o) const {
    if (kind != o.kind || op != o.op || negated != o.negated || args.size() != o.args.size()) return false;
    if (kind == Kind::Column) return sameName(name, o.name) && sameName(qualifier, o.qualifier);
    if (kind == Kind::Literal && !(value == o.value)) return false;
    for (size_t i = 0; i < args.size(); ++i)
        if (!(*args[i] == *o.args[i])) return false;
    return true;
}

bool hasAggregate(const Expr& e) {
    if (e.kind == Expr::Kind::Call && isAggregateFunction(e.op)) return true;
    return std::any_of(e.args.begin(), e.args.end(), [](const ExprPtr& a) { return a && hasAggregate(*a); });
}

ExprPtr parseCondition(std::string_view text) {
    if (blank(text)) syntax("Syntax error (missing operator) in expression.");
    return Parser(text).condition();
}

Statement::Statement(std::unique_ptr<StatementData> d) : data_(std::move(d)) {}
Statement::~Statement() = default;
Statement::Kind Statement::kind() const { return data_->kind; }
const std::string& Statement::tableName() const { return data_->table; }
const std::string& Statement::text() const { return data_->text; }

std::shared_ptr<const Statement> parse(std::string_view text) {
    if (blank(text)) fail(err::InvalidStatement, kInvalidStatement);
    return std::make_shared<const Statement>(Parser(text).statement());
}

bool looksLikeStatement(std::string_view source) {
    std::string s = lowerText(strip(source).substr(0, 7));
    return s.starts_with("select") || s.starts_with("update") || s.starts_with("(");
}

}  // namespace db::sql
