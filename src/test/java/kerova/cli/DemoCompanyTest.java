package kerova.cli;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.security.MessageDigest;
import java.security.NoSuchAlgorithmException;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.HexFormat;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.stream.Stream;
import kerova.core.db.AccessFile;
import kerova.core.db.Catalog;
import kerova.core.db.CompanyFolder;
import kerova.core.db.DaoException;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** {@code kerova demo}: the sample company (DESIGN.md, "Company folders and tools"). */
class DemoCompanyTest {

    @TempDir
    Path dir;

    @AfterEach
    void close() {
        AccessFile.closeAll();
    }

    private static int count(String file, String source) {
        Recordset rs = Database.open(file).OpenRecordset(source);
        if (rs.EOF()) {
            return 0;
        }
        rs.MoveLast();
        return rs.RecordCount();
    }

    /** Part 1.2, step 4.2: the statement of one reminder with the limit today minus N days. */
    private static String reminder(String column, int days) {
        LocalDate limit = VbClock.date().minusDays(days);
        return "select * from jarmuvek where " + column + " <= #" + limit.getMonthValue() + "/"
                + limit.getDayOfMonth() + "/" + limit.getYear() + "#";
    }

    private static int ordinal(Recordset rs, int i) {
        Object v = rs.Fields(i).Value();
        return v == null ? 0 : ((Number) v).intValue();
    }

    @Test
    void demoCompanyIsCompleteAndHasSomethingToWarnAbout() throws Exception {
        DemoCompany.createIfAbsent(dir);
        AccessFile.closeAll();
        if (!DemoCompany.warnings().isEmpty()) {
            System.err.println("DemoCompanyTest: skipped columns or values: " + DemoCompany.warnings());
        }

        assertThat(CompanyFolder.check(dir, false)).isEmpty();
        assertThat(CompanyFolder.check(dir.resolve(DemoCompany.SIBLING_FOLDER), true)).isEmpty();

        AccessFile.setWorkingFolder(dir);

        // every table that the demo fills has rows
        String[][] filled = {
            {"Torzsek.dsb", "Bettorzs"}, {"Torzsek.dsb", "VizsgaFigyelmeztetoNap"},
            {"parameter.dsb", "Egyebek"}, {"parameter.dsb", "MennyisegiEgyseg"}, {"parameter.dsb", "Path"},
            {"Kerova.dsb", "Jarmuvek"}, {"Kerova.dsb", "Vezetok"}, {"Kerova.dsb", "UtakTavolsag"},
            {"Kerova.dsb", "beraktar"}, {"Kerova.dsb", "SZAMLA"}, {"Kerova.dsb", "Utak"},
            {"Kerova.dsb", "UtakKilometerNyt"}, {"Kerova.dsb", "SzervizModul"},
            {"Kerova.dsb", "SzervizModulAlkatreszek"}, {"Kerova.dsb", "SzervizModulMunkak"},
            {"Kerova.dsb", "SzervizModulSzerelok"}, {"Kerova.dsb", "MegnevezesTorzs"},
            {"Kerova.dsb", "Orszagjel"}, {"Kerova.dsb", "UtakSzallitottSzemely"}, {"Kerova.dsb", "UtakCsatoltOkmany"},
            {"betarol.mdb", "Cikkszám"}, {"betarol.mdb", "Orszagjel"}, {"betarol.mdb", "Vámtarifaszám"},
            {"kitarol.mdb", "Címzett"}, {"Tartosan.dsb", "VezetokJarmuvei"}, {"Regiszt.dsb", "SzervizParameter"},
        };
        for (String[] t : filled) {
            assertThat(count(t[0], t[1])).as(t[0] + " / " + t[1]).isPositive();
        }
        int vehicles = count("Kerova.dsb", "Jarmuvek");
        assertThat(vehicles).isBetween(8, 12);
        assertThat(count("Kerova.dsb", "Utak")).isBetween(200, 900);

        // the operator's name, which the main form needs
        Recordset op = Database.open("Torzsek.dsb").OpenRecordset("Bettorzs");
        assertThat((String) op.Fields("UzNev").Value()).isNotBlank();

        // the warning limits, by ordinal as Part 1.2 reads them from the last row
        Recordset par = Database.open("Torzsek.dsb").OpenRecordset("VizsgaFigyelmeztetoNap");
        par.MoveLast();
        int inspectionDays = ordinal(par, 0);
        int tachoCalibrationDays = ordinal(par, 2);
        int tachoPermitDays = ordinal(par, 3);
        int insuranceCardDays = ordinal(par, 4);
        assertThat(List.of(inspectionDays, tachoCalibrationDays, tachoPermitDays, insuranceCardDays))
                .allMatch(d -> d > 0);

        // The four reminders, with the statements as Part 1.2 builds them. The first tests
        // MuszakiVizsgaDatum; the other three name columns of the parameter table, which Jarmuvek
        // has not: on a catalogue-conformant file their Refresh fails (Part 1.2 says so).
        Catalog.Table jarmuvek = Catalog.file("Kerova.dsb").orElseThrow().table("Jarmuvek").orElseThrow();
        String[] columns = {"MuszakiVizsgaDatum", "TachográfHitelesNap", "TachográfOMHEngNap", "BiztosításZöldkNap"};
        int[] days = {inspectionDays, tachoCalibrationDays, tachoPermitDays, insuranceCardDays};
        int firing = 0;
        for (int i = 0; i < 4; i++) {
            String sql = reminder(columns[i], days[i]);
            if (jarmuvek.column(columns[i]).isPresent()) {
                assertThat(count("Kerova.dsb", sql)).as(sql).isPositive();
                firing++;
            } else {
                assertThatThrownBy(() -> count("Kerova.dsb", sql)).as(sql).isInstanceOf(DaoException.class);
                System.err.println("DemoCompanyTest: reminder " + (i + 1) + " stays silent, Jarmuvek has no column "
                        + columns[i] + " (Part 1.2)");
            }
        }
        assertThat(firing).isGreaterThanOrEqualTo(1);
        assertThat(count("Kerova.dsb", reminder("MuszakiVizsgaDatum", inspectionDays))).isEqualTo(2);

        // The same limits on the columns that hold those dates: the demo has a due case for each.
        assertThat(count("Kerova.dsb", reminder("TachográfHitelesités", tachoCalibrationDays))).isPositive();
        assertThat(count("Kerova.dsb", reminder("TachoOMHEng", tachoPermitDays))).isPositive();
        assertThat(count("Kerova.dsb", reminder("ZoldkartyaDatum", insuranceCardDays))).isPositive();

        // the warned-vehicles grid of the main form (Part 1.2, step 8)
        int warned = count("Kerova.dsb", "select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
        assertThat(warned).isBetween(2, vehicles - 1);

        // the fixed unit and the allowance
        assertThat(count("parameter.dsb", "select * from MennyisegiEgyseg where Állandó <> 0")).isEqualTo(1);
        Recordset eg = Database.open("parameter.dsb").OpenRecordset("Egyebek");
        eg.MoveLast();
        assertThat(((Number) eg.Fields("Napidíj").Value()).doubleValue()).isPositive();

        // trips: groups as Part 3.1 makes them, hours,minutes times, figures of Part 3.2
        Recordset ut = Database.open("Kerova.dsb").OpenRecordset("select * from Utak order by Dátum, IndulásIdeje");
        int rows = 0;
        while (!ut.EOF()) {
            rows++;
            String group = (String) ut.Fields("CsoportAzonositó").Value();
            assertThat(group).matches("\\d{6,8}\\d{5},\\d{1,2}").doesNotContain("'");
            double dep = ((Number) ut.Fields("IndulásIdeje").Value()).doubleValue();
            double arr = ((Number) ut.Fields("ÉrkezésIdeje").Value()).doubleValue();
            assertThat(arr).isGreaterThan(dep);
            for (double t : new double[] {dep, arr}) {
                long minutes = Math.round(t * 100) % 100;
                assertThat(minutes).isLessThan(60);
                assertThat(t).isLessThanOrEqualTo(23.59);
            }
            double km = ((Number) ut.Fields("TávolságKm").Value()).doubleValue();
            double litres = ((Number) ut.Fields("FogyasztottLiter").Value()).doubleValue();
            assertThat(km).isPositive();
            assertThat(litres / km * 100).isBetween(4.0, 25.0);
            assertThat(((LocalDateTime) ut.Fields("Dátum").Value()).toLocalDate()).isBefore(VbClock.date());
            ut.MoveNext();
        }
        assertThat(rows).isEqualTo(count("Kerova.dsb", "Utak"));
        assertThat(count("Kerova.dsb", "select distinct CsoportAzonositó from Utak")).isGreaterThan(20);

        // the texts carry ő and ű
        assertThat(count("Kerova.dsb", "select * from UtakTavolsag where Hova = 'Győr'")).isPositive();
        assertThat(count("Kerova.dsb", "select * from Vezetok where VezetöNeve = 'Szőke Ödön'")).isPositive();
        assertThat(count("Kerova.dsb", "select * from UtakTavolsag where Hova like '*Kőbánya'")).isPositive();
        assertThat(count("Torzsek.dsb", "select * from Bettorzs where UzCim like 'Fűzfa*'")).isPositive();

        // a visit's parts join on the visit's key
        Recordset sv = Database.open("Kerova.dsb").OpenRecordset("SzervizModul");
        String key = (String) sv.Fields("recordID").Value();
        assertThat(count("Kerova.dsb", "select * from SzervizModulAlkatreszek where recordID = '" + key + "'"))
                .isPositive();

        // the path of the warehouse files leads to existing files
        Recordset path = Database.open("parameter.dsb").OpenRecordset("Path");
        Path polcrak = Path.of((String) path.Fields("PolcrakPath").Value());
        assertThat(polcrak.resolve("Polcrak.dsb")).exists();
        assertThat(count(polcrak.resolve("Polcrak.dsb").toString(), "KIVET")).isPositive();
    }

    @Test
    void secondCallLeavesTheFolderAsItIs() throws Exception {
        DemoCompany.createIfAbsent(dir);
        AccessFile.closeAll();
        Map<String, String> before = snapshot(dir);
        assertThat(before).containsKey("Kerova.dsb");

        DemoCompany.createIfAbsent(dir);
        AccessFile.closeAll();
        assertThat(snapshot(dir)).isEqualTo(before);
    }

    @Test
    void sameDaySameDemo() throws Exception {
        Path a = dir.resolve("a");
        Path b = dir.resolve("b");
        DemoCompany.createIfAbsent(a);
        DemoCompany.createIfAbsent(b);
        AccessFile.closeAll();
        for (String[] t : new String[][] {{"Kerova.dsb", "Utak"}, {"Kerova.dsb", "SZAMLA"}, {"Kerova.dsb", "Jarmuvek"}}) {
            assertThat(dump(a, t[0], t[1])).as(t[1]).isEqualTo(dump(b, t[0], t[1]));
        }
    }

    private static List<String> dump(Path folder, String file, String table) {
        AccessFile.setWorkingFolder(folder);
        Recordset rs = Database.open(file).OpenRecordset(table);
        List<String> out = new ArrayList<>();
        while (!rs.EOF()) {
            StringBuilder line = new StringBuilder();
            for (int i = 0; i < rs.FieldCount(); i++) {
                String name = rs.columnNames().get(i);
                if (name.toLowerCase(java.util.Locale.ROOT).contains("path")) {
                    continue; // absolute folders differ
                }
                line.append(rs.Fields(i).Value()).append('|');
            }
            out.add(line.toString());
            rs.MoveNext();
        }
        AccessFile.closeAll();
        return out;
    }

    /** Every file under the folder with its size, time and content hash. */
    private static Map<String, String> snapshot(Path root) throws IOException {
        Map<String, String> out = new TreeMap<>();
        try (Stream<Path> s = Files.walk(root)) {
            for (Path p : s.filter(Files::isRegularFile).toList()) {
                out.put(root.relativize(p).toString(),
                        Files.size(p) + " " + Files.getLastModifiedTime(p).toMillis() + " " + sha256(p));
            }
        }
        return out;
    }

    private static String sha256(Path p) throws IOException {
        try {
            return HexFormat.of().formatHex(MessageDigest.getInstance("SHA-256").digest(Files.readAllBytes(p)));
        } catch (NoSuchAlgorithmException e) {
            throw new IllegalStateException(e);
        }
    }
}
