package kerova.core.db;

import static kerova.core.db.Catalog.*;

import java.util.Arrays;
import java.util.List;

/**
 * The data of the catalogue (Part 1.1 and the Data model section of every Part).
 *
 * <p>Column order is the order in which the Parts give the columns; where a Part addresses columns
 * by ordinal ({@code Regisztrálás}, {@code VizsgaFigyelmeztetoNap}, {@code beraktar}, {@code SZAMLA},
 * {@code Jarmuvek} as {@code SZAMLA} copies it, {@code Cikkszám} and {@code SzervizModulAlkatreszek})
 * that order is binding and {@code CatalogTest} guards it. The choices that the spec leaves open
 * are written down in {@code docs/DECISIONS.md}, section "Catalogue".
 */
final class CatalogData {
    private CatalogData() {
    }

    /** Widths of text columns (the spec leaves them to us; Part 1.1). */
    private static final int SHORT = 50;
    private static final int NAME = 100;
    private static final int LONGTEXT = 255;

    // ------------------------------------------------------------------ Part 2.1: vehicles

    /**
     * The first seventeen columns of {@code Jarmuvek}, in the order in which {@code SZAMLA} copies
     * them to its positions 13 to 29 (Part 4.3) and in which Part 1.2's grid lists them. {@code recordID}
     * is plain here; {@code Jarmuvek} itself gives it the unique index.
     */
    private static Column[] vehicleHead() {
        return new Column[] {
            text("GkFrsz", SHORT),
            text("GkTipus", SHORT),
            date("GkForgalombahelyezve"),
            dbl("Hengerurtartalom"),
            dbl("FogyasztásLiter100"),
            text("GkVezetoNeve", NAME),
            lng("SzervizIntervallumNap"),
            dbl("SzervizIntervallumKM"),
            date("MuszakiVizsgaDatum"),
            date("ZoldkartyaDatum"),
            currency("CascoHaviDija"),
            currency("KotelezoHaviDija"),
            lng("recordID"),
            dbl("KilometerOraAllasa"),
            dbl("OnkoltsegKm"),
            date("UtolsoSzervizDatum"),
            dbl("JelenlegiKmAllas"),
        };
    }

    /** The other columns of {@code Jarmuvek}: the rest of Part 1.2's grid, then the rest of Part 2.1. */
    private static Column[] vehicleTail() {
        return new Column[] {
            // Part 1.2, DBGrid1, after JelenlegiKmAllas
            lng("PartnerID"),
            text("PartnerNeve", NAME),
            text("Alvázszám", SHORT),
            text("Motorszám", SHORT),
            date("TachográfHitelesités"),
            date("TachoOMHEng"),
            dbl("SzemleKM"),
            dbl("OlajcsereKM"),
            dbl("NköziKarbantNaploKM"),
            dbl("HajtaslancOlajcsKM"),
            dbl("VezérmüOlajcsereKM"),
            bool("Figyelmeztetés"),
            // Part 2.1, columns that Part 1.2's grid doesn't show, in Part 2.1's order
            date("KotelezoBiztDatum"),
            bool("Alvállalkozó"),
            date("NemzetkoziBiztDatum"),
            date("TuzoltoDatum"),
        };
    }

    static final Table JARMUVEK = table("Jarmuvek",
            concat(unique(vehicleHead(), "recordID"), vehicleTail()));

    /** Part 2.3: the same columns in the same order; the copy runs by position. */
    static final Table JARMUVEK_ARCHIV = copyOf("JarmuvekArchiv", JARMUVEK);

    // ------------------------------------------------------------------ Part 3.1: trips

    static final Table UTAK = table("Utak",
            text("FRSZ", SHORT),
            text("GkTipus", SHORT),
            text("GkVezetöNeve", NAME),
            date("Dátum"),
            text("Honnan", NAME),
            text("Hova", NAME),
            dbl("TávolságKm"),
            dbl("IndulásIdeje"),
            dbl("ÉrkezésIdeje"),
            dbl("ÖsszesenIdö"),
            text("CsoportAzonositó", SHORT),
            dbl("ÖsszesenKM"),
            text("Megnevezés", NAME),
            dbl("ÁuTömege"),
            text("MennyiségiEgység", SHORT),
            dbl("VezetöKezdésIdö"),
            dbl("VezetöVégezIdö"),
            text("CégNév", NAME),
            text("CégCim", NAME),
            dbl("FogyasztottLiter"),
            dbl("Üzemanyagár"),
            dbl("Üzemanyagköltség"),
            dbl("KezdöKM"),
            dbl("ZáróKM"),
            dbl("KezdöZáró"),
            dbl("Napidíj"),
            text("NapidíjPénznem", SHORT),
            bool("Napidijas"),
            date("ElözöDátum"),
            dbl("ElözöÉrkezés"),
            lng("ElözöElteltIdö"));

    // ------------------------------------------------------------------ Part 5.3: query print work table

    static final Table UTAK_LEKERDEZES = table("UtakLekerdezes",
            // the copy map of Part 5.3, in its order
            text("FRSZ", SHORT),
            text("GkVezetöNeve", NAME),
            date("Dátum"),
            text("HonnaN", NAME),
            text("HovA", NAME),
            dbl("TávolságKm"),
            text("Cégnév", NAME),
            dbl("FogyLiter"),
            dbl("FogyKöltség"),
            // read by DataReport1 ("Típus:"), never written by the copy: prints empty
            text("GkTipus", SHORT));

    // ------------------------------------------------------------------ Part 3.3: route distances

    static final Table UTAK_TAVOLSAG = table("UtakTavolsag",
            text("Honnan", NAME),
            text("Hova", NAME),
            dbl("TávolságKm"),
            text("HonnanOrszág", SHORT),
            text("HovaOrszág", SHORT),
            autoNumber("Sorszám"));

    // ------------------------------------------------------------------ Part 3.4: drivers

    static final Table VEZETOK = table("Vezetok",
            autoNumber("Sorszám"),
            text("VezetöNeve", NAME),
            text("JogositványSzáma", SHORT),
            date("JogositványÉrvényessége"),
            text("Munkakör", SHORT),
            text("LakcimIrSzám", SHORT),
            text("LakcimSzékhely", NAME),
            text("LakcimCim", NAME),
            text("Elérhetöség", NAME),
            text("Munkáltató", NAME),
            lng("MunkáltatóID"),
            text("Adóazonositó", SHORT),
            text("TAJSzám", SHORT),
            text("SzületésiHely", NAME),
            date("SzületésiIdö"),
            text("AnyjaNeve", NAME),
            bool("Aktiv"),
            text("GépkocsiFrsz", SHORT),
            lng("PartnerID"),
            lng("GkID"));

    static final Table VEZETOK_JARMUVEI = table("VezetokJarmuvei",
            lng("VezetöID"),
            text("Rendszám", SHORT));

    // ------------------------------------------------------------------ Part 3.5: purposes, passengers, documents

    static final Table MEGNEVEZES_TORZS = table("MegnevezesTorzs",
            text("Megnevezés", NAME),
            autoNumber("Sorszám"));

    static final Table UTAK_SZALLITOTT_SZEMELY = table("UtakSzallitottSzemely",
            text("SzállitottSzemélyNeve", NAME),
            text("UtakCsoportAzonosito", SHORT));

    static final Table UTAK_CSATOLT_OKMANY = table("UtakCsatoltOkmany",
            text("CsatoltOkmány", LONGTEXT),
            text("UtakCsoportAzonosito", SHORT));

    // ------------------------------------------------------------------ Part 3.6: kilometre log

    static final Table UTAK_KILOMETER_NYT = table("UtakKilometerNyt",
            text("VezetöNeve", NAME),
            date("Dátum"),
            text("GkTipus", SHORT),
            text("GkFrsz", SHORT),
            lng("GkrecordID"),
            dbl("KMÁllás"),
            text("Honnan", NAME),
            text("Hova", NAME),
            dbl("TávolságKm"),
            autoNumber("Sorszám"));

    // ------------------------------------------------------------------ Part 4.1: partners

    /** Positions 0 to 12 of {@code beraktar}, which {@code SZAMLA} copies by ordinal; 9 is the key. */
    private static Column[] partnerHead(String keyName) {
        return new Column[] {
            text("BerNev", NAME),
            text("BerIrszam", SHORT),
            text("BerSzekhely", NAME),
            text("BerCim", NAME),
            text("BerTelefon", SHORT),
            text("BerFax", SHORT),
            text("BerMobil", SHORT),
            text("BerAdoszam", SHORT),
            text("BerSzamlaszam", SHORT),
            lng(keyName),
            text("Kapcsolattartó", NAME),
            text("BerOrszag", SHORT),
            text("UgyfelStatus", SHORT),
        };
    }

    static final Table BERAKTAR = table("beraktar", concat(
            unique(partnerHead("recordID"), "recordID"),
            // Part 5.1 names "the column Cégnév of beraktar"; beyond position 12, used by nothing
            new Column[] {text("Cégnév", NAME)}));

    // ------------------------------------------------------------------ Part 4.4: countries

    private static Column[] countryColumns() {
        return new Column[] {
            text("Országjel", SHORT),
            text("Ország", NAME),
        };
    }

    static final Table ORSZAGJEL_KEROVA = table("Orszagjel", countryColumns());
    static final Table ORSZAGJEL_BETAROL = table("Orszagjel", countryColumns());

    /** The archive of {@code OrszagJelArchivData} (Part 4.4); the name is ours. */
    static final Table ORSZAGJEL_ARCHIV = table("OrszagjelArchiv", countryColumns());

    // ------------------------------------------------------------------ Part 4.3: fuel invoices

    static final Table SZAMLA = table("SZAMLA", concat(
            partnerHead("BerRecordID"),          // 0 to 12
            vehicleHead(),                       // 13 to 29
            new Column[] {                       // 30 on
                date("TELJDATUM"),
                date("SZML_KELTE"),
                date("ESEDEKES"),
                lng("SZAMLASOR"),
                text("MEGNEVEZES", NAME),
                text("ETK", SHORT),
                text("SZJ", SHORT),
                dbl("AFA"),
                text("MENNY_EGYS", SHORT),
                dbl("MENNYISEG"),
                currency("NETTO_EGYS"),
                dbl("ENGEDMENY"),
                currency("NETTO_ERTE"),
                text("MEGJEGYZ1", LONGTEXT),
                text("MEGJEGYZ2", LONGTEXT),
                text("MEGJEGYZ3", LONGTEXT),
                bool("KIEGYENLIT"),
                date("KIEGYENDAT"),
                currency("KIEGYENOSZ"),
                bool("STORNO"),
                text("SZAMLASORS", SHORT),
                text("PENZNEM", SHORT),
                text("TAM", SHORT),
                bool("AKCIOS"),
                lng("Rekord"),
                bool("ReszKiegyenlites"),
                currency("ReszkiegyenlitesTeljOsszeg"),
                text("VTSZ", SHORT),
            }));

    // ------------------------------------------------------------------ Part 7.1: articles

    /**
     * Positions 0 to 54 of {@code Cikkszám}: the order of Part 6.1's cell entry rules (which Part
     * 7.1 makes binding), types as Part 7.1's controls use them.
     */
    private static Column[] articleHead() {
        return new Column[] {
            text("cikkszám", SHORT),                    // 0
            text("megnevezés", NAME),                   // 1
            text("vámtarifaszám", SHORT),               // 2
            text("mennyiségi egység", SHORT),           // 3
            integer("hiba"),                            // 4: fault mark 0 or 1 (Part 7.1)
            text("tarifális megnevezés", LONGTEXT),     // 5
            bool("flag"),                               // 6
            dbl("NettoSuly"),                           // 7
            text("ErzekenyAru", SHORT),                 // 8
            text("ARUCSOPORT", SHORT),                  // 9
            dbl("NETTO"),                               // 10
            dbl("AFA"),                                 // 11
            dbl("MENNYISEG"),                           // 12
            dbl("BRUTTO"),                              // 13
            text("GYARISZAM", SHORT),                   // 14
            date("GARANCIALE"),                         // 15
            dbl("JOVEDEKADO"),                          // 16
            dbl("FOGYASZTOA"),                          // 17
            text("GONGYOLEG", SHORT),                   // 18
            text("SZJ", SHORT),                         // 19
            text("PENZNEM", SHORT),                     // 20
            text("TAM", SHORT),                         // 21
            dbl("BESZNETTO"),                           // 22
            dbl("ARRESSZAZA"),                          // 23
            text("MEGJEGYZES", NAME),                   // 24
            text("ARUKOD", SHORT),                      // 25
            dbl("BruttoSuly"),                          // 26
            dbl("KulonosMennyiseg"),                    // 27
            text("KulonosMertekegys", SHORT),           // 28
            date("GaranciaKezd"),                       // 29
            text("Származó", SHORT),                    // 30
            text("KulonosMertekegyseg", SHORT),         // 31
            text("Tárhely1", SHORT),                    // 32
            text("Tárhely2", SHORT),                    // 33
            text("Tárhely3", SHORT),                    // 34
            text("GarancialevélSzáma", SHORT),          // 35
            text("FotoPath", LONGTEXT),                 // 36
            text("VevoNeve", NAME),                     // 37
            lng("VevoRecordID"),                        // 38
            dbl("EgységnyiSúly"),                       // 39
            dbl("TermékdíjTétel"),                      // 40
            text("TermékdíjKód", SHORT),                // 41
            dbl("KedvezménySzázalék"),                  // 42
            text("KVTDMentesség", SHORT),               // 43
            dbl("MentességMértékeSzázalék"),            // 44
            lng("Azonosító"),                           // 45
            text("TermékCsoportAdónemkód", SHORT),      // 46
            dbl("TermékdijasSuly"),                     // 47
            text("AdómértékMennyEgys", SHORT),          // 48
            dbl("AdómértékFt"),                         // 49
            text("Vonalkód", SHORT),                    // 50
            bool("FolyamatosTelj"),                     // 51
            text("KVTDAdónemKód", SHORT),               // 52
            dbl("KVTDKedvezmény"),                      // 53
            dbl("DarabszámCsomagban"),                  // 54
        };
    }

    /** The other columns of Part 7.1, in Part 7.1's order, from position 55 on. */
    private static Column[] articleTail() {
        return new Column[] {
            dbl("Szorzó"),                              // 55
            text("CSKKod", SHORT),                      // 56
            lng("CSKID"),                               // 57
            bool("CsomagolóAnyag"),
            bool("CsomagolásaVan"),
            dbl("TermékdijTételDeviza"),
            dbl("Árfolyam"),
            text("FökönyviSzám", SHORT),
            dbl("NettóSzervezésiDíj"),
            dbl("BruttóSzervezésiDíj"),
            dbl("VezetöFizetés"),
            dbl("TávolságKM"),
            bool("Különjárat"),
            bool("Számlázható"),
            bool("Aktiv"),
            bool("BIZONYLA"),
            bool("TARTOSAN"),
            bool("KEROVA"),
            bool("POLCRAKW"),
            bool("FOGASTOR"),
        };
    }

    static final Table CIKKSZAM = table("Cikkszám", concat(articleHead(), articleTail()));

    /** Part 7.1: the scratch table of the duplication, with the layout of {@code Cikkszám}. */
    static final Table CIKKSZAM_IDEIGL = copyOf("CikkszámIdeigl", CIKKSZAM);

    // ------------------------------------------------------------------ Part 6.1: service module

    static final Table SZERVIZ_MODUL = table("SzervizModul",
            lng("JármüID"),
            text("recordID", SHORT).asUnique(),
            text("SzerelöNeve", NAME),
            text("SzerelöKódja", SHORT),
            date("Dátum"),
            text("Munkavégzés", LONGTEXT),
            dbl("KmÁllás"),
            dbl("Óradij"),
            dbl("Rezsióradij"),
            dbl("Munkaóra"),
            dbl("Rezsidij"),
            dbl("Munkadij"),
            dbl("EsedékességKM"),
            text("Pénznem", SHORT),
            lng("AlkatrészID"),
            lng("SzervizModulID"));

    /**
     * Part 6.1: positions 0 to 57 take the article's fields 0 to 57 by position. Positions 0 to 54
     * are {@code Cikkszám}'s, 55 is {@code JármüID} (where the grid and the entry rules put it; the
     * article's field 55 lands there and is overwritten at once), 56 and 57 are {@code Cikkszám}'s
     * again, and {@code recordID} stands behind them at 58.
     */
    static final Table SZERVIZ_MODUL_ALKATRESZEK = table("SzervizModulAlkatreszek", concat(
            articleHead(),
            new Column[] {lng("JármüID")},
            Arrays.copyOfRange(articleTail(), 1, 3),
            new Column[] {text("recordID", SHORT)}));

    static final Table SZERVIZ_MODUL_MUNKAK = table("SzervizModulMunkak",
            text("MunkaMegnevezés", LONGTEXT),
            text("MunkaKód", SHORT));

    static final Table SZERVIZ_MODUL_SZERELOK = table("SzervizModulSzerelok",
            text("SzerelöNeve", NAME),
            text("SzerelöKódja", SHORT));

    // ------------------------------------------------------------------ Part 5.2: allowance work table

    static final Table NAPIDIJ = table("Napidij",
            text("Jármüvezetö", NAME),
            date("Dátum"),
            text("HonnaN", NAME),
            text("HovA", NAME),
            dbl("Indulás"),
            dbl("Érkezés"),
            text("ÖsszesenIdö", SHORT),
            dbl("Napidíj"),
            text("NapidíjPénznem", SHORT));

    // ------------------------------------------------------------------ Part 1.5: parameters

    static final Table EGYEBEK = table("Egyebek",
            dbl("Napidíj"),
            text("NapidíjDevizanem", SHORT));

    static final Table MENNYISEGI_EGYSEG = table("MennyisegiEgyseg",
            text("MennyiségiEgység", SHORT),
            bool("Állandó"));

    static final Table PATH = table("Path",
            text("PolcrakPath", LONGTEXT),
            text("FogastorPath", LONGTEXT),
            text("BizonylaNextPath", LONGTEXT),
            text("InterfacePath", LONGTEXT));

    /** Read by ordinal 0 to 9 (Parts 1.2, 1.5): whole days, then whole kilometres. */
    static final Table VIZSGA_FIGYELMEZTETO_NAP = table("VizsgaFigyelmeztetoNap",
            integer("MüszakiVizsgaFigyelmeztetöNap"),
            integer("ZöldkártyaFigyelmeztetöNap"),
            integer("TachográfHitelesNap"),
            integer("TachográfOMHEngNap"),
            integer("BiztosításZöldkNap"),
            lng("SzemleKilométer"),
            lng("OlajcsereKilométer"),
            lng("NkKarbantNaplóKilométer"),
            lng("HajtásláncOlajcsereKilométer"),
            lng("VezérmüÉkszijcsereKilométer"));

    // ------------------------------------------------------------------ Part 1.6: operator

    static final Table BETTORZS = table("Bettorzs",
            text("UzNev", NAME),
            text("UzIrszam", SHORT),
            text("UzSzekhely", NAME),
            text("UzCim", NAME),
            text("UzAdoszam", SHORT),
            text("UzSzamlaszam", SHORT),
            text("Uztelefon", SHORT),
            text("UzFax", SHORT),
            text("UzMobil", SHORT),
            text("EUAdoszam", SHORT),
            text("VPID", SHORT),
            text("Telephely", LONGTEXT));

    // ------------------------------------------------------------------ Part 1.3: action log

    /** Addressed by ordinal 0 to 9 only (Part 1.3); the names are ours. */
    static final Table REGISZTRALAS = table("Regisztrálás",
            text("FelhasznaloAzonosito", SHORT),  // 0 user's identifier (written empty)
            text("FelhasznaloNeve", NAME),        // 1 user's name (written empty)
            date("Dátum"),                        // 2 today
            date("Idö"),                          // 3 the current time
            text("Esemény", LONGTEXT),            // 4 the action
            text("Könyvtár", LONGTEXT),           // 5 the current directory
            integer("Jogosultság"),               // 6 AccessLevel
            text("FormNeve", SHORT),              // 7 the form's name
            dbl("Azonosító"),                     // 8 the form's key label through NullToNum
            text("Termék", SHORT));               // 9 "Kerova"

    // ------------------------------------------------------------------ Part 7.1: service parameters

    static final Table SZERVIZ_PARAMETER = table("SzervizParameter",
            dbl("RaklapSuly"));

    // ------------------------------------------------------------------ Part 7.4: tariff numbers

    static final Table VAMTARIFASZAM = table("Vámtarifaszám",
            text("Vámtarifaszám", SHORT),
            date("Érvényesség dátumtól"),
            date("Érvényesség dátumig"),
            lng("VamtariafaszámÉrvID"),
            text("Tarifális megnevezés", LONGTEXT),
            text("KulonosMertekegyseg", SHORT));

    // ------------------------------------------------------------------ Part 4.5: customers

    static final Table CIMZETT = table("Címzett",
            lng("recordID").asUnique(),
            text("CimNev", NAME),
            text("CimIrszam", SHORT),
            text("CimSzekhely", NAME),
            text("CimCim", NAME),
            text("CimTelefon", SHORT),
            text("CimFax", SHORT),
            text("CimMobil", SHORT),
            text("CimAdoszam", SHORT),
            text("CimSzamlaszam", SHORT),
            text("Kapcsolattartó", NAME),
            text("SzamlazasSzekhelye", NAME),
            text("SzamlazasIrszama", SHORT),
            text("SzamlazasCime", NAME),
            text("VevoKodja", SHORT),
            text("JutalekJel", SHORT),
            lng("FizetésiHatáridö"),
            lng("KézhezvételNap"),
            text("KapcsolattartóCime", LONGTEXT),
            text("Megjegyzés", LONGTEXT),
            bool("FolyamatosTelj"),
            bool("NemAktiv"),
            bool("KVTDÁtvállalás"),
            bool("Különjárat"),
            bool("Munkásjárat"),
            bool("Alvállalkozó"),
            bool("PénzforgalmiElszámolás"),
            text("CimOrszag", SHORT));

    // ------------------------------------------------------------------ Parts 6.3, 6.4: warehouse issues

    /** {@code KIVET}: Part 6.4's order, then the further columns that Part 6.3's grid lists. */
    private static Table kivet() {
        return table("KIVET",
                text("MEGNEVEZES", NAME),
                dbl("MENNYISEG"),
                text("MENNY_EGYS", SHORT),
                dbl("NETTO"),
                dbl("AFA"),
                dbl("ENGEDMENY"),
                text("ARUKOD", SHORT),
                text("POLCSZAM", SHORT),
                text("ITJ", SHORT),
                date("KIDATUM"),
                text("VEVONEV", NAME),
                text("VEVOIRSZ", SHORT),
                text("VEVOSZEKH", NAME),
                text("VEVOCIM", NAME),
                text("VEVOADOSZ", SHORT),
                text("GKTIPUS", SHORT),
                text("SZAMLAZVA", SHORT),
                text("Cikkszám", SHORT),
                dbl("DevizaÁrfolyam"),
                text("Devizanem", SHORT),
                dbl("NettoDevizaEgységár"),
                dbl("BruttoDevizaEgységár"),
                dbl("BRUTTO"),
                dbl("BESZERZAR"),
                dbl("AFABESZ"),
                dbl("ARRES"),
                text("CIKKSZAM", SHORT),
                date("GaranciaKezdete"),
                date("GaranciaVége"),
                lng("SzervizIntervallumNap"),
                text("LiftAzonosito", SHORT),
                text("SzámlaSzám", SHORT),
                text("KészáruCikkszám", SHORT),
                dbl("SzukségesMenny"),
                bool("BeépülöAnyag"),
                bool("Készletezve"),
                bool("FolyamatosTelj"));
    }

    // ------------------------------------------------------------------ the files (Part 1.1)

    static final List<Catalog.DbFile> FILES = List.of(
            file("Kerova.dsb", List.of("Kerova.dsb", "kerova.dsb"),
                    JARMUVEK, JARMUVEK_ARCHIV,
                    UTAK,
                    UTAK_LEKERDEZES,
                    UTAK_TAVOLSAG,
                    VEZETOK,
                    MEGNEVEZES_TORZS, UTAK_SZALLITOTT_SZEMELY, UTAK_CSATOLT_OKMANY,
                    UTAK_KILOMETER_NYT,
                    BERAKTAR,
                    ORSZAGJEL_KEROVA,
                    SZAMLA,
                    SZERVIZ_MODUL, SZERVIZ_MODUL_ALKATRESZEK, SZERVIZ_MODUL_MUNKAK, SZERVIZ_MODUL_SZERELOK),
            file("KerovaLekerdez.dsb", List.of("KerovaLekerdez.dsb"),
                    NAPIDIJ),
            file("parameter.dsb", List.of("parameter.dsb", "Parameter.dsb"),
                    EGYEBEK, MENNYISEGI_EGYSEG, PATH, ORSZAGJEL_ARCHIV),
            file("Torzsek.dsb", List.of("Torzsek.dsb"),
                    VIZSGA_FIGYELMEZTETO_NAP, BETTORZS),
            file("Regiszt.dsb", List.of("Regiszt.dsb", "regiszt.dsb", "regiszt.mdb"),
                    REGISZTRALAS, SZERVIZ_PARAMETER),
            file("betarol.mdb", List.of("betarol.mdb", "betarol.dsb"),
                    CIKKSZAM, CIKKSZAM_IDEIGL, VAMTARIFASZAM, ORSZAGJEL_BETAROL),
            file("kitarol.mdb", List.of("kitarol.mdb"),
                    CIMZETT),
            file("Tartosan.dsb", List.of("Tartosan.dsb"),
                    VEZETOK_JARMUVEI),
            siblingFile("Polcrak.dsb", kivet()),
            siblingFile("Fogastor.DSB", kivet()));

    // ------------------------------------------------------------------ helpers

    /** The columns with the named one given a unique index (the program's computed key). */
    private static Column[] unique(Column[] columns, String name) {
        Column[] out = columns.clone();
        for (int i = 0; i < out.length; i++) {
            if (out[i].name().equals(name)) {
                out[i] = out[i].asUnique();
            }
        }
        return out;
    }
}
