// The data of the catalogue. Column order is binding where the program addresses columns by
// position: Regisztrálás, VizsgaFigyelmeztetoNap, beraktar (0-12), SZAMLA (which copies beraktar
// 0-12 and Jarmuvek 0-16 by position), Cikkszám and SzervizModulAlkatreszek (which takes the
// article's fields 0-57 by position). docs/DECISIONS.md, "Catalogue", explains every choice.
#include "company/catalog.h"

#include <algorithm>
#include <cstdint>

namespace company {

namespace {

using jet::ColType;

// Widths of text columns.
constexpr int SHORT = 50;
constexpr int NAME = 100;
constexpr int LONGTEXT = 255;

using Cols = std::vector<Column>;

Column text(std::string n, int len = SHORT) { return {std::move(n), ColType::Text, len}; }
Column lng(std::string n) { return {std::move(n), ColType::Long}; }
Column integer(std::string n) { return {std::move(n), ColType::Integer}; }
Column dbl(std::string n) { return {std::move(n), ColType::Double}; }
Column currency(std::string n) { return {std::move(n), ColType::Currency}; }
Column boolean(std::string n) { return {std::move(n), ColType::Boolean}; }
Column date(std::string n) { return {std::move(n), ColType::DateTime}; }
Column autoNumber(std::string n) { return {std::move(n), ColType::Long, 0, true}; }
Column uniqueCol(Column c) {
    c.unique = true;
    return c;
}

Cols concat(std::initializer_list<Cols> parts) {
    Cols all;
    for (const auto& p : parts) all.insert(all.end(), p.begin(), p.end());
    return all;
}

Cols withUnique(Cols cols, std::string_view name) {
    for (auto& c : cols)
        if (c.name == name) c.unique = true;
    return cols;
}

// A table receiving copies of another's rows: same columns, no unique index (a key may return).
Table copyOf(std::string name, const Table& of) {
    Table t{std::move(name), of.columns};
    for (auto& c : t.columns) c.unique = false;
    return t;
}

// The first seventeen columns of Jarmuvek, in the order in which SZAMLA copies them to its
// positions 13-29 and in which the main form's grid lists them.
Cols vehicleHead() {
    return {text("GkFrsz"), text("GkTipus"), date("GkForgalombahelyezve"), dbl("Hengerurtartalom"),
            dbl("FogyasztásLiter100"), text("GkVezetoNeve", NAME), lng("SzervizIntervallumNap"),
            dbl("SzervizIntervallumKM"), date("MuszakiVizsgaDatum"), date("ZoldkartyaDatum"),
            currency("CascoHaviDija"), currency("KotelezoHaviDija"), lng("recordID"),
            dbl("KilometerOraAllasa"), dbl("OnkoltsegKm"), date("UtolsoSzervizDatum"),
            dbl("JelenlegiKmAllas")};
}

// The rest of the main form's grid, then the vehicle form's columns the grid doesn't show.
Cols vehicleTail() {
    return {lng("PartnerID"), text("PartnerNeve", NAME), text("Alvázszám"), text("Motorszám"),
            date("TachográfHitelesités"), date("TachoOMHEng"), dbl("SzemleKM"), dbl("OlajcsereKM"),
            dbl("NköziKarbantNaploKM"), dbl("HajtaslancOlajcsKM"), dbl("VezérmüOlajcsereKM"),
            boolean("Figyelmeztetés"), date("KotelezoBiztDatum"), boolean("Alvállalkozó"),
            date("NemzetkoziBiztDatum"), date("TuzoltoDatum")};
}

// Positions 0-12 of beraktar, which SZAMLA copies by position; 9 is the key.
Cols partnerHead(const std::string& keyName) {
    return {text("BerNev", NAME), text("BerIrszam"), text("BerSzekhely", NAME), text("BerCim", NAME),
            text("BerTelefon"), text("BerFax"), text("BerMobil"), text("BerAdoszam"),
            text("BerSzamlaszam"), lng(keyName), text("Kapcsolattartó", NAME), text("BerOrszag"),
            text("UgyfelStatus")};
}

Cols countryColumns() { return {text("Országjel"), text("Ország", NAME)}; }

// Positions 0-54 of Cikkszám: the order of the service form's cell entry rules.
Cols articleHead() {
    return {text("cikkszám"),                  // 0
            text("megnevezés", NAME),          // 1
            text("vámtarifaszám"),             // 2
            text("mennyiségi egység"),         // 3
            integer("hiba"),                   // 4: fault mark 0 or 1
            text("tarifális megnevezés", LONGTEXT),
            boolean("flag"),
            dbl("NettoSuly"),
            text("ErzekenyAru"),
            text("ARUCSOPORT"),
            dbl("NETTO"),                      // 10
            dbl("AFA"),
            dbl("MENNYISEG"),
            dbl("BRUTTO"),
            text("GYARISZAM"),
            date("GARANCIALE"),
            dbl("JOVEDEKADO"),
            dbl("FOGYASZTOA"),
            text("GONGYOLEG"),
            text("SZJ"),
            text("PENZNEM"),                   // 20
            text("TAM"),
            dbl("BESZNETTO"),
            dbl("ARRESSZAZA"),
            text("MEGJEGYZES", NAME),
            text("ARUKOD"),
            dbl("BruttoSuly"),
            dbl("KulonosMennyiseg"),
            text("KulonosMertekegys"),
            date("GaranciaKezd"),
            text("Származó"),                  // 30
            text("KulonosMertekegyseg"),
            text("Tárhely1"),
            text("Tárhely2"),
            text("Tárhely3"),
            text("GarancialevélSzáma"),
            text("FotoPath", LONGTEXT),
            text("VevoNeve", NAME),
            lng("VevoRecordID"),
            dbl("EgységnyiSúly"),
            dbl("TermékdíjTétel"),             // 40
            text("TermékdíjKód"),
            dbl("KedvezménySzázalék"),
            text("KVTDMentesség"),
            dbl("MentességMértékeSzázalék"),
            lng("Azonosító"),
            text("TermékCsoportAdónemkód"),
            dbl("TermékdijasSuly"),
            text("AdómértékMennyEgys"),
            dbl("AdómértékFt"),
            text("Vonalkód"),                  // 50
            boolean("FolyamatosTelj"),
            text("KVTDAdónemKód"),
            dbl("KVTDKedvezmény"),
            dbl("DarabszámCsomagban")};        // 54
}

// The article form's other columns, from position 55 on.
Cols articleTail() {
    return {dbl("Szorzó"),  // 55
            text("CSKKod"),  // 56
            lng("CSKID"),    // 57
            boolean("CsomagolóAnyag"), boolean("CsomagolásaVan"), dbl("TermékdijTételDeviza"),
            dbl("Árfolyam"), text("FökönyviSzám"), dbl("NettóSzervezésiDíj"),
            dbl("BruttóSzervezésiDíj"), dbl("VezetöFizetés"), dbl("TávolságKM"), boolean("Különjárat"),
            boolean("Számlázható"), boolean("Aktiv"), boolean("BIZONYLA"), boolean("TARTOSAN"),
            boolean("KEROVA"), boolean("POLCRAKW"), boolean("FOGASTOR")};
}

// The warehouse issue table of the sibling products: the issue form's order, then the further
// columns of the issue list's grid.
Table kivet() {
    return {"KIVET",
            {text("MEGNEVEZES", NAME), dbl("MENNYISEG"), text("MENNY_EGYS"), dbl("NETTO"), dbl("AFA"),
             dbl("ENGEDMENY"), text("ARUKOD"), text("POLCSZAM"), text("ITJ"), date("KIDATUM"),
             text("VEVONEV", NAME), text("VEVOIRSZ"), text("VEVOSZEKH", NAME), text("VEVOCIM", NAME),
             text("VEVOADOSZ"), text("GKTIPUS"), text("SZAMLAZVA"), text("Cikkszám"),
             dbl("DevizaÁrfolyam"), text("Devizanem"), dbl("NettoDevizaEgységár"),
             dbl("BruttoDevizaEgységár"), dbl("BRUTTO"), dbl("BESZERZAR"), dbl("AFABESZ"), dbl("ARRES"),
             text("CIKKSZAM"), date("GaranciaKezdete"), date("GaranciaVége"),
             lng("SzervizIntervallumNap"), text("LiftAzonosito"), text("SzámlaSzám"),
             text("KészáruCikkszám"), dbl("SzukségesMenny"), boolean("BeépülöAnyag"),
             boolean("Készletezve"), boolean("FolyamatosTelj")}};
}

std::vector<DbFile> build() {
    Table jarmuvek{"Jarmuvek", concat({withUnique(vehicleHead(), "recordID"), vehicleTail()})};
    Table jarmuvekArchiv = copyOf("JarmuvekArchiv", jarmuvek);

    Table utak{"Utak",
               {text("FRSZ"), text("GkTipus"), text("GkVezetöNeve", NAME), date("Dátum"),
                text("Honnan", NAME), text("Hova", NAME), dbl("TávolságKm"), dbl("IndulásIdeje"),
                dbl("ÉrkezésIdeje"), dbl("ÖsszesenIdö"), text("CsoportAzonositó"), dbl("ÖsszesenKM"),
                text("Megnevezés", NAME), dbl("ÁuTömege"), text("MennyiségiEgység"),
                dbl("VezetöKezdésIdö"), dbl("VezetöVégezIdö"), text("CégNév", NAME),
                text("CégCim", NAME), dbl("FogyasztottLiter"), dbl("Üzemanyagár"),
                dbl("Üzemanyagköltség"), dbl("KezdöKM"), dbl("ZáróKM"), dbl("KezdöZáró"),
                dbl("Napidíj"), text("NapidíjPénznem"), boolean("Napidijas"), date("ElözöDátum"),
                dbl("ElözöÉrkezés"), lng("ElözöElteltIdö")}};

    // The query print's work table: the copy map in its order, then GkTipus, which the report
    // reads and the copy never fills.
    Table utakLekerdezes{"UtakLekerdezes",
                         {text("FRSZ"), text("GkVezetöNeve", NAME), date("Dátum"), text("HonnaN", NAME),
                          text("HovA", NAME), dbl("TávolságKm"), text("Cégnév", NAME), dbl("FogyLiter"),
                          dbl("FogyKöltség"), text("GkTipus")}};

    Table utakTavolsag{"UtakTavolsag",
                       {text("Honnan", NAME), text("Hova", NAME), dbl("TávolságKm"), text("HonnanOrszág"),
                        text("HovaOrszág"), autoNumber("Sorszám")}};

    Table vezetok{"Vezetok",
                  {autoNumber("Sorszám"), text("VezetöNeve", NAME), text("JogositványSzáma"),
                   date("JogositványÉrvényessége"), text("Munkakör"), text("LakcimIrSzám"),
                   text("LakcimSzékhely", NAME), text("LakcimCim", NAME), text("Elérhetöség", NAME),
                   text("Munkáltató", NAME), lng("MunkáltatóID"), text("Adóazonositó"), text("TAJSzám"),
                   text("SzületésiHely", NAME), date("SzületésiIdö"), text("AnyjaNeve", NAME),
                   boolean("Aktiv"), text("GépkocsiFrsz"), lng("PartnerID"), lng("GkID")}};

    Table vezetokJarmuvei{"VezetokJarmuvei", {lng("VezetöID"), text("Rendszám")}};
    Table megnevezesTorzs{"MegnevezesTorzs", {text("Megnevezés", NAME), autoNumber("Sorszám")}};
    Table utakSzallitottSzemely{"UtakSzallitottSzemely",
                                {text("SzállitottSzemélyNeve", NAME), text("UtakCsoportAzonosito")}};
    Table utakCsatoltOkmany{"UtakCsatoltOkmany",
                            {text("CsatoltOkmány", LONGTEXT), text("UtakCsoportAzonosito")}};
    Table utakKilometerNyt{"UtakKilometerNyt",
                           {text("VezetöNeve", NAME), date("Dátum"), text("GkTipus"), text("GkFrsz"),
                            lng("GkrecordID"), dbl("KMÁllás"), text("Honnan", NAME), text("Hova", NAME),
                            dbl("TávolságKm"), autoNumber("Sorszám")}};

    // Cégnév stands beyond position 12, where nothing reads by position.
    Table beraktar{"beraktar", concat({withUnique(partnerHead("recordID"), "recordID"),
                                       {text("Cégnév", NAME)}})};

    Table szamla{"SZAMLA",
                 concat({partnerHead("BerRecordID"),  // 0-12
                         vehicleHead(),               // 13-29
                         {date("TELJDATUM"), date("SZML_KELTE"), date("ESEDEKES"), lng("SZAMLASOR"),
                          text("MEGNEVEZES", NAME), text("ETK"), text("SZJ"), dbl("AFA"),
                          text("MENNY_EGYS"), dbl("MENNYISEG"), currency("NETTO_EGYS"),
                          dbl("ENGEDMENY"), currency("NETTO_ERTE"), text("MEGJEGYZ1", LONGTEXT),
                          text("MEGJEGYZ2", LONGTEXT), text("MEGJEGYZ3", LONGTEXT),
                          boolean("KIEGYENLIT"), date("KIEGYENDAT"), currency("KIEGYENOSZ"),
                          boolean("STORNO"), text("SZAMLASORS"), text("PENZNEM"), text("TAM"),
                          boolean("AKCIOS"), lng("Rekord"), boolean("ReszKiegyenlites"),
                          currency("ReszkiegyenlitesTeljOsszeg"), text("VTSZ")}})};

    Table cikkszam{"Cikkszám", concat({articleHead(), articleTail()})};
    Table cikkszamIdeigl = copyOf("CikkszámIdeigl", cikkszam);

    Table szervizModul{"SzervizModul",
                       {lng("JármüID"), uniqueCol(text("recordID")), text("SzerelöNeve", NAME),
                        text("SzerelöKódja"), date("Dátum"), text("Munkavégzés", LONGTEXT),
                        dbl("KmÁllás"), dbl("Óradij"), dbl("Rezsióradij"), dbl("Munkaóra"),
                        dbl("Rezsidij"), dbl("Munkadij"), dbl("EsedékességKM"), text("Pénznem"),
                        lng("AlkatrészID"), lng("SzervizModulID")}};

    // The article's fields 0-57 are copied here by position: 0-54 are Cikkszám's, 55 is JármüID
    // (the copied field 55 is overwritten at once), 56-57 are Cikkszám's again; recordID is 58.
    Cols tail = articleTail();
    Table szervizModulAlkatreszek{"SzervizModulAlkatreszek",
                                  concat({articleHead(), {lng("JármüID")}, {tail[1], tail[2]},
                                          {text("recordID")}})};

    Table szervizModulMunkak{"SzervizModulMunkak",
                             {text("MunkaMegnevezés", LONGTEXT), text("MunkaKód")}};
    Table szervizModulSzerelok{"SzervizModulSzerelok", {text("SzerelöNeve", NAME), text("SzerelöKódja")}};

    Table napidij{"Napidij",
                  {text("Jármüvezetö", NAME), date("Dátum"), text("HonnaN", NAME), text("HovA", NAME),
                   dbl("Indulás"), dbl("Érkezés"), text("ÖsszesenIdö"), dbl("Napidíj"),
                   text("NapidíjPénznem")}};

    Table egyebek{"Egyebek", {dbl("Napidíj"), text("NapidíjDevizanem")}};
    Table mennyisegiEgyseg{"MennyisegiEgyseg", {text("MennyiségiEgység"), boolean("Állandó")}};
    Table path{"Path",
               {text("PolcrakPath", LONGTEXT), text("FogastorPath", LONGTEXT),
                text("BizonylaNextPath", LONGTEXT), text("InterfacePath", LONGTEXT)}};

    // Read by position 0-9: whole days, then whole kilometres.
    Table vizsga{"VizsgaFigyelmeztetoNap",
                 {integer("MüszakiVizsgaFigyelmeztetöNap"), integer("ZöldkártyaFigyelmeztetöNap"),
                  integer("TachográfHitelesNap"), integer("TachográfOMHEngNap"),
                  integer("BiztosításZöldkNap"), lng("SzemleKilométer"), lng("OlajcsereKilométer"),
                  lng("NkKarbantNaplóKilométer"), lng("HajtásláncOlajcsereKilométer"),
                  lng("VezérmüÉkszijcsereKilométer")}};

    Table bettorzs{"Bettorzs",
                   {text("UzNev", NAME), text("UzIrszam"), text("UzSzekhely", NAME), text("UzCim", NAME),
                    text("UzAdoszam"), text("UzSzamlaszam"), text("Uztelefon"), text("UzFax"),
                    text("UzMobil"), text("EUAdoszam"), text("VPID"), text("Telephely", LONGTEXT)}};

    // The action log, written by position 0-9 only.
    Table regisztralas{"Regisztrálás",
                       {text("FelhasznaloAzonosito"),   // 0 user's identifier
                        text("FelhasznaloNeve", NAME),  // 1 user's name
                        date("Dátum"),                  // 2 today
                        date("Idö"),                    // 3 the time of day (VB's Time value)
                        text("Esemény", LONGTEXT),      // 4 the action
                        text("Könyvtár", LONGTEXT),     // 5 the current directory
                        integer("Jogosultság"),         // 6 access level
                        text("FormNeve"),               // 7 the form's name
                        dbl("Azonosító"),               // 8 the form's key through NullToNum
                        text("Termék")}};               // 9 "Kerova"

    Table szervizParameter{"SzervizParameter", {dbl("RaklapSuly")}};

    Table vamtarifaszam{"Vámtarifaszám",
                        {text("Vámtarifaszám"), date("Érvényesség dátumtól"), date("Érvényesség dátumig"),
                         lng("VamtariafaszámÉrvID"), text("Tarifális megnevezés", LONGTEXT),
                         text("KulonosMertekegyseg")}};

    Table cimzett{"Címzett",
                  {uniqueCol(lng("recordID")), text("CimNev", NAME), text("CimIrszam"),
                   text("CimSzekhely", NAME), text("CimCim", NAME), text("CimTelefon"), text("CimFax"),
                   text("CimMobil"), text("CimAdoszam"), text("CimSzamlaszam"),
                   text("Kapcsolattartó", NAME), text("SzamlazasSzekhelye", NAME),
                   text("SzamlazasIrszama"), text("SzamlazasCime", NAME), text("VevoKodja"),
                   text("JutalekJel"), lng("FizetésiHatáridö"), lng("KézhezvételNap"),
                   text("KapcsolattartóCime", LONGTEXT), text("Megjegyzés", LONGTEXT),
                   boolean("FolyamatosTelj"), boolean("NemAktiv"), boolean("KVTDÁtvállalás"),
                   boolean("Különjárat"), boolean("Munkásjárat"), boolean("Alvállalkozó"),
                   boolean("PénzforgalmiElszámolás"), text("CimOrszag")}};

    Table orszagjel{"Orszagjel", countryColumns()};
    Table orszagjelArchiv{"OrszagjelArchiv", countryColumns()};

    return {
        {"Kerova.dsb", {"Kerova.dsb", "kerova.dsb"}, false,
         {jarmuvek, jarmuvekArchiv, utak, utakLekerdezes, utakTavolsag, vezetok, megnevezesTorzs,
          utakSzallitottSzemely, utakCsatoltOkmany, utakKilometerNyt, beraktar, orszagjel, szamla,
          szervizModul, szervizModulAlkatreszek, szervizModulMunkak, szervizModulSzerelok}},
        {"KerovaLekerdez.dsb", {"KerovaLekerdez.dsb"}, false, {napidij}},
        {"parameter.dsb", {"parameter.dsb", "Parameter.dsb"}, false,
         {egyebek, mennyisegiEgyseg, path, orszagjelArchiv}},
        {"Torzsek.dsb", {"Torzsek.dsb"}, false, {vizsga, bettorzs}},
        {"Regiszt.dsb", {"Regiszt.dsb", "regiszt.dsb", "regiszt.mdb"}, false,
         {regisztralas, szervizParameter}},
        {"betarol.mdb", {"betarol.mdb", "betarol.dsb"}, false,
         {cikkszam, cikkszamIdeigl, vamtarifaszam, orszagjel}},
        {"kitarol.mdb", {"kitarol.mdb"}, false, {cimzett}},
        {"Tartosan.dsb", {"Tartosan.dsb"}, false, {vezetokJarmuvei}},
        {"Polcrak.dsb", {"Polcrak.dsb"}, true, {kivet()}},
        {"Fogastor.DSB", {"Fogastor.DSB"}, true, {kivet()}},
    };
}

// Lower case of one code point, for the letters names use (ASCII, Latin-1, Latin Extended-A).
char32_t lower(char32_t c) {
    if (c >= 'A' && c <= 'Z') return c + 32;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 && c != 0x17F) {
        bool evenIsUpper = !((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E));
        bool isUpper = evenIsUpper ? (c % 2 == 0) : (c % 2 == 1);
        return isUpper ? c + 1 : c;
    }
    return c;
}

// Next code point of UTF-8 text (a stray byte stands for itself).
char32_t next(std::string_view s, size_t& i) {
    auto b = static_cast<unsigned char>(s[i]);
    if (b >= 0xC0 && b < 0xE0 && i + 1 < s.size()) {
        char32_t c = ((b & 0x1F) << 6) | (static_cast<unsigned char>(s[i + 1]) & 0x3F);
        i += 2;
        return c;
    }
    ++i;
    return b;
}

// A column name in plain ASCII letters and digits: accents dropped, everything else left out.
std::string asciiName(std::string_view s) {
    static const std::u32string from = U"ÁÄÉÍÓÖŐÚÜŰáäéíóöőúüű";
    static const std::string to = "AAEIOOOUUUaaeiooouuu";
    std::string out;
    for (size_t i = 0; i < s.size();) {
        char32_t c = next(s, i);
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            out += static_cast<char>(c);
        } else if (auto k = from.find(c); k != std::u32string::npos) {
            out += to[k];
        }
    }
    return out;
}

}  // namespace

const Column* Table::column(std::string_view columnName) const {
    int p = position(columnName);
    return p < 0 ? nullptr : &columns[static_cast<size_t>(p)];
}

int Table::position(std::string_view columnName) const {
    for (size_t i = 0; i < columns.size(); ++i)
        if (sameName(columns[i].name, columnName)) return static_cast<int>(i);
    return -1;
}

std::vector<std::string> Table::columnNames() const {
    std::vector<std::string> out;
    for (const auto& c : columns) out.push_back(c.name);
    return out;
}

const Table* DbFile::table(std::string_view tableName) const {
    for (const auto& t : tables)
        if (sameName(t.name, tableName)) return &t;
    return nullptr;
}

const std::vector<DbFile>& allFiles() {
    static const std::vector<DbFile> files = build();
    return files;
}

std::vector<const DbFile*> companyFiles() {
    std::vector<const DbFile*> out;
    for (const auto& f : allFiles())
        if (!f.sibling) out.push_back(&f);
    return out;
}

std::vector<const DbFile*> siblingFiles() {
    std::vector<const DbFile*> out;
    for (const auto& f : allFiles())
        if (f.sibling) out.push_back(&f);
    return out;
}

const DbFile* findFile(std::string_view spelling) {
    for (const auto& f : allFiles())
        for (const auto& s : f.spellings)
            if (sameName(s, spelling)) return &f;
    return nullptr;
}

bool sameName(std::string_view a, std::string_view b) {
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size())
        if (lower(next(a, i)) != lower(next(b, j))) return false;
    return i == a.size() && j == b.size();
}

jet::TableSpec tableSpec(const Table& t) {
    jet::TableSpec spec;
    spec.name = t.name;
    for (const auto& c : t.columns) {
        jet::ColumnSpec cs;
        cs.name = c.name;
        cs.type = c.type;
        if (c.type == ColType::Text) cs.length = static_cast<uint16_t>(std::clamp(c.length, 1, 255));
        cs.autoNumber = c.autoNumber;
        spec.columns.push_back(std::move(cs));
    }
    int n = 0;
    for (const auto& c : t.columns) {
        if (!c.unique && !c.autoNumber) continue;
        jet::IndexSpec ix;
        ix.name = "ix" + std::to_string(n++) + "_" + asciiName(c.name);
        ix.columns = {c.name};
        ix.unique = c.unique;
        spec.indexes.push_back(std::move(ix));
    }
    return spec;
}

}  // namespace company
