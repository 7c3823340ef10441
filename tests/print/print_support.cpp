#include "print/print_support.h"

#include <array>
#include <cstdio>
#include <regex>

namespace print_test {

std::string run(const std::string& command) {
    std::string out;
    FILE* p = popen(command.c_str(), "r");
    if (!p) return out;
    std::array<char, 4096> buf;
    size_t n;
    while ((n = fread(buf.data(), 1, buf.size(), p)) > 0) out.append(buf.data(), n);
    pclose(p);
    return out;
}

std::string pdfText(const std::string& path) { return run("pdftotext -layout '" + path + "' - 2>&1"); }

int pdfPages(const std::string& path) {
    std::smatch m;
    std::string info = run("pdfinfo '" + path + "' 2>&1");
    if (std::regex_search(info, m, std::regex("Pages:\\s+(\\d+)"))) return std::stoi(m[1]);
    return -1;
}

void PrintTest::SetUp() {
    GuiTest::SetUp();
    initCompany();
    dialogs->printer = true;
    vb::clock::setFixed(vb::DateSerial(2026, 11, 23));
    print::ListLayout routes;
    routes.caption = "Utak távolsága - nyomtatás";
    routes.title = "T Á V O L S Á G O K";
    routes.columns = {{"Honnan", "HONNAN:", 4},
                      {"Hova", "HOVÁ:", 4},
                      {"TávolságKm", "TÁVOLSÁG (KM):", 2, print::Align::Right}};
    print::registerListForm("UttavNyomFormX", routes);
    print::registerSheetForm("GKTorzsNyomFormX", "Gépkocsi adatlap", "", 3);
    print::setPrintSink([this](const std::vector<print::Page>& pages) {
        bool hidden = true;
        for (auto* f : forms::modalForms())
            for (const char* b : {"Command1", "Command2", "Command3", "PdfMentes"})
                if (auto* w = f->control<QPushButton>(b)) hidden = hidden && w->isHidden();
        buttonsHiddenWhilePrinting.push_back(hidden);
        if (printerWorks) printed.push_back(pages);
        return printerWorks;
    });
    print::setPdfFileChooser([](const std::string&) { return std::string(); });
    forms::setModalRunner([this](forms::Form& f) {
        auto* list = dynamic_cast<print::ListPageForm*>(&f);
        auto* sheet = dynamic_cast<print::SheetPageForm*>(&f);
        Seen s{f.name(), {}, {}, {}, {}};
        if (list) {
            for (int line = 1; line <= list->rows(); ++line) {
                std::string joined;
                auto cells = list->row(line);
                for (size_t i = 0; i < cells.size(); ++i) joined += (i ? "|" : "") + cells[i];
                s.lines.push_back(joined);
            }
            s.title = list->Cim->text().toStdString();
            s.pageLabel = list->Oldal->text().toStdString();
            s.issued = list->Kiadva->text().toStdString();
        } else if (sheet) {
            s.lines = sheet->lines();
        }
        seen.push_back(s);
        if (pageActions.empty()) return;
        auto actions = pageActions.front();
        pageActions.pop_front();
        for (auto& b : actions) {
            if (b == "close") f.closeBox();
            else click(f, b);
        }
    });
}

void PrintTest::TearDown() {
    print::setPrintSink({});
    print::setPdfFileChooser({});
    GuiTest::TearDown();
}

void PrintTest::distances(int n, const std::string& from) {
    auto db = db::Database::open("Kerova.dsb");
    auto rs = db->OpenRecordset("UtakTavolsag");
    for (int i = 1; i <= n; ++i) {
        rs->AddNew();
        rs->set("Honnan", from + " " + std::to_string(i));
        rs->set("Hova", std::string("Pécs"));
        rs->set("TávolságKm", 100.0 + i + 0.5);
        rs->Update();
    }
}

std::unique_ptr<db::Recordset> PrintTest::openDistances() {
    return db::Database::open("Kerova.dsb")->OpenRecordset("select * from UtakTavolsag order by Sorszám");
}

void PrintTest::onPage(std::vector<std::string> buttons) { pageActions.push_back(std::move(buttons)); }

print::PagedList PrintTest::distanceList(db::Recordset* rs) {
    return print::PagedList::list("UttavNyomFormX", rs, [](db::Recordset& r) {
        return std::vector<std::string>{print::str(r.get("Honnan")), print::str(r.get("Hova")),
                                        print::num(r.get("TávolságKm"))};
    });
}

}  // namespace print_test
