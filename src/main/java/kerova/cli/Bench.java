package kerova.cli;

import com.healthmarketscience.jackcess.Table;
import java.io.IOException;
import java.io.PrintStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.Random;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.DaoException;
import kerova.core.db.Database;
import kerova.core.db.Recordset;

/**
 * {@code kerova bench [DIR] [ROWS]}: fills {@code Utak} with ROWS generated trips (200 000 by
 * default) in a fresh folder and times the three operations of docs/PERFORMANCE.md.
 */
public final class Bench {
    private Bench() {
    }

    public static int run(String[] args, PrintStream out) {
        Path dir = Path.of(args.length > 1 ? args[1] : "target/bench").toAbsolutePath();
        int rows = args.length > 2 ? Integer.parseInt(args[2]) : 200_000;
        try {
            if (!Files.exists(dir.resolve("Kerova.dsb"))) {
                CompanyFolder.init(dir, false);
            }
            AccessFile.setWorkingFolder(dir);
            AccessFile file = AccessFile.open("Kerova.dsb");
            int have = file.table("Utak").getRowCount();
            if (have < rows) {
                long t0 = System.nanoTime();
                fill(file, rows - have);
                out.printf("Utak feltöltése: %d sor, %d ms%n", rows - have, ms(t0));
            }
            Database db = new Database(file);
            String last = "Budapest " + (rows - 1);
            for (int round = 1; round <= 3; round++) {
                long t0 = System.nanoTime();
                Recordset rs = db.OpenRecordset("select * from Utak order by Dátum, IndulásIdeje");
                rs.MoveLast();
                long open = ms(t0);

                t0 = System.nanoTime();
                Recordset sum = db.OpenRecordset(
                        "select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség) as UzFt from Utak");
                Object tav = sum.get("tav");
                long sumMs = ms(t0);

                t0 = System.nanoTime();
                Recordset all = db.OpenRecordset("Utak");
                all.FindFirst("[Honnan] like \"" + last + "*\"");
                long findMs = ms(t0);
                if (all.NoMatch()) {
                    throw new IllegalStateException("the last row was not found");
                }
                out.printf("kör %d: megnyitás+MoveLast %d ms (%d sor), sum() %d ms (tav=%s), FindFirst LIKE %d ms%n",
                        round, open, rs.size2(), sumMs, tav, findMs);
            }
            return 0;
        } catch (DaoException e) {
            out.println("hiba " + e.getNumber() + ": " + e.getMessage());
            return 1;
        } finally {
            AccessFile.closeAll();
        }
    }

    private static long ms(long t0) {
        return (System.nanoTime() - t0) / 1_000_000;
    }

    /** Generated trips, written unsynced with one flush (DESIGN.md). */
    private static void fill(AccessFile file, int count) {
        String[] towns = {"Budapest", "Győr", "Debrecen", "Szeged", "Pécs", "Miskolc", "Eger", "Kecskemét"};
        String[] drivers = {"Kovács János", "Szőke Ödön", "Nagy Éva", "Tóth Béla", "Fűzi Márta"};
        Random rnd = new Random(7);
        file.batch(() -> {
            try {
                Table t = file.table("Utak");
                List<Map<String, Object>> batch = new ArrayList<>();
                int have = t.getRowCount();
                LocalDateTime start = LocalDateTime.of(2020, 1, 1, 0, 0);
                for (int i = 0; i < count; i++) {
                    int n = have + i;
                    double km = 20 + rnd.nextInt(400);
                    double dep = 6 + rnd.nextInt(10) + rnd.nextInt(60) / 100.0;
                    batch.add(new java.util.HashMap<>(Map.of(
                            "FRSZ", "ABC-" + (100 + n % 12),
                            "GkVezetöNeve", drivers[n % drivers.length],
                            "Dátum", start.plusDays(rnd.nextInt(2000)),
                            "Honnan", "Budapest " + n,
                            "Hova", towns[rnd.nextInt(towns.length)],
                            "TávolságKm", km,
                            "IndulásIdeje", dep,
                            "ÉrkezésIdeje", Math.min(23.59, dep + 2),
                            "FogyasztottLiter", km * 0.07,
                            "Üzemanyagköltség", km * 0.07 * 620)));
                    if (batch.size() == 5000) {
                        t.addRowsFromMaps(batch);
                        batch.clear();
                    }
                }
                t.addRowsFromMaps(batch);
            } catch (IOException e) {
                throw new DaoException(DaoException.CANNOT_OPEN, e.getMessage(), e);
            }
        });
    }
}
