package kerova.core.db;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import kerova.core.db.sql.Sql;
import kerova.core.db.sql.Statement;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * Every SQL text quoted in the spec runs on a folder made by init with sample rows (prefixes that
 * handlers finish with a value are completed with sample values); results are asserted where the
 * spec states them.
 */
class SpecSqlTest {
    @TempDir
    Path dir;

    @BeforeEach
    void setUp() {
        CompanyFolder.init(dir, false);
        AccessFile.setWorkingFolder(dir);
        Database k = Database.open("Kerova.dsb");
        AccessFile.open("Kerova.dsb").batch(() -> {
            Recordset utak = k.OpenRecordset("Utak");
            trip(utak, "ABC-123", "Kovács János", LocalDateTime.of(2013, 3, 5, 0, 0), "Budapest", "Győr", 120, 8.30, 10.15, "G1", 8.4, 5208);
            trip(utak, "ABC-123", "Kovács János", LocalDateTime.of(2013, 3, 5, 0, 0), "Győr", "Budapest", 121, 15.00, 16.45, "G1", 8.5, 5270);
            trip(utak, "KŐB-456", "Szőke Ödön", LocalDateTime.of(2013, 3, 6, 0, 0), "Pécs", "Szeged", 190, 7.05, 9.50, "G2", 13.3, 8246);
            trip(utak, "KŐB-456", "Szőke Ödön", LocalDateTime.of(2013, 3, 6, 0, 0), "Szeged", "Pécs", 190, 14.00, 16.59, "G2", 13.3, 8246);
            trip(utak, "ABC-123", "Kovács János", LocalDateTime.of(2013, 4, 2, 0, 0), "Budapest", "Eger", 140, 6.00, 8.05, "G3", 9.8, 6076);
            utak.Close();
            Recordset j = k.OpenRecordset("Jarmuvek");
            vehicle(j, 1, "ABC-123", LocalDateTime.of(2013, 3, 31, 0, 0));
            vehicle(j, 2, "KŐB-456", LocalDateTime.of(2013, 4, 1, 0, 0));
            vehicle(j, 3, "GYŐ-789", LocalDateTime.of(2012, 12, 1, 0, 0));
            j.Close();
        });
        Database b = Database.open("betarol.mdb");
        Recordset c = b.OpenRecordset("Cikkszám");
        article(c, "C1", "abroncs", 25, 1000);
        article(c, "C2", "Ablaktörlő", 27, 2000);
        article(c, "C3", "olajszűrő", 25, 3000);
        c.Close();
    }

    @AfterEach
    void tearDown() {
        AccessFile.closeAll();
    }

    private static void trip(Recordset rs, String plate, String driver, LocalDateTime day, String from, String to,
                             double km, double dep, double arr, String group, double litres, double cost) {
        rs.AddNew();
        rs.set("FRSZ", plate);
        rs.set("GkVezetöNeve", driver);
        rs.set("Dátum", day);
        rs.set("Honnan", from);
        rs.set("Hova", to);
        rs.set("TávolságKm", km);
        rs.set("IndulásIdeje", dep);
        rs.set("ÉrkezésIdeje", arr);
        rs.set("CsoportAzonositó", group);
        rs.set("FogyasztottLiter", litres);
        rs.set("Üzemanyagköltség", cost);
        rs.set("Napidijas", Boolean.TRUE);
        rs.set("CégNév", "Fűzfa Kft.");
        rs.Update();
    }

    private static void vehicle(Recordset rs, int id, String plate, LocalDateTime inspection) {
        rs.AddNew();
        rs.set("recordID", id);
        rs.set("GkFrsz", plate);
        rs.set("MuszakiVizsgaDatum", inspection);
        rs.set("Figyelmeztetés", id != 2);
        rs.Update();
    }

    private static void article(Recordset rs, String code, String name, int vat, double net) {
        rs.AddNew();
        rs.set("Cikkszám", code);
        rs.set("Megnevezés", name);
        rs.set("AFA", vat);
        rs.set("NETTO", net);
        rs.Update();
    }

    /** The SQL texts quoted in the spec, completed where a handler appends a value. */
    static List<String> specStatements() throws Exception {
        Path spec = Paths.get(System.getProperty("kerova.shared", "../shared"), "spec.md");
        String text = Files.readString(spec);
        Pattern quoted = Pattern.compile("([`\"])((?:select|update)\\b[^`\"]*?)\\1", Pattern.CASE_INSENSITIVE);
        Set<String> out = new LinkedHashSet<>();
        Matcher m = quoted.matcher(text);
        while (m.find()) {
            String s = m.group(2);
            String lower = s.toLowerCase(Locale.ROOT);
            if (!lower.contains(" from ") && !lower.matches("update \\S+ set .*")) {
                continue; // "Update" (the DAO call), "select distinct" (a fragment), "UPDATE hiba!" (a message)
            }
            out.add(complete(s.replace("...", "G1")));
        }
        return new ArrayList<>(out);
    }

    static String complete(String s) {
        boolean openDate = s.chars().filter(ch -> ch == '#').count() % 2 == 1;
        boolean openText = s.chars().filter(ch -> ch == '\'').count() % 2 == 1;
        if (openDate) {
            return s + "3/31/2013#";
        }
        if (openText && (s.endsWith("LIKE '") || s.endsWith("like '"))) {
            return s + "ab*'";
        }
        if (openText) {
            return s + (s.contains("CsoportAzonositó") ? "G1" : s.contains("GkVezetöNeve") ? "Kovács János" : "C1") + "'";
        }
        if (s.endsWith("where ")) {
            return s + (s.toLowerCase(Locale.ROOT).contains("jarmuvek") ? "MuszakiVizsgaDatum <= #3/31/2013#"
                    : "megnevezés LIKE 'ab*' order by megnevezés, cikkszám");
        }
        if (s.endsWith("year(dátum) = ")) {
            return s + "2013 and month(dátum) = 3";
        }
        if (s.endsWith("= ")) {
            return s + "1";
        }
        return s;
    }

    private static String fileOf(String table) {
        for (Catalog.DbFile f : Catalog.allFiles()) {
            if (f.table(table).isPresent()) {
                return f.sibling() ? null : f.fileName();
            }
        }
        throw new AssertionError("no catalogue file holds table " + table);
    }

    @Test
    void everyQuotedStatementRuns() throws Exception {
        List<String> statements = specStatements();
        assertThat(statements).hasSizeGreaterThan(60);
        List<String> failures = new ArrayList<>();
        CompanyFolder.init(dir, true); // KIVET of the sibling products
        for (String sql : statements) {
            try {
                Statement st = Sql.parse(sql);
                String file = fileOf(st.tableName());
                Database db = Database.open(file == null ? "Polcrak.dsb" : file);
                if (sql.toLowerCase(Locale.ROOT).startsWith("update")) {
                    db.Execute(sql);
                } else {
                    Recordset rs = db.OpenRecordset(sql);
                    while (!rs.EOF()) {
                        for (int i = 0; i < rs.FieldCount(); i++) {
                            rs.Fields(i).Value();
                        }
                        rs.MoveNext();
                    }
                }
            } catch (RuntimeException | AssertionError e) {
                failures.add(sql + "  ->  " + e);
            }
        }
        assertThat(failures).isEmpty();
    }

    private Recordset q(String sql) {
        return Database.open("Kerova.dsb").OpenRecordset(sql);
    }

    @Test
    void sumAliasesOfAGroup() {
        Recordset rs = q("select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség) as UzFt"
                + " from Utak where CsoportAzonositó = 'G1'");
        assertThat(rs.isSnapshot()).isTrue();
        assertThat(rs.columnNames()).containsExactly("tav", "FoL", "UzFt");
        assertThat(((Number) rs.get("tav")).doubleValue()).isEqualTo(241.0);
        assertThat(((Number) rs.get("FoL")).doubleValue()).isEqualTo(16.9, org.assertj.core.data.Offset.offset(1e-9));
        assertThat(((Number) rs.get("UzFt")).doubleValue()).isEqualTo(10478.0);
        Recordset none = q("select sum(TávolságKm)as tav from Utak where CsoportAzonositó = 'nincs'");
        assertThat(none.get("tav")).isNull();
    }

    @Test
    void selectDistinct() {
        Recordset rs = q("select distinct FRSZ from Utak order by FRSZ");
        List<Object> plates = new ArrayList<>();
        while (!rs.EOF()) {
            plates.add(rs.get("FRSZ"));
            rs.MoveNext();
        }
        assertThat(plates).containsExactly("ABC-123", "KŐB-456");
    }

    @Test
    void yearMonthDayFilters() {
        Recordset rs = q("select TávolságKM as KM, str(dátum) as Nap, honnan, hova, megnevezés, FogyasztottLiter,"
                + " Üzemanyagköltség from Utak where year(dátum) = 2013 and month(dátum) = 3");
        rs.MoveLast();
        assertThat(rs.RecordCount()).isEqualTo(4);
        assertThat(q("select * from Utak where day(dátum) = 6").size2()).isEqualTo(2);
    }

    @Test
    void dateLiteralsAreMonthDayYear() {
        Recordset rs = q("select * from jarmuvek where MuszakiVizsgaDatum <= #3/31/2013#");
        rs.MoveLast();
        assertThat(rs.RecordCount()).isEqualTo(2);
        assertThat(q("select * from Utak where Dátum = #3/6/2013#").size2()).isEqualTo(2);
        assertThat(q("select * from Utak where Dátum >= #4/1/2013#").size2()).isEqualTo(1);
    }

    @Test
    void likeWithStar() {
        Recordset rs = Database.open("betarol.mdb")
                .OpenRecordset("select * from Cikkszám where megnevezés LIKE 'ab*' order by megnevezés, cikkszám");
        List<Object> names = new ArrayList<>();
        while (!rs.EOF()) {
            names.add(rs.get("Megnevezés"));
            rs.MoveNext();
        }
        assertThat(names).containsExactly("Ablaktörlő", "abroncs");
    }

    @Test
    void booleanLiterals() {
        Recordset rs = q("select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
        assertThat(rs.size2()).isEqualTo(2);
        assertThat(rs.get("GkFrsz")).isEqualTo("ABC-123");
    }

    @Test
    void theArrivalTimeOrderingOfPart3_2Step9() {
        String sql = "SELECT *, format(dátum + timeserial(LEFT(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2),  right(Format("
                + "ÉrkezésIdeje, '00.00;0;0;0'), 2), 0), 'YYYY/MM/DD HH:NN:SS') From Utak ORDER BY GkVezetöNeve, Dátum"
                + " DESC, format(dátum + timeserial(LEFT(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2),  right(Format("
                + "ÉrkezésIdeje, '00.00;0;0;0'), 2), 0), 'YYYY/MM/DD HH:NN:SS') DESC";
        Recordset rs = q(sql);
        assertThat(rs.isSnapshot()).isFalse(); // select * with an extra column stays a dynaset over Utak
        List<String> seen = new ArrayList<>();
        while (!rs.EOF()) {
            seen.add(rs.get("GkVezetöNeve") + " " + rs.get("Honnan") + " " + rs.get("ÉrkezésIdeje"));
            rs.MoveNext();
        }
        assertThat(seen).containsExactly(
                "Kovács János Budapest 8.05",
                "Kovács János Győr 16.45",
                "Kovács János Budapest 10.15",
                "Szőke Ödön Szeged 16.59",
                "Szőke Ödön Pécs 9.5");
        rs.MoveFirst();
        rs.Edit(); // the table's columns stay updatable
        rs.set("Megnevezés", "javítva");
        rs.Update();
    }

    @Test
    void theTwoUpdateStatementsOfPart7_2() {
        Database b = Database.open("betarol.mdb");
        assertThat(b.Execute("update cikkszám set AFA = 27 where AFA = 25")).isEqualTo(2);
        assertThat(b.Execute("update cikkszám set BRUTTO = NETTO * (1 + (AFA / 100)) where AFA = 27")).isEqualTo(3);
        Recordset rs = b.OpenRecordset("select * from Cikkszám order by megnevezés");
        List<String> seen = new ArrayList<>();
        while (!rs.EOF()) {
            seen.add(rs.get("Megnevezés") + " " + kerova.core.vb.Conv.CStr(rs.get("AFA")) + " " + kerova.core.vb.Conv.CStr(rs.get("BRUTTO")));
            rs.MoveNext();
        }
        assertThat(seen).containsExactly("Ablaktörlő 27 2540", "abroncs 27 1270", "olajszűrő 27 3810");
    }

    @Test
    void theRemindersThatNameParameterColumnsFail() {
        assertThatThrownBy(() -> q("select * from jarmuvek where TachográfHitelesNap <= #3/31/2013#"))
                .isInstanceOf(DaoException.class);
        assertThatThrownBy(() -> q("select * from jarmuvek where BiztosításZöldkNap <= #3/31/2013#"))
                .isInstanceOf(DaoException.class);
    }

    @Test
    void badStatementsChangeNothing() throws Exception {
        Path file = dir.resolve("betarol.mdb");
        AccessFile.closeAll();
        byte[] before = Files.readAllBytes(file);
        AccessFile.setWorkingFolder(dir);
        Database b = Database.open("betarol.mdb");
        assertThatThrownBy(() -> b.Execute("update cikkszám set AFA = 27 where AFA = 25; drop table Cikkszám"))
                .isInstanceOf(DaoException.class);
        assertThatThrownBy(() -> b.Execute("update cikkszám set Nincs = 1")).isInstanceOf(DaoException.class);
        assertThatThrownBy(() -> b.Execute("update cikkszám set AFA = 'szöveg' where AFA = 25"))
                .isInstanceOf(DaoException.class);
        assertThatThrownBy(() -> b.Execute("update nincstabla set AFA = 1")).isInstanceOf(DaoException.class);
        AccessFile.closeAll();
        assertThat(Files.readAllBytes(file)).isEqualTo(before);
    }
}
