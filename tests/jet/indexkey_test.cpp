// Index keys against the oracle's (Jackcess's) bytes, and memcmp order against value order.
#include "jet/indexkey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <sstream>

#include "jet/error.h"
#include "support.h"

using namespace jet;

namespace {

std::string hex(const Bytes& b) {
    std::string s;
    char buf[3];
    for (uint8_t x : b) {
        std::snprintf(buf, sizeof buf, "%02X", x);
        s += buf;
    }
    return s;
}

// One table whose columns are the key columns, in order.
struct KeyTable {
    TableDef def;
    RealIndex index;
    KeyTable(std::vector<ColType> types, std::vector<bool> ascending, uint8_t scale = 4) {
        for (size_t i = 0; i < types.size(); ++i) {
            Column c;
            c.name = "c" + std::to_string(i);
            c.type = types[i];
            c.number = static_cast<uint16_t>(i + 3);  // numbers need not be positions
            c.sortOrder = kGeneralSortOrder;
            c.precision = 28;
            c.scale = scale;
            def.columns.push_back(c);
            index.columns.push_back({c.number, ascending[i]});
        }
    }
    std::string key(const Row& row) const { return hex(encodeIndexKey(def, index, row)); }
};

// Texts go to the oracle as ASCII with \uXXXX escapes (argv decoding depends on the locale).
std::string escape(const std::string& utf8) {
    std::string out;
    for (size_t i = 0; i < utf8.size();) {
        unsigned char b = utf8[i];
        uint32_t cp = b;
        int n = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        if (n > 1) cp = b & (0x3F >> (n - 1));
        for (int k = 1; k < n; ++k) cp = (cp << 6) | (utf8[i + k] & 0x3F);
        i += n;
        char buf[8];
        std::snprintf(buf, sizeof buf, "\\u%04X", cp);
        out += (cp >= 0x20 && cp < 0x7F && cp != '\\') ? std::string(1, char(cp)) : buf;
    }
    return out;
}

std::string utf8(uint32_t cp) {
    std::string s;
    if (cp < 0x80) s += char(cp);
    else if (cp < 0x800) s += {char(0xC0 | cp >> 6), char(0x80 | (cp & 0x3F))};
    else s += {char(0xE0 | cp >> 12), char(0x80 | ((cp >> 6) & 0x3F)), char(0x80 | (cp & 0x3F))};
    return s;
}

// The oracle's key for each group of values (one line per key).
std::vector<std::string> oracleKeys(const std::string& spec, const std::vector<std::string>& values) {
    std::vector<std::string> args = {"key", spec};
    args.insert(args.end(), values.begin(), values.end());
    auto r = testsupport::oracle(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    std::vector<std::string> lines;
    std::istringstream in(r.out);
    for (std::string l; std::getline(in, l);) lines.push_back(l);
    return lines;
}

#define NEED_ORACLE() \
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "oracle jar not built"

std::string randomText(std::mt19937& rng) {
    static const std::vector<std::string> alphabet = {
        "a", "á", "b", "c", "d", "e", "é", "g", "i", "í", "k", "l", "o", "ó", "ö", "ő", "s", "u",
        "ú", "ü", "ű", "z", "A", "Á", "E", "É", "I", "Í", "O", "Ó", "Ö", "Ő", "U", "Ú", "Ü", "Ű",
        "Z", " ", " ", "0", "7", "9", ".", ",", "-", "'", "/", "(", "&", "€", "ß", "–", "\x01"};
    std::string s;
    for (int n = rng() % 14; n > 0; --n) s += alphabet[rng() % alphabet.size()];
    return s;
}

}  // namespace

TEST(IndexKeyText, GeneratedTableMatchesFreshOracleRun) {
    NEED_ORACLE();
    auto r = testsupport::oracle({"codes"});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    auto field = [](uint8_t n, const std::array<uint8_t, 4>& b) {
        return n ? hex(Bytes(b.begin(), b.begin() + n)) : std::string("-");
    };
    std::ostringstream ours;
    char buf[16];
    for (const auto& c : generalSortTable()) {
        std::snprintf(buf, sizeof buf, "%04X %c ", c.code, c.kind);
        ours << buf << field(c.inlineLen, c.inlineBytes) << ' ' << field(c.extraLen, c.extraBytes)
             << ' ' << field(c.unprintLen, c.unprintBytes) << ' '
             << hex({c.modifier}) << ' ' << hex({c.crazy}) << '\n';
    }
    EXPECT_EQ(ours.str(), r.out) << "regenerate with tools/jet-oracle/gen-general-sort.sh";
}

TEST(IndexKeyText, EveryCharacterAloneAndBetweenLettersMatchesOracle) {
    NEED_ORACLE();
    std::vector<std::string> texts;
    for (const auto& c : generalSortTable()) {
        if (c.code == 0) continue;  // argv cannot carry NUL
        texts.push_back(utf8(c.code));
        texts.push_back("a" + utf8(c.code) + "b");
        texts.push_back("\u00e9" + utf8(c.code));  // after an accent code
    }
    std::vector<std::string> escaped;
    for (const auto& t : texts) escaped.push_back(escape(t));
    auto want = oracleKeys("text:desc", escaped);
    ASSERT_EQ(want.size(), texts.size());
    KeyTable t({ColType::Text}, {false});
    for (size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(t.key({texts[i]}), want[i]) << escaped[i];
}

TEST(IndexKeyText, HungarianTextsEdgeCasesAndTwoColumnsMatchOracle) {
    NEED_ORACLE();
    std::mt19937 rng(20261122);
    std::vector<std::string> texts = {
        "", " ", "   ", "a  ", "  a", "Árvíztűrő tükörfúrógép", "ÁRVÍZTŰRŐ TÜKÖRFÚRÓGÉP",
        "'quoted'", "-", "a-b", "co-op", "x\x01y\x02", "\xc2\xad" "a", "\xca\xb9" "a", "é\xca\xb9", "\xca\xb9'x-", "a\xca\xb9\xca\xb9" "b",
        "Ǆ ǅ ǆ", "Œuvre", "Straße", "12 345,50 €", "ő" + std::string(300, 'x'),
        std::string(254, 'a') + " b", std::string(255, 'a') + " b", std::string(300, ' ') + "z",
        "é" + std::string(200, 'e') + "\x01'é"};
    for (int i = 0; i < 300; ++i) texts.push_back(randomText(rng));
    std::vector<std::string> args;
    for (const auto& t : texts) {
        args.push_back(escape(t));
        args.push_back(escape(t));
    }
    auto want = oracleKeys("text:asc,text:desc", args);
    ASSERT_EQ(want.size(), texts.size());
    KeyTable t({ColType::Text, ColType::Text}, {true, false});
    for (size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(t.key({texts[i], texts[i]}), want[i]) << args[2 * i];
}

TEST(IndexKeyNumbers, EveryTypeAscendingDescendingAndNullMatchesOracle) {
    NEED_ORACLE();
    struct Case { std::string spec; ColType type; std::vector<std::pair<std::string, Value>> values; };
    auto days = [](int y, unsigned m, unsigned d, int secs) {  // Jet date: days since 1899-12-30
        auto civil = [](int y, unsigned m, unsigned d) {
            y -= m <= 2;
            int era = (y >= 0 ? y : y - 399) / 400;
            unsigned yoe = unsigned(y - era * 400), doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
            return era * 146097 + int(yoe * 365 + yoe / 4 - yoe / 100 + doy);
        };
        double dd = civil(y, m, d) - civil(1899, 12, 30), t = secs / 86400.0;
        return DateTime{dd + (dd < 0 ? -t : t)};
    };
    auto dec = [](uint32_t lo, uint32_t hi, bool neg, uint8_t scale) { return Decimal{{lo, hi, 0}, neg, scale}; };
    Guid g;
    for (int i = 0; i < 16; ++i) g.bytes[i] = uint8_t(i + 1);
    std::vector<Case> cases = {
        {"boolean", ColType::Boolean, {{"true", true}, {"false", false}, {"\\N", Value{}}}},
        {"byte", ColType::Byte, {{"0", uint8_t(0)}, {"1", uint8_t(1)}, {"255", uint8_t(255)}, {"\\N", Value{}}}},
        {"integer", ColType::Integer, {{"-32768", int16_t(-32768)}, {"-1", int16_t(-1)}, {"0", int16_t(0)}, {"32767", int16_t(32767)}}},
        {"long", ColType::Long, {{"-2147483648", INT32_MIN}, {"-5", -5}, {"0", 0}, {"7", 7}, {"2147483647", INT32_MAX}}},
        {"currency", ColType::Currency, {{"-922337203685477.5808", Currency{INT64_MIN}}, {"-0.0001", Currency{-1}}, {"0", Currency{0}}, {"12.5", Currency{125000}}}},
        {"single", ColType::Single, {{"-3.4028235E38", -3.4028235e38f}, {"-1.5", -1.5f}, {"0", 0.0f}, {"1.4E-45", 1.4e-45f}, {"0.1", 0.1f}}},
        {"double", ColType::Double, {{"-1.7976931348623157E308", -1.7976931348623157e308}, {"-0.5", -0.5}, {"0", 0.0}, {"4.9E-324", 4.9e-324}, {"46348.75", 46348.75}}},
        {"datetime", ColType::DateTime, {{"2026-11-22T13:45:10", days(2026, 11, 22, 49510)}, {"1899-12-30T06:00", days(1899, 12, 30, 21600)}, {"1899-12-29T12:00", days(1899, 12, 29, 43200)}, {"1600-02-29T23:59:59", days(1600, 2, 29, 86399)}}},
        {"guid", ColType::Guid, {{"{04030201-0605-0807-090A-0B0C0D0E0F10}", g}}},
        {"binary", ColType::Binary, {{"", Bytes{}}, {"00", Bytes{0}}, {"0102030405060708", Bytes{1, 2, 3, 4, 5, 6, 7, 8}}, {"010203040506070809", Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}}, {"FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", Bytes(17, 0xFF)}}},
        {"numeric:p28:s4", ColType::Numeric, {{"0", dec(0, 0, false, 0)}, {"-1.5", dec(15, 0, true, 1)}, {"1.5", dec(15000, 0, false, 4)}, {"79027398.2462", dec(0xFFFFFFFE, 0xB7, false, 4)}, {"-0.0001", dec(1, 0, true, 4)}}},
    };
    // Five types (ten key columns, each ascending and descending) per oracle call; shorter value
    // lists are padded with nulls.
    for (size_t first = 0; first < cases.size(); first += 5) {
        size_t last = std::min(cases.size(), first + 5), rows = 0;
        std::string spec;
        std::vector<ColType> types;
        for (size_t c = first; c < last; ++c) {
            spec += (spec.empty() ? "" : ",") + cases[c].spec + ":asc," + cases[c].spec + ":desc";
            types.insert(types.end(), {cases[c].type, cases[c].type});
            rows = std::max(rows, cases[c].values.size());
        }
        std::vector<std::string> args;
        std::vector<Row> ours(rows);
        for (size_t r = 0; r < rows; ++r) {
            for (size_t c = first; c < last; ++c) {
                bool has = r < cases[c].values.size();
                std::string text = has ? cases[c].values[r].first : "\\N";
                Value v = has ? cases[c].values[r].second : Value{};
                args.insert(args.end(), {text, text});
                ours[r].insert(ours[r].end(), {v, v});
            }
        }
        auto want = oracleKeys(spec, args);
        ASSERT_EQ(want.size(), rows) << spec;
        KeyTable t(types, std::vector<bool>(types.size() / 2 * 2, true));
        for (size_t i = 1; i < types.size(); i += 2) t.index.columns[i].ascending = false;
        for (size_t r = 0; r < rows; ++r) EXPECT_EQ(t.key(ours[r]), want[r]) << spec << " row " << r;
    }
}

TEST(IndexKeyOrder, MemcmpOrderIsValueOrderAscendingAndReversedDescending) {
    // Numbers: sorted values give strictly increasing keys (decreasing when descending).
    std::mt19937 rng(7);
    std::vector<double> ds = {-INFINITY, -1e300, -1, -1e-300, 0, 1e-300, 1, 1e300, INFINITY};
    for (int i = 0; i < 200; ++i) ds.push_back(std::ldexp(double(rng()) - 2147483648.0, int(rng() % 40) - 20));
    std::sort(ds.begin(), ds.end());
    ds.erase(std::unique(ds.begin(), ds.end()), ds.end());
    KeyTable dt({ColType::Double, ColType::Long}, {true, false});
    for (size_t i = 1; i < ds.size(); ++i) {
        EXPECT_LT(encodeIndexKey(dt.def, dt.index, {ds[i - 1], 0}), encodeIndexKey(dt.def, dt.index, {ds[i], 0}));
        auto v = int32_t(std::clamp(ds[i], -2e9, 2e9)), u = int32_t(std::clamp(ds[i - 1], -2e9, 2e9));
        if (u != v) {
            EXPECT_GT(encodeIndexKey(dt.def, dt.index, {0.0, u}), encodeIndexKey(dt.def, dt.index, {0.0, v}));
        }
    }
    // Nulls first ascending, last descending.
    EXPECT_LT(encodeIndexKey(dt.def, dt.index, {Value{}, 0}), encodeIndexKey(dt.def, dt.index, {-INFINITY, 0}));
    EXPECT_GT(encodeIndexKey(dt.def, dt.index, {0.0, Value{}}), encodeIndexKey(dt.def, dt.index, {0.0, INT32_MIN}));
    // Texts: case ignored, accents after their base letter, then the next letter.
    auto k = [](const char* s) { return encodeGeneralText(s); };
    EXPECT_EQ(k("alma"), k("ALMA"));
    EXPECT_EQ(k("alma  "), k("alma"));
    EXPECT_LT(k("o"), k("ó"));
    EXPECT_LT(k("ö"), k("ő"));
    EXPECT_LT(k("ő"), k("p"));
    EXPECT_LT(k("áa"), k("ab"));  // the accent only decides between otherwise equal texts
    EXPECT_LT(k("ab"), k("áb"));
    EXPECT_LT(k(""), k("a"));
}

TEST(IndexKeyErrors, UnencodableTextsSortOrdersAndValuesAreRefused) {
    auto kind = [](auto f) {
        try { f(); } catch (const JetError& e) { return e.kind(); }
        return ErrorKind::Io;  // "no error"
    };
    EXPECT_FALSE(canEncodeGeneralText("日本"));
    EXPECT_FALSE(canEncodeGeneralText("a\xF0\x9F\x98\x80"));
    EXPECT_FALSE(canEncodeGeneralText("\xC3"));
    EXPECT_TRUE(canEncodeGeneralText("Árvíztűrő tükörfúrógép – 12 €"));
    EXPECT_TRUE(canEncodeGeneralText(std::string(255, 'a') + "日"));  // cut off before the key
    EXPECT_EQ(kind([] { encodeGeneralText("t\xC3\xA9l\xE6\x97\xA5"); }), ErrorKind::SortOrder);
    EXPECT_EQ(kind([] { encodeGeneralText("\xFF"); }), ErrorKind::Invalid);

    KeyTable t({ColType::Text, ColType::Numeric}, {true, true});
    EXPECT_EQ(kind([&] { t.key({std::string("🙂"), Value{}}); }), ErrorKind::SortOrder);
    EXPECT_EQ(kind([&] { t.key({std::string("a"), Decimal{{1, 0, 0}, false, 5}}); }), ErrorKind::Invalid);  // 5 > scale 4
    EXPECT_EQ(kind([&] { t.key({int32_t(1), Value{}}); }), ErrorKind::Invalid);
    auto seek = encodeSeekKey(t.def, t.index, {std::string("ab")});
    auto full = encodeIndexKey(t.def, t.index, {std::string("ab"), Value{}});
    EXPECT_EQ(Bytes(full.begin(), full.begin() + seek.size()), seek);
    t.def.columns[0].sortVersion = 1;  // the later General order
    EXPECT_EQ(kind([&] { t.key({std::string("a"), Value{}}); }), ErrorKind::SortOrder);
    t.def.columns[0].sortVersion = 0;
    t.def.columns[0].sortOrder = 1038;  // Hungarian
    EXPECT_EQ(kind([&] { t.key({std::string("a"), Value{}}); }), ErrorKind::SortOrder);
    EXPECT_EQ(kind([&] { t.key({Value{}, Value{}}); }), ErrorKind::Io);  // a null needs no codes
}
