package kerova.cli;

import static org.assertj.core.api.Assertions.assertThat;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.LocalDateTime;
import kerova.core.db.AccessFile;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The tools of kerova.cli.Main: init, init --sibling, check, sql; bad input gives one line and status 1. */
class ToolsTest {
    @TempDir
    Path dir;

    final ByteArrayOutputStream outBytes = new ByteArrayOutputStream();
    final ByteArrayOutputStream errBytes = new ByteArrayOutputStream();

    @AfterEach
    void close() {
        AccessFile.closeAll();
    }

    int run(String... args) {
        outBytes.reset();
        errBytes.reset();
        return Main.run(args, new PrintStream(outBytes, true, StandardCharsets.UTF_8),
                new PrintStream(errBytes, true, StandardCharsets.UTF_8));
    }

    String out() {
        return outBytes.toString(StandardCharsets.UTF_8);
    }

    String err() {
        return errBytes.toString(StandardCharsets.UTF_8);
    }

    @Test
    void initCreatesEveryFileAndCheckFindsNothingMissing() {
        assertThat(run("init", dir.toString())).isZero();
        for (String f : new String[] {"Kerova.dsb", "KerovaLekerdez.dsb", "parameter.dsb", "Torzsek.dsb", "Regiszt.dsb",
                "betarol.mdb", "kitarol.mdb", "Tartosan.dsb"}) {
            assertThat(dir.resolve(f)).exists();
        }
        assertThat(run("check", dir.toString())).isZero();
        assertThat(out()).startsWith("rendben: ");
        assertThat(run("init", dir.toString())).isZero();
        assertThat(out()).startsWith("minden adatbázis megvan");
    }

    @Test
    void checkListsMissingFilesTablesAndColumns() throws Exception {
        assertThat(run("check", dir.toString())).isEqualTo(1);
        assertThat(out()).contains("hiányzó állomány: Kerova.dsb").contains("hiányzó állomány: betarol.mdb");
        run("init", dir.toString());
        Files.delete(dir.resolve("kitarol.mdb"));
        assertThat(run("check", dir.toString())).isEqualTo(1);
        assertThat(out().lines()).containsExactly("hiányzó állomány: kitarol.mdb");
    }

    @Test
    void initSiblingMakesTheWarehouseFilesWithKivet() {
        assertThat(run("init", "--sibling", dir.toString())).isZero();
        assertThat(dir.resolve("Polcrak.dsb")).exists();
        assertThat(dir.resolve("Fogastor.DSB")).exists();
        assertThat(run("check", "--sibling", dir.toString())).isZero();
        assertThat(run("sql", dir.resolve("Polcrak.dsb").toString(), "select * from KIVET")).isZero();
        assertThat(out().lines().findFirst().orElse("")).contains("KIDATUM");
    }

    @Test
    void sqlPrintsTsvWithValuesAsTheProgramShowsThem() {
        run("init", dir.toString());
        AccessFile.setWorkingFolder(dir);
        Recordset rs = Database.open("Kerova.dsb").OpenRecordset("Utak");
        rs.AddNew();
        rs.set("FRSZ", "KŐB-456");
        rs.set("Dátum", LocalDateTime.of(2026, 11, 22, 0, 0));
        rs.set("TávolságKm", 7.5);
        rs.set("Honnan", "Győr");
        rs.Update();
        AccessFile.closeAll();
        int code = run("sql", dir.resolve("Kerova.dsb").toString(),
                "select FRSZ, Dátum, TávolságKm as km, Honnan, Hova from Utak");
        assertThat(err()).isEmpty();
        assertThat(code).isZero();
        assertThat(out().lines()).containsExactly("FRSZ\tDátum\tkm\tHonnan\tHova", "KŐB-456\t2026.11.22.\t7,5\tGyőr\t");
        assertThat(run("sql", dir.resolve("Kerova.dsb").toString(), "update Utak set TávolságKm = 8 where FRSZ = 'KŐB-456'"))
                .isZero();
        assertThat(out().trim()).isEqualTo("1");
    }

    @Test
    void badInputGivesOneLineAndStatusOneAndChangesNothing() throws Exception {
        run("init", dir.toString());
        Path file = dir.resolve("Kerova.dsb");
        byte[] before = Files.readAllBytes(file);
        String[][] bad = {
            {"sql", file.toString(), "select * fro Utak"},
            {"sql", file.toString(), "select * from Nincs"},
            {"sql", file.toString(), "select Nincs from Utak"},
            {"sql", file.toString(), "update Utak set Nincs = 1"},
            {"sql", file.toString(), "update Utak set FRSZ = 'x'; update Utak set FRSZ = 'y'"},
            {"sql", dir.resolve("nincs.dsb").toString(), "select * from Utak"},
        };
        for (String[] args : bad) {
            assertThat(run(args)).as(args[2]).isEqualTo(1);
            assertThat(err().lines().count()).as(args[2]).isEqualTo(1);
            assertThat(err()).as(args[2]).startsWith("hiba 3").doesNotContain("\tat ").doesNotContain("Exception");
        }
        AccessFile.closeAll();
        assertThat(Files.readAllBytes(file)).isEqualTo(before);
    }

    @Test
    void unknownCommandAndWrongArgumentsSayHow() {
        assertThat(run("nincsilyen")).isEqualTo(2);
        assertThat(err()).contains("ismeretlen parancs: nincsilyen").contains("Használat:");
        assertThat(run("sql", "x")).isEqualTo(2);
        assertThat(err()).contains("használat: kerova sql");
    }
}
