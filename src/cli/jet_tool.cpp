// `kerova jet`: the engine's tools on an Access 2000 file.
//
//   kerova jet tables FILE            user tables, one per line, in catalogue order
//   kerova jet schema FILE            tables, columns with types and sizes, indexes
//   kerova jet export FILE TABLE      CSV as mdb-export prints it by default (its value formats,
//                                     its row order: rows where their bytes lie)
//   kerova jet dump FILE [TABLE...]   the comparison dump shared with the Java oracle
//   kerova jet check FILE             the consistency check of tables and indexes
#include "cli/jet_tool.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "jet/database.h"
#include "jet/error.h"
#if __has_include("jet/check.h")
#include "jet/check.h"
#define KEROVA_HAVE_CHECK 1
#endif

namespace kerova {

namespace {

using namespace jet;

// Buffered standard output: one write per 64 KiB, not per value.
class Out {
public:
    ~Out() { flush(); }
    Out& operator<<(std::string_view s) {
        buf_.append(s);
        if (buf_.size() > (1 << 16)) flush();
        return *this;
    }
    Out& operator<<(char c) {
        buf_.push_back(c);
        return *this;
    }
    void flush() {
        if (!buf_.empty()) std::fwrite(buf_.data(), 1, buf_.size(), stdout);
        buf_.clear();
    }

private:
    std::string buf_;
};

const char* typeName(ColType t) {
    switch (t) {
        case ColType::Boolean: return "BOOLEAN";
        case ColType::Byte: return "BYTE";
        case ColType::Integer: return "INT";
        case ColType::Long: return "LONG";
        case ColType::Currency: return "MONEY";
        case ColType::Single: return "FLOAT";
        case ColType::Double: return "DOUBLE";
        case ColType::DateTime: return "SHORT_DATE_TIME";
        case ColType::Binary: return "BINARY";
        case ColType::Text: return "TEXT";
        case ColType::Ole: return "OLE";
        case ColType::Memo: return "MEMO";
        case ColType::Guid: return "GUID";
        case ColType::Numeric: return "NUMERIC";
    }
    return "UNKNOWN";
}

std::string printf1(const char* fmt, double v) {
    char b[64];
    std::snprintf(b, sizeof b, fmt, v);
    return b;
}

// An unsigned magnitude of up to 96 bits (three little-endian words) in decimal digits.
std::string digits96(std::array<uint32_t, 3> w) {
    std::string out;
    while (w[0] || w[1] || w[2]) {
        uint64_t rem = 0;
        for (int i = 2; i >= 0; --i) {
            uint64_t cur = (rem << 32) | w[i];
            w[i] = uint32_t(cur / 10);
            rem = cur % 10;
        }
        out.push_back(char('0' + rem));
    }
    if (out.empty()) out = "0";
    std::reverse(out.begin(), out.end());
    return out;
}

// Digits with `scale` of them after a point, at least one before it.
std::string withPoint(std::string digits, unsigned scale) {
    if (scale == 0) return digits;
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    digits.insert(digits.size() - scale, 1, '.');
    return digits;
}

std::string money(int64_t scaled) {
    uint64_t mag = scaled < 0 ? uint64_t(0) - uint64_t(scaled) : uint64_t(scaled);
    std::string s = withPoint(std::to_string(mag), 4);
    return scaled < 0 ? "-" + s : s;
}

// ---- mdb-export's value formats ----

// Its date: whole days and the rounded second of the day, "%x %X" in the C locale. Values before
// 1899-12-30 or past day 1e6 print as an empty calendar ("01/00/00 00:00:00").
std::string exportDate(double td) {
    int mon = 0, mday = 0, year = 0, hour = 0, min = 0, sec = 0;
    if (td >= 0.0 && td <= 1e6) {
        long day = long(td);
        long time = long((td - double(day)) * 86400.0 + 0.5);
        hour = int(time / 3600);
        min = int((time / 60) % 60);
        sec = int(time % 60);
        day += 693593;  // days from 0001-01-01 to 1899-12-30
        long yr = 1;
        long q = day / 146097;
        yr += 400 * q;
        day -= q * 146097;
        q = std::min(day / 36524, 3L);
        yr += 100 * q;
        day -= q * 36524;
        q = day / 1461;
        yr += 4 * q;
        day -= q * 1461;
        q = std::min(day / 365, 3L);
        yr += q;
        day -= q * 365;
        static const int noleap[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
        static const int leap[] = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366};
        const int* cal = (yr % 4 == 0 && (yr % 100 != 0 || yr % 400 == 0)) ? leap : noleap;
        for (mon = 0; mon < 12; ++mon)
            if (day < cal[mon + 1]) break;
        year = int(yr - 1900);
        mday = int(day - cal[mon] + 1);
    }
    char b[64];
    int y = ((year % 100) + 100) % 100;
    std::snprintf(b, sizeof b, "%02d/%02d/%02d %02d:%02d:%02d", mon + 1, mday, y, hour, min, sec);
    return b;
}

std::string exportDecimal(const Decimal& d) {
    std::string s = withPoint(digits96(d.magnitude), d.scale);
    return d.negative ? "-" + s : s;
}

// Its GUID: braces around 4-2-2-8 bytes (the last eight without a dash).
std::string exportGuid(const Guid& g) {
    std::string s = guidText(g);
    s.erase(24, 1);
    return s;
}

void quoted(Out& out, std::string_view s) {
    out << '"';
    size_t from = 0;
    for (size_t i = 0; i < s.size(); ++i)
        if (s[i] == '"') {
            out << s.substr(from, i + 1 - from) << '"';
            from = i + 1;
        }
    out << s.substr(from) << '"';
}

// mdb-export passes texts through C strings: they end at a NUL, and an empty one prints as null.
std::string_view cString(std::string_view s) { return s.substr(0, s.find('\0')); }

void exportValue(Out& out, const Column& c, const Value& v) {
    if (c.type == ColType::Boolean) {
        const bool* b = std::get_if<bool>(&v);
        out << (b && *b ? "1" : "0");
        return;
    }
    if (isNull(v)) return;
    std::visit(
        [&](const auto& x) {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, uint8_t>) out << std::to_string(unsigned(x));
            else if constexpr (std::is_same_v<T, int16_t> || std::is_same_v<T, int32_t>) out << std::to_string(x);
            else if constexpr (std::is_same_v<T, float>) out << printf1("%.8g", double(x));
            else if constexpr (std::is_same_v<T, double>) out << printf1("%.16g", x);
            else if constexpr (std::is_same_v<T, Currency>) out << money(x.scaled);
            else if constexpr (std::is_same_v<T, DateTime>) quoted(out, exportDate(x.days));
            else if constexpr (std::is_same_v<T, Guid>) quoted(out, exportGuid(x));
            else if constexpr (std::is_same_v<T, Decimal>) out << exportDecimal(x);
            else if constexpr (std::is_same_v<T, std::string>) {
                std::string_view s = cString(x);
                if (!s.empty()) quoted(out, s);
            } else if constexpr (std::is_same_v<T, Bytes>) {
                std::string_view s(reinterpret_cast<const char*>(x.data()), x.size());
                if (c.type != ColType::Ole) s = cString(s);  // OLE data is copied whole
                if (!s.empty() || c.type == ColType::Ole) quoted(out, s);
            }
        },
        v);
}

// ---- the dump's value formats ----

// The stored date double as the reference implementation turns it into a LocalDateTime: whole
// days truncated toward zero, the fraction's absolute value as the time of day, its milliseconds
// rounded half-even from the exact binary value.
std::string dumpDate(double value) {
    if (!std::isfinite(value) || std::fabs(value) > 1e9) return printf1("%.17g", value);
    int64_t dateSeconds = int64_t(value) * 86400;
    double secondsDouble = std::fmod(std::fabs(value), 1.0) * 86400.0;
    int64_t timeSeconds = int64_t(secondsDouble);
    double frac = std::fmod(secondsDouble, 1.0);
    int64_t millis = 0;
    if (frac != 0.0) {
        // frac * 1000 is exact in long double (53 + 10 bits), so the rounding sees the exact value.
        long double scaled = (long double)frac * 1000.0L;
        long double fl = std::floor(scaled);
        long double rest = scaled - fl;
        int64_t m = int64_t(fl);
        if (rest > 0.5L || (rest == 0.5L && (m & 1))) ++m;
        millis = int64_t((double(m) / 1000.0) * 1000.0);
    }
    int64_t total = dateSeconds + timeSeconds;  // seconds from 1899-12-30 00:00
    int64_t days = total >= 0 ? total / 86400 : -((-total + 86399) / 86400);
    int64_t secOfDay = total - days * 86400;
    int64_t ms = millis;
    if (ms >= 1000) {
        secOfDay += ms / 1000;
        ms %= 1000;
        if (secOfDay >= 86400) {
            secOfDay -= 86400;
            ++days;
        }
    }
    // Civil date from days since 1970-01-01 (1899-12-30 is day -25569).
    int64_t z = days - 25569 + 719468;
    int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    int64_t doe = z - era * 146097;
    int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    int64_t y = yoe + era * 400;
    int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    int64_t mp = (5 * doy + 2) / 153;
    int64_t d = doy - (153 * mp + 2) / 5 + 1;
    int64_t m = mp < 10 ? mp + 3 : mp - 9;
    if (m <= 2) ++y;
    char b[64];
    std::snprintf(b, sizeof b, "%04" PRId64 "-%02" PRId64 "-%02" PRId64 " %02d:%02d:%02d.%03d", y, m, d, int(secOfDay / 3600),
                  int(secOfDay / 60 % 60), int(secOfDay % 60), int(ms));
    return b;
}

void escaped(Out& out, std::string_view s) {
    size_t from = 0;
    for (size_t i = 0; i < s.size(); ++i) {
        const char* rep = nullptr;
        switch (s[i]) {
            case '\\': rep = "\\\\"; break;
            case '\t': rep = "\\t"; break;
            case '\n': rep = "\\n"; break;
            case '\r': rep = "\\r"; break;
            default: continue;
        }
        out << s.substr(from, i - from) << rep;
        from = i + 1;
    }
    out << s.substr(from);
}

void hex(Out& out, const Bytes& b) {
    static const char* d = "0123456789abcdef";
    std::string s = "x";
    s.reserve(1 + 2 * b.size());
    for (uint8_t c : b) {
        s.push_back(d[c >> 4]);
        s.push_back(d[c & 15]);
    }
    out << s;
}

void dumpValue(Out& out, const Value& v) {
    char b[32];
    std::visit(
        [&](const auto& x) {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, std::monostate>) out << "\\N";
            else if constexpr (std::is_same_v<T, bool>) out << (x ? "1" : "0");
            else if constexpr (std::is_same_v<T, uint8_t>) out << std::to_string(unsigned(x));
            else if constexpr (std::is_same_v<T, int16_t> || std::is_same_v<T, int32_t>) out << std::to_string(x);
            else if constexpr (std::is_same_v<T, Currency>) out << money(x.scaled);
            else if constexpr (std::is_same_v<T, float>) {
                uint32_t bits;
                std::memcpy(&bits, &x, 4);
                std::snprintf(b, sizeof b, "0x%08" PRIx32, bits);
                out << b;
            } else if constexpr (std::is_same_v<T, double>) {
                uint64_t bits;
                std::memcpy(&bits, &x, 8);
                std::snprintf(b, sizeof b, "0x%016" PRIx64, bits);
                out << b;
            } else if constexpr (std::is_same_v<T, DateTime>) out << dumpDate(x.days);
            else if constexpr (std::is_same_v<T, std::string>) escaped(out, x);
            else if constexpr (std::is_same_v<T, Bytes>) hex(out, x);
            else if constexpr (std::is_same_v<T, Guid>) out << guidText(x);
            else if constexpr (std::is_same_v<T, Decimal>) {
                std::string s = withPoint(digits96(x.magnitude), x.scale);
                bool zero = x.magnitude[0] == 0 && x.magnitude[1] == 0 && x.magnitude[2] == 0;
                out << (x.negative && !zero ? "-" + s : s);
            }
        },
        v);
}

std::string indexKind(const TableDef& def, const LogicalIndex& l) {
    if (l.kind == 0x01) return "primary";
    if (l.kind == 0x02) return "foreign";
    return def.realIndexes[l.realIndex].unique() ? "unique" : "plain";
}

std::string indexColumns(const TableDef& def, const LogicalIndex& l) {
    std::string s;
    for (const auto& k : def.realIndexes[l.realIndex].columns) {
        if (!s.empty()) s += ",";
        if (!k.ascending) s += "-";
        for (const auto& c : def.columns)
            if (c.number == k.columnNumber) s += c.name;
    }
    return s;
}

std::vector<const LogicalIndex*> indexesByName(const TableDef& def) {
    std::vector<const LogicalIndex*> v;
    for (const auto& l : def.logicalIndexes) v.push_back(&l);
    std::stable_sort(v.begin(), v.end(), [](const LogicalIndex* a, const LogicalIndex* b) { return a->name < b->name; });
    return v;
}

// ---- commands ----

int tables(Database& db) {
    Out out;
    for (const auto& n : db.tableNames()) out << n << '\n';
    return 0;
}

std::string sizeText(const Column& c) {
    switch (c.type) {
        case ColType::Text: return "Text(" + std::to_string(c.length / 2) + ")";
        case ColType::Binary: return "Binary(" + std::to_string(c.length) + ")";
        case ColType::Numeric:
            return "Decimal(" + std::to_string(c.precision) + "," + std::to_string(c.scale) + ")";
        default: {
            static const std::pair<ColType, const char*> names[] = {
                {ColType::Boolean, "Yes/No"},  {ColType::Byte, "Byte"},      {ColType::Integer, "Integer"},
                {ColType::Long, "Long"},       {ColType::Currency, "Currency"}, {ColType::Single, "Single"},
                {ColType::Double, "Double"},   {ColType::DateTime, "Date/Time"}, {ColType::Ole, "OLE Object"},
                {ColType::Memo, "Memo"},       {ColType::Guid, "Replication ID"}};
            for (const auto& [t, n] : names)
                if (t == c.type) return n;
            return "type " + std::to_string(int(c.type));
        }
    }
}

int schema(Database& db) {
    Out out;
    char b[256];
    bool first = true;
    for (const auto& name : db.tableNames()) {
        const TableDef& def = db.table(name).def();
        if (!first) out << '\n';
        first = false;
        out << "TABLE " << def.name << "  (" << std::to_string(def.rowCount) << " rows)\n";
        for (const auto& c : def.columns) {
            std::string extra;
            if (c.autoNumber()) extra += " autonumber";
            if (!(c.flags & 0x02)) extra += " required";
            if (c.type == ColType::Text && c.compressedUnicode()) extra += " compressed";
            std::snprintf(b, sizeof b, "  %-24s %s%s\n", c.name.c_str(), sizeText(c).c_str(), extra.c_str());
            out << b;
        }
        for (const LogicalIndex* l : indexesByName(def)) {
            // A foreign key's own index may be unique as well: say so beside the kind.
            bool alsoUnique = l->kind == 0x02 && def.realIndexes[l->realIndex].unique();
            std::snprintf(b, sizeof b, "  INDEX %-18s (%s) %s%s\n", l->name.c_str(), indexColumns(def, *l).c_str(),
                          indexKind(def, *l).c_str(), alsoUnique ? " unique" : "");
            out << b;
        }
    }
    return 0;
}

int exportCsv(Database& db, const std::string& tableName) {
    Table& t = db.table(tableName);
    const TableDef& def = t.def();
    Out out;
    for (size_t i = 0; i < def.columns.size(); ++i) out << (i ? "," : "") << def.columns[i].name;
    out << '\n';
    t.scanStored([&](RowId, const Row& row) {
        for (size_t i = 0; i < row.size(); ++i) {
            if (i) out << ',';
            exportValue(out, def.columns[i], row[i]);
        }
        out << '\n';
        return true;
    });
    return 0;
}

int dump(Database& db, const std::vector<std::string>& wanted) {
    std::vector<std::string> names;
    if (wanted.empty()) {
        names = db.tableNames();
    } else {
        for (const auto& w : wanted) names.push_back(db.table(w).name());
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    Out out;
    for (const auto& name : names) {
        Table& t = db.table(name);
        const TableDef& def = t.def();
        out << "TABLE " << def.name << '\n';
        for (const auto& c : def.columns)
            out << "COLUMN " << c.name << '\t' << typeName(c.type) << '\t' << std::to_string(c.length) << '\n';
        for (const LogicalIndex* l : indexesByName(def))
            out << "INDEX " << l->name << '\t' << indexColumns(def, *l) << '\t' << indexKind(def, *l) << '\n';
        size_t rows = 0;
        t.scan([&](RowId, const Row& row) {
            out << "ROW ";
            for (size_t i = 0; i < row.size(); ++i) {
                if (i) out << '\t';
                dumpValue(out, row[i]);
            }
            out << '\n';
            ++rows;
            return true;
        });
        out << "END " << std::to_string(rows) << '\n';
    }
    return 0;
}

int check(Database& db) {
#ifdef KEROVA_HAVE_CHECK
    std::vector<std::string> problems = checkDatabase(db);
    Out out;
    for (const auto& p : problems) out << p << '\n';
    if (problems.empty()) out << "ok\n";
    return problems.empty() ? 0 : 1;
#else
    (void)db;
    std::fprintf(stderr, "check: not built yet\n");
    return 2;
#endif
}

int usage() {
    std::fprintf(stderr,
                 "usage: kerova jet tables FILE\n"
                 "       kerova jet schema FILE\n"
                 "       kerova jet export FILE TABLE\n"
                 "       kerova jet dump FILE [TABLE...]\n"
                 "       kerova jet check FILE\n");
    return 2;
}

}  // namespace

int jetTool(const std::vector<std::string>& args) {
    if (args.size() < 2) return usage();
    const std::string& cmd = args[0];
    const std::string& file = args[1];
    bool known = cmd == "tables" || cmd == "schema" || cmd == "export" || cmd == "dump" || cmd == "check";
    if (!known || (cmd == "export" && args.size() != 3) || (cmd != "export" && cmd != "dump" && args.size() != 2))
        return usage();
    try {
        auto db = Database::open(file, Database::Mode::ReadOnly);
        if (cmd == "tables") return tables(*db);
        if (cmd == "schema") return schema(*db);
        if (cmd == "export") return exportCsv(*db, args[2]);
        if (cmd == "dump") return dump(*db, {args.begin() + 2, args.end()});
        return check(*db);
    } catch (const std::exception& e) {
        std::fflush(stdout);
        std::fprintf(stderr, "kerova jet: %s\n", e.what());
        return 1;
    }
}

}  // namespace kerova
