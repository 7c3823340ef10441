package kerova.core.db;

import static org.assertj.core.api.Assertions.assertThat;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.DataType;
import java.io.IOException;
import java.math.BigDecimal;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.StandardCopyOption;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

/**
 * Compatibility: files made by Microsoft Access open through the record store, every table reads,
 * a row is added, found and deleted; files made by init and written by the record store are read
 * back by mdbtools with the values written.
 */
class CompatibilityTest {
    static Path testData() {
        String shared = System.getProperty("kerova.shared", "../shared");
        return Paths.get(shared, "testdata", "access2000").toAbsolutePath().normalize();
    }

    static Stream<String> accessFiles() throws IOException {
        try (Stream<Path> s = Files.list(testData())) {
            List<String> names = s.map(p -> p.getFileName().toString()).filter(n -> n.endsWith(".mdb")).sorted().toList();
            assertThat(names).as("the Access 2000 test files in " + testData()).hasSizeGreaterThanOrEqualTo(4);
            return names.stream();
        }
    }

    @TempDir
    Path dir;

    @AfterEach
    void close() {
        AccessFile.closeAll();
    }

    @ParameterizedTest
    @MethodSource("accessFiles")
    void fileMadeByAccessOpensReadsAndTakesARow(String name) throws Exception {
        Files.copy(testData().resolve(name), dir.resolve(name), StandardCopyOption.REPLACE_EXISTING);
        dir.resolve(name).toFile().setWritable(true);
        AccessFile.setWorkingFolder(dir);
        AccessFile file = AccessFile.open(name.toUpperCase()); // names match without regard to case
        Database db = new Database(file);
        int tablesWritten = 0;
        for (String tableName : file.jackcess().getTableNames()) {
            Recordset rs = db.OpenRecordset(tableName);
            int rows = 0;
            while (!rs.EOF()) {
                for (int i = 0; i < rs.FieldCount(); i++) {
                    rs.Fields(i).Value();
                }
                rows++;
                rs.MoveNext();
            }
            assertThat(rows).isEqualTo(file.table(tableName).getRowCount());
            if (addFindDelete(db, file, tableName)) {
                tablesWritten++;
            }
        }
        assertThat(tablesWritten).as("tables of " + name + " that took a row").isPositive();
    }

    /** Adds a row with a marker text, finds it, deletes it; false when the table has no text column to mark. */
    private boolean addFindDelete(Database db, AccessFile file, String tableName) {
        List<? extends Column> cols = file.table(tableName).getColumns();
        Column marker = cols.stream().filter(c -> c.getType() == DataType.TEXT && c.getLengthInUnits() >= 12)
                .findFirst().orElse(null);
        if (marker == null) {
            return false;
        }
        // A table whose foreign keys Access enforces takes only rows that match its parent tables:
        // the generic sample row can't, so such a table is read but not written here.
        if (file.table(tableName).getIndexes().stream().anyMatch(ix -> ix.isForeignKey()
                && !((com.healthmarketscience.jackcess.impl.IndexImpl) ix).getReference().isPrimaryTable())) {
            return false;
        }
        Recordset rs = db.OpenRecordset(tableName);
        int before = file.table(tableName).getRowCount();
        rs.AddNew();
        for (int i = 0; i < cols.size(); i++) {
            Column c = cols.get(i);
            if (c.isAutoNumber() || c.isCalculated()) {
                continue;
            }
            Object v = sample(c, i);
            if (v != null) {
                rs.Fields(i).setValue(v);
            }
        }
        rs.Fields(marker.getName()).setValue("Kerova ő ű");
        rs.Update();
        assertThat(file.table(tableName).getRowCount()).isEqualTo(before + 1);
        rs.FindFirst("[" + marker.getName() + "] = 'Kerova ő ű'");
        assertThat(rs.NoMatch()).isFalse();
        assertThat(rs.Fields(marker.getName()).Value()).isEqualTo("Kerova ő ű");
        rs.Delete();
        rs.MoveNext();
        rs.Close();
        assertThat(file.table(tableName).getRowCount()).isEqualTo(before);
        return true;
    }

    /** A value of the column's type, distinct per column so that unique indexes take it. */
    private static Object sample(Column c, int i) {
        return switch (c.getType()) {
            case TEXT -> "k" + i;
            case MEMO -> "hosszú szöveg";
            case BYTE -> 250 - i;
            case INT, LONG -> 9000 + i;
            case DOUBLE, FLOAT -> 9000.5 + i;
            case MONEY, NUMERIC -> new BigDecimal("12.34");
            case BOOLEAN -> Boolean.TRUE;
            case SHORT_DATE_TIME -> LocalDateTime.of(2026, 11, 22, 8, 30);
            default -> null;
        };
    }

    @Test
    void filesMadeByInitAreListedAndExportedByMdbtools() throws Exception {
        CompanyFolder.init(dir, false);
        AccessFile.setWorkingFolder(dir);
        Recordset rs = Database.open("kerova.dsb").OpenRecordset("Jarmuvek");
        rs.AddNew();
        rs.set("recordID", 42);
        rs.set("GkFrsz", "ŐÜŰ-042");
        rs.Update();
        rs.Close();
        AccessFile.closeAll();

        String tables = run("mdb-tables", "-1", dir.resolve("Kerova.dsb").toString());
        assertThat(tables.lines().toList()).contains("Jarmuvek", "JarmuvekArchiv", "Utak", "SZAMLA", "beraktar");
        String csv = run("mdb-export", dir.resolve("Kerova.dsb").toString(), "Jarmuvek");
        assertThat(csv).contains("\"ŐÜŰ-042\"").contains("42");
        for (Catalog.DbFile f : Catalog.companyFiles()) {
            String listed = run("mdb-tables", "-1", dir.resolve(f.fileName()).toString());
            for (Catalog.Table t : f.tables()) {
                assertThat(listed.lines().toList()).as(f.fileName()).contains(t.name());
            }
        }
        String header = run("mdb-export", dir.resolve("Regiszt.dsb").toString(), "Regisztrálás").lines().findFirst().orElse("");
        List<String> expected = new ArrayList<>();
        for (Catalog.Column c : Catalog.file("Regiszt.dsb").orElseThrow().table("Regisztrálás").orElseThrow().columns()) {
            expected.add(c.name());
        }
        assertThat(header).isEqualTo(String.join(",", expected));
    }

    static String run(String... cmd) throws Exception {
        Process p;
        try {
            p = new ProcessBuilder(cmd).redirectErrorStream(false).start();
        } catch (IOException e) {
            throw new AssertionError("mdbtools is needed for this test (.ci/run installs it): " + e.getMessage(), e);
        }
        String out = new String(p.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        String err = new String(p.getErrorStream().readAllBytes(), StandardCharsets.UTF_8);
        assertThat(p.waitFor()).as(String.join(" ", cmd) + ": " + err).isZero();
        return out;
    }
}
