// `kerova bench-engine DIR ROWS`: the engine benchmark. The same trip-shaped table (45 columns)
// and the same rows as the oracle's `bench` command (tools/jet-oracle/README.md), timed through
// our engine, through the oracle in the same run, and mdb-export of the table; a Markdown table
// on stdout for docs/PERFORMANCE.md.
#include "cli/bench.h"

#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "jet/database.h"

namespace kerova {

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

std::string name(const char* prefix, int k) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%s%02d", prefix, k);
    return buf;
}

jet::TableSpec tripShapedTable() {
    jet::TableSpec t;
    t.name = "Trips";
    t.columns.push_back({"Id", jet::ColType::Long, 0, true});
    for (int k = 1; k <= 10; ++k) t.columns.push_back({name("Text", k), jet::ColType::Text, 50});
    t.columns.push_back({"Note", jet::ColType::Memo});
    for (int k = 1; k <= 10; ++k) t.columns.push_back({name("Dbl", k), jet::ColType::Double});
    for (int k = 1; k <= 5; ++k) t.columns.push_back({name("Int", k), jet::ColType::Integer});
    for (int k = 1; k <= 8; ++k) t.columns.push_back({name("Long", k), jet::ColType::Long});
    for (int k = 1; k <= 4; ++k) t.columns.push_back({name("Money", k), jet::ColType::Currency});
    for (int k = 1; k <= 4; ++k) t.columns.push_back({name("Date", k), jet::ColType::DateTime});
    for (int k = 1; k <= 2; ++k) t.columns.push_back({name("Flag", k), jet::ColType::Boolean});
    t.indexes.push_back({"PrimaryKey", {"Id"}, true, true});
    return t;
}

std::string repeatTo(const std::string& pattern, size_t count) {
    std::string s;
    s.reserve(count);
    while (s.size() < count) s.append(pattern, 0, std::min(pattern.size(), count - s.size()));
    return s;
}

// Row i (its Id becomes i + 1), exactly as the oracle's bench fills it.
jet::Row tripRow(int i) {
    jet::Row r;
    r.reserve(45);
    r.emplace_back();  // autonumber
    for (int k = 1; k <= 10; ++k) r.emplace_back("Text" + std::to_string(k) + " " + std::to_string(i));
    if (i % 10 == 0) {
        std::string p = "Note " + std::to_string(i) + ". ";
        r.emplace_back(repeatTo(p, 5 * p.size()));
    } else {
        r.emplace_back();
    }
    for (int k = 1; k <= 10; ++k) r.emplace_back(double(i) * k + 0.25);
    for (int k = 1; k <= 5; ++k) r.emplace_back(int16_t((i * k) % 30000));
    for (int k = 1; k <= 8; ++k) r.emplace_back(int32_t(i * k * 7));
    for (int k = 1; k <= 4; ++k) r.emplace_back(jet::Currency{int64_t(i) * k * 100});
    const double base = 43831.0;  // 2020-01-01
    for (int k = 1; k <= 4; ++k) r.emplace_back(jet::DateTime{base + (10.0 * i + k) / 1440.0});
    for (int k = 1; k <= 2; ++k) r.emplace_back((i + k) % 2 == 0);
    return r;
}

class Laps {
public:
    double lap() {
        auto now = Clock::now();
        double s = std::chrono::duration<double>(now - start_).count();
        start_ = now;
        return s;
    }
    void restart() { start_ = Clock::now(); }

private:
    Clock::time_point start_ = Clock::now();
};

// Runs a shell command and returns its stdout (empty on failure).
std::string capture(const std::string& cmd) {
    std::string out;
    FILE* p = popen(cmd.c_str(), "r");
    if (!p) return out;
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
    pclose(p);
    return out;
}

std::string quote(const std::string& s) { return "'" + s + "'"; }

}  // namespace

int benchEngine(const std::string& dir, int rows) {
    fs::create_directories(dir);
    std::string file = (fs::path(dir) / "bench-engine.mdb").string();
    fs::remove(file);
    fs::remove(file + ".klk");
    std::map<std::string, double> ours;
    std::vector<std::string> order = {"insert", "open_scan", "open_scan_warm", "sum", "find", "update", "delete"};
    try {
        Laps t;
        {
            auto db = jet::Database::create(file);
            jet::Table& table = db->createTable(tripShapedTable());
            db->begin();
            for (int i = 0; i < rows; ++i) table.insert(tripRow(i));
            db->commit();
        }
        ours["insert"] = t.lap();
        for (const char* op : {"open_scan", "open_scan_warm"}) {
            auto db = jet::Database::open(file, jet::Database::Mode::ReadOnly);
            size_t values = 0;
            db->table("Trips").scan([&](jet::RowId, const jet::Row& r) {
                for (const auto& v : r) values += !jet::isNull(v);
                return true;
            });
            if (values == 0) throw std::runtime_error("no values read");
            ours[op] = t.lap();
        }
        {
            auto db = jet::Database::open(file, jet::Database::Mode::ReadOnly);
            jet::Table& table = db->table("Trips");
            t.restart();
            size_t col = 12;  // Dbl01
            double sum = 0;
            table.scanColumns({col}, [&](jet::RowId, const jet::Row& r) {
                sum += std::get<double>(r[0]);
                return true;
            });
            if (sum <= 0) throw std::runtime_error("bad sum");
            ours["sum"] = t.lap();
            int32_t id = rows / 2 + 1;
            auto found = table.seek("PrimaryKey", {jet::Value(id)});
            if (found.size() != 1 || std::get<int32_t>(table.readValue(found[0], 0)) != id)
                throw std::runtime_error("row not found by its key");
            ours["find"] = t.lap();
        }
        {
            auto db = jet::Database::open(file);
            jet::Table& table = db->table("Trips");
            db->begin();
            for (jet::RowId id : table.rowIds()) {
                jet::Row r = table.read(id);
                r[12] = std::get<double>(r[12]) + 1.0;
                table.update(id, std::move(r));
            }
            db->commit();
            ours["update"] = t.lap();
            db->begin();
            std::vector<jet::RowId> even;
            table.scanColumns({0}, [&](jet::RowId id, const jet::Row& r) {
                if (std::get<int32_t>(r[0]) % 2 == 0) even.push_back(id);
                return true;
            });
            for (jet::RowId id : even) table.remove(id);
            db->commit();
            ours["delete"] = t.lap();
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kerova bench: %s\n", e.what());
        return 1;
    }

    // mdb-export of what is left, and the oracle's run of the same operations.
    Laps t;
    std::string exported = capture("mdb-export " + quote(file) + " Trips 2>/dev/null | wc -l");
    double exportSecs = t.lap();
    std::map<std::string, double> theirs;
    const char* jar = std::getenv("KEROVA_ORACLE_JAR");
    if (jar && fs::exists(jar)) {
        std::string ofile = (fs::path(dir) / "bench-oracle.mdb").string();
        std::string out = capture("java -jar " + quote(jar) + " bench " + quote(ofile) + " " + std::to_string(rows));
        size_t pos = 0;
        while (pos < out.size()) {
            size_t nl = out.find('\n', pos);
            std::string line = out.substr(pos, nl == std::string::npos ? std::string::npos : nl - pos);
            pos = nl == std::string::npos ? out.size() : nl + 1;
            size_t tab = line.find('\t');
            if (tab != std::string::npos) theirs[line.substr(0, tab)] = std::atof(line.c_str() + tab + 1);
        }
        fs::remove(ofile);
    }

    std::printf("Engine benchmark: %d rows of a 45-column trip-shaped table\n\n", rows);
    std::printf("| operation | kerova (s) | oracle (s) | oracle / kerova |\n|---|---:|---:|---:|\n");
    for (const auto& op : order) {
        std::string key = op == "open_scan_warm" ? "open_scan" : op;
        double o = ours[op];
        auto th = theirs.find(key);
        if (th != theirs.end() && o > 0)
            std::printf("| %s | %.4f | %.4f | %.1f |\n", op.c_str(), o, th->second, th->second / o);
        else
            std::printf("| %s | %.4f | - | - |\n", op.c_str(), o);
    }
    std::printf("| mdb-export (%s rows left) | - | - | %.4f s |\n",
                exported.empty() ? "?" : std::to_string(std::max(0, std::atoi(exported.c_str()) - 1)).c_str(), exportSecs);
    fs::remove(file);
    fs::remove(file + ".klk");
    return 0;
}

}  // namespace kerova
