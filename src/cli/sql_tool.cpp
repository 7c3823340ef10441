// `kerova sql FILE "statement"`: one statement of the program's SQL on a file, through the record
// layer. A SELECT prints TSV (a header line, then a line a row, values as the program shows them,
// Null as nothing); an UPDATE prints the number of rows it changed. A failing statement prints one
// line with its error number and changes nothing.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/company_tools.h"
#include "db/database.h"
#include "db/recordset.h"
#include "vb/conv.h"
#include "vb/error.h"

namespace kerova {

namespace {

void line(FILE* to, const std::string& s) {
    std::fwrite(s.data(), 1, s.size(), to);
    std::fputc('\n', to);
}

// A value as the program shows it, on one line of the TSV.
std::string cell(const vb::Variant& v) {
    if (vb::isNull(v) || vb::isEmpty(v)) return "";
    std::string s = vb::CStr(v);
    for (char& c : s)
        if (c == '\t' || c == '\n' || c == '\r') c = ' ';
    return s;
}

bool startsWithUpdate(const std::string& s) {
    if (s.size() < 6) return false;
    std::string head = s.substr(0, 6);
    for (char& c : head) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    return head == "update";
}

std::string trimmed(const std::string& s) {
    size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos) return "";
    size_t e = s.find_last_not_of(" \t\r\n");
    return s.substr(b, e - b + 1);
}

}  // namespace

int sqlTool(const std::vector<std::string>& args) {
    if (args.size() != 2) {
        line(stderr, "használat: kerova sql ÁLLOMÁNY \"utasítás\"");
        return 2;
    }
    std::string out;
    try {
        std::filesystem::path file = std::filesystem::absolute(args[0]);
        db::setWorkingFolder(file.parent_path());
        auto database = db::Database::open(file.filename().string());
        std::string statement = trimmed(args[1]);
        if (startsWithUpdate(statement)) {
            out = std::to_string(database->Execute(statement)) + "\n";
        } else {
            auto rs = database->OpenRecordset(statement);
            const auto& names = rs->columnNames();
            for (size_t c = 0; c < names.size(); ++c) out += (c ? "\t" : "") + names[c];
            out += '\n';
            size_t n = rs->size();
            for (size_t i = 0; i < n; ++i) {
                std::vector<vb::Variant> row = rs->peek(i);
                for (size_t c = 0; c < row.size(); ++c) {
                    if (c) out += '\t';
                    out += cell(row[c]);
                }
                out += '\n';
            }
        }
    } catch (const vb::NumberedError& e) {
        line(stderr, "hiba " + std::to_string(e.number()) + ": " + e.what());
        db::closeAll();
        return 1;
    } catch (const std::exception& e) {
        line(stderr, std::string("hiba: ") + e.what());
        db::closeAll();
        return 1;
    }
    db::closeAll();
    std::fwrite(out.data(), 1, out.size(), stdout);
    return 0;
}

}  // namespace kerova
