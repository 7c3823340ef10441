package kerova.oracle;

import java.io.File;
import java.io.IOException;
import java.math.BigDecimal;
import java.nio.file.Files;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.Random;
import java.util.UUID;

import com.healthmarketscience.jackcess.ColumnBuilder;
import com.healthmarketscience.jackcess.DataType;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.IndexBuilder;
import com.healthmarketscience.jackcess.IndexCursor;
import com.healthmarketscience.jackcess.CursorBuilder;
import com.healthmarketscience.jackcess.Table;
import com.healthmarketscience.jackcess.TableBuilder;

/**
 * `write FILE random SEED N`: a new file with one table shaped for stress (Hungarian texts, nulls,
 * long memos, every value type, unique, plain, descending and two-column indexes) and N seeded
 * random inserts, updates and deletes, enough for rows to move and index pages to split.
 */
final class RandomWriter {
    static final String TABLE = "Stressz";
    static final String LETTERS = "aábcdeéfghiíjklmnoóöőpqrstuúüűvwxyzAÁBCDEÉFGHIÍJKLMNOÓÖŐPQRSTUÚÜŰVWXYZ";

    private final Random rnd;
    private int serial;

    private RandomWriter(long seed) {
        rnd = new Random(seed);
    }

    static int run(String file, long seed, int operations) throws IOException {
        File target = new File(file);
        Files.deleteIfExists(target.toPath());
        try (Database db = Dump.configure(new DatabaseBuilder(target).setFileFormat(Database.FileFormat.V2000)
                .setAutoSync(false).create())) {
            new RandomWriter(seed).fill(createTable(db), operations);
        }
        return 0;
    }

    static Table createTable(Database db) throws IOException {
        return new TableBuilder(TABLE)
                .addColumn(new ColumnBuilder("Id", DataType.LONG).setAutoNumber(true))
                .addColumn(text("Nev", 60))
                .addColumn(text("Kod", 20))
                .addColumn(new ColumnBuilder("Szam", DataType.LONG))
                .addColumn(new ColumnBuilder("Ertek", DataType.DOUBLE))
                .addColumn(new ColumnBuilder("Osszeg", DataType.MONEY))
                .addColumn(new ColumnBuilder("Datum", DataType.SHORT_DATE_TIME))
                .addColumn(new ColumnBuilder("Megjegyzes", DataType.MEMO).setCompressedUnicode(true))
                .addColumn(new ColumnBuilder("Aktiv", DataType.BOOLEAN))
                .addColumn(new ColumnBuilder("Kicsi", DataType.BYTE))
                .addColumn(new ColumnBuilder("Rovid", DataType.INT))
                .addColumn(new ColumnBuilder("Arany", DataType.FLOAT))
                .addColumn(new ColumnBuilder("Kep", DataType.OLE))
                .addColumn(new ColumnBuilder("Azon", DataType.GUID))
                .addColumn(new ColumnBuilder("Pontos", DataType.NUMERIC).setPrecision(18).setScale(4))
                .addColumn(new ColumnBuilder("Nyers", DataType.BINARY).setLength(16))
                .addIndex(new IndexBuilder(IndexBuilder.PRIMARY_KEY_NAME).addColumns("Id").setPrimaryKey())
                .addIndex(new IndexBuilder("Nev").addColumns("Nev"))
                .addIndex(new IndexBuilder("Kod").addColumns("Kod").setUnique())
                .addIndex(new IndexBuilder("Szam").addColumns("Szam"))
                .addIndex(new IndexBuilder("DatumCsokkeno").addColumns(false, "Datum"))
                .addIndex(new IndexBuilder("NevSzam").addColumns("Nev").addColumns(false, "Szam"))
                .toTable(db);
    }

    private static ColumnBuilder text(String name, int chars) {
        return new ColumnBuilder(name, DataType.TEXT).setLengthInUnits(chars).setCompressedUnicode(true);
    }

    private void fill(Table table, int operations) throws IOException {
        IndexCursor byId = CursorBuilder.createPrimaryKeyCursor(table);
        List<Integer> live = new ArrayList<>();
        for (int op = 0; op < operations; op++) {
            int dice = rnd.nextInt(100);
            if (live.isEmpty() || dice < 55) {
                Map<String, Object> row = new HashMap<>();
                for (String col : COLUMNS) row.put(col, value(col));
                table.addRowFromMap(row);
                live.add((Integer) row.get("Id"));
            } else if (dice < 85) {
                int id = live.get(rnd.nextInt(live.size()));
                if (!byId.findFirstRowByEntry(id)) throw new IllegalStateException("row " + id + " vanished");
                Map<String, Object> changes = new HashMap<>();
                int count = 1 + rnd.nextInt(4);
                for (int i = 0; i < count; i++) {
                    String col = COLUMNS[rnd.nextInt(COLUMNS.length)];
                    changes.put(col, col.equals("Megjegyzes") || col.equals("Nev") ? growing(col) : value(col));
                }
                byId.updateCurrentRowFromMap(changes);
            } else {
                int at = rnd.nextInt(live.size());
                int id = live.get(at);
                live.set(at, live.get(live.size() - 1));
                live.remove(live.size() - 1);
                if (!byId.findFirstRowByEntry(id)) throw new IllegalStateException("row " + id + " vanished");
                byId.deleteCurrentRow();
            }
        }
    }

    static final String[] COLUMNS = {"Nev", "Kod", "Szam", "Ertek", "Osszeg", "Datum", "Megjegyzes", "Aktiv",
            "Kicsi", "Rovid", "Arany", "Kep", "Azon", "Pontos", "Nyers"};

    private boolean chance(int percent) {
        return rnd.nextInt(100) < percent;
    }

    private Object value(String col) {
        switch (col) {
            case "Nev": return chance(10) ? null : words(1 + rnd.nextInt(60));
            case "Kod": return chance(5) ? null : String.format("K%07d %s", ++serial, words(1 + rnd.nextInt(10)));
            case "Szam": return chance(10) ? null : rnd.nextInt(2001) - 1000;
            case "Ertek": return chance(10) ? null : rnd.nextGaussian() * 1e4;
            case "Osszeg": return chance(10) ? null : BigDecimal.valueOf(rnd.nextLong() % 10_000_000_000L, 4);
            case "Datum": return chance(10) ? null : LocalDateTime.of(1850, 1, 1, 0, 0)
                    .plusSeconds((long) (rnd.nextDouble() * 250 * 365.25 * 86400)).plusNanos(rnd.nextInt(1000) * 1_000_000L);
            case "Megjegyzes": return memo();
            case "Aktiv": return rnd.nextBoolean();
            case "Kicsi": return chance(10) ? null : (byte) rnd.nextInt(256);
            case "Rovid": return chance(10) ? null : (short) (rnd.nextInt(65536) - 32768);
            case "Arany": return chance(10) ? null : rnd.nextFloat() * 100f - 50f;
            case "Kep": return chance(80) ? null : bytes(rnd.nextInt(chance(50) ? 100 : 6000));
            case "Azon": return chance(20) ? null : "{" + new UUID(rnd.nextLong(), rnd.nextLong()).toString().toUpperCase() + "}";
            case "Pontos": return chance(10) ? null : BigDecimal.valueOf(rnd.nextLong() % 100_000_000_000_000L, 4);
            case "Nyers": return chance(30) ? null : bytes(rnd.nextInt(17));
            default: throw new IllegalArgumentException(col);
        }
    }

    /** Updates of texts mostly grow them, so rows outgrow their page and move. */
    private Object growing(String col) {
        if (col.equals("Nev")) return words(40 + rnd.nextInt(21));
        return chance(50) ? words(1000 + rnd.nextInt(3000)) : memo();
    }

    private Object memo() {
        int d = rnd.nextInt(100);
        if (d < 45) return null;
        if (d < 85) return words(rnd.nextInt(200));
        return words(2000 + rnd.nextInt(18000));
    }

    private String words(int length) {
        StringBuilder b = new StringBuilder(length);
        while (b.length() < length) {
            if (b.length() > 0 && chance(15)) b.append(' ');
            else if (chance(5)) b.append((char) ('0' + rnd.nextInt(10)));
            else b.append(LETTERS.charAt(rnd.nextInt(LETTERS.length())));
        }
        return b.toString().strip();
    }

    private byte[] bytes(int n) {
        byte[] b = new byte[n];
        rnd.nextBytes(b);
        return b;
    }
}
