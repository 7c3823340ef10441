#include "workshop/AlkatreszekFormX.h"

#include <QFormLayout>
#include <QLabel>

#include "forms/globals.h"

namespace workshop {

namespace {
// The part columns of the service visit's grid, positions 0 to 55.
const char* const PartColumns[] = {
    "cikkszám", "megnevezés", "vámtarifaszám", "mennyiségi egység", "hiba", "tarifális megnevezés", "flag",
    "NettoSuly", "ErzekenyAru", "ARUCSOPORT", "NETTO", "AFA", "MENNYISEG", "BRUTTO", "GYARISZAM", "GARANCIALE",
    "JOVEDEKADO", "FOGYASZTOA", "GONGYOLEG", "SZJ", "PENZNEM", "TAM", "BESZNETTO", "ARRESSZAZA", "MEGJEGYZES",
    "ARUKOD", "BruttoSuly", "KulonosMennyiseg", "KulonosMertekegys", "GaranciaKezd", "Származó",
    "KulonosMertekegyseg", "Tárhely1", "Tárhely2", "Tárhely3", "GarancialevélSzáma", "FotoPath", "VevoNeve",
    "VevoRecordID", "EgységnyiSúly", "TermékdíjTétel", "TermékdíjKód", "KedvezménySzázalék", "KVTDMentesség",
    "MentességMértékeSzázalék", "Azonosító", "TermékCsoportAdónemkód", "TermékdijasSuly", "AdómértékMennyEgys",
    "AdómértékFt", "Vonalkód", "FolyamatosTelj", "KVTDAdónemKód", "KVTDKedvezmény", "DarabszámCsomagban",
    "JármüID"};

Master parts() {
    Master m;
    m.name = "AlkatreszekFormX";
    m.title = "Alkatrészek saját törzs - Kerova";
    m.table = "SzervizModulAlkatreszek";
    m.nameField = "megnevezés";
    m.codeField = "cikkszám";
    m.nameCaption = "Megnevezés:";
    m.codeCaption = "Cikkszám:";
    for (const char* c : PartColumns) {
        std::string s = c;
        if (s == "AFA" || s == "SZJ" || s == "TAM") continue;
        m.columns.push_back({s, s, s == "megnevezés" ? 240 : 0});
    }
    m.searchKey = "Cikkszám";
    m.logOpen = "AlkatreszekFormX";
    m.logNew = "Alkatrész új adat";
    m.logPick = "Alkatrésztörzs kiválasztás";
    m.logDelete = "AlkatreszekFormX";
    m.printTitle = "MUNKÁK TÖRZS ";  // the jobs' title, kept
    m.printForm = "AlkatreszekNyomFormX";
    m.printColumns = {{"Cikkszám", "cikkszám", 2}, {"Megnevezés", "megnevezés", 4},
                      {"Me. egység", "mennyiségi egység", 1}, {"Nettó", "NETTO", 1}, {"Pénznem", "PENZNEM", 1}};
    return m;
}
}  // namespace

AlkatreszekFormX::AlkatreszekFormX() : WorkshopMasterForm(parts()) {
    Label4 = static_cast<QLabel*>(secondField);
    Label5 = label("Label5", "");
    fields->addRow(new QLabel(this), Label5);
    NyelvData->bind(Label5, "MunkaMegnevezés");
    resize(1000, 600);
}

void AlkatreszekFormX::handOver() { Globals::PickedJobName = current("megnevezés"); }

}  // namespace workshop
