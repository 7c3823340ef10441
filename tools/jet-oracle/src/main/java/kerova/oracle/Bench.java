package kerova.oracle;

import java.io.File;
import java.io.IOException;
import java.io.PrintStream;
import java.math.BigDecimal;
import java.nio.file.Files;
import java.time.LocalDateTime;
import java.util.Collections;
import java.util.Set;

import com.healthmarketscience.jackcess.ColumnBuilder;
import com.healthmarketscience.jackcess.Cursor;
import com.healthmarketscience.jackcess.CursorBuilder;
import com.healthmarketscience.jackcess.DataType;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.IndexBuilder;
import com.healthmarketscience.jackcess.IndexCursor;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.Table;
import com.healthmarketscience.jackcess.TableBuilder;

/**
 * `bench FILE ROWS`: the engine benchmark run through Jackcess on a trip-shaped table of 45
 * columns, printing `operation\tseconds` lines. The table and the row formula are documented in
 * README.md so the engine's own benchmark builds exactly the same data.
 */
final class Bench {
    private Bench() {}

    static final String TABLE = "Trips";
    static final LocalDateTime DATE_BASE = LocalDateTime.of(2020, 1, 1, 0, 0);

    static int run(String file, int rows, PrintStream out) throws IOException {
        if (rows < 1) throw new Main.Failure("ROWS must be at least 1");
        File target = new File(file);
        Files.deleteIfExists(target.toPath());

        long t = System.nanoTime();
        try (Database db = Dump.configure(new DatabaseBuilder(target).setFileFormat(Database.FileFormat.V2000)
                .setAutoSync(false).create())) {
            Table table = createTable(db);
            Object[] row = new Object[45];
            for (int i = 0; i < rows; i++) {
                fillRow(row, i);
                table.addRow(row);
            }
        }
        t = lap(out, "insert", t);

        try (Database db = open(target)) {
            Table table = db.getTable(TABLE);
            long count = 0;
            for (Row r : table) {
                for (Object v : r.values()) if (v != null) count++;
            }
            if (count == 0) throw new IllegalStateException("no values read");
        }
        t = lap(out, "open_scan", t);

        try (Database db = open(target)) {
            Table table = db.getTable(TABLE);
            double sum = 0;
            Set<String> only = Collections.singleton("Dbl01");
            for (Row r : CursorBuilder.createCursor(table).newIterable().setColumnNames(only)) {
                sum += (Double) r.get("Dbl01");
            }
            if (sum <= 0) throw new IllegalStateException("bad sum " + sum);
            t = lap(out, "sum", t);
            IndexCursor pk = CursorBuilder.createPrimaryKeyCursor(table);
            int id = rows / 2 + 1;
            Row found = pk.findRowByEntry(id);
            if (found == null || !found.get("Id").equals(id)) throw new IllegalStateException("row " + id + " not found");
            t = lap(out, "find", t);
        }

        t = System.nanoTime();
        try (Database db = open(target)) {
            Table table = db.getTable(TABLE);
            com.healthmarketscience.jackcess.Column dbl = table.getColumn("Dbl01");
            Cursor c = CursorBuilder.createCursor(table);
            for (Row r = c.getNextRow(); r != null; r = c.getNextRow()) {
                c.setCurrentRowValue(dbl, (Double) r.get("Dbl01") + 1.0);
            }
        }
        t = lap(out, "update", t);


        try (Database db = open(target)) {
            Cursor c = CursorBuilder.createCursor(db.getTable(TABLE));
            for (Row r = c.getNextRow(); r != null; r = c.getNextRow()) {
                if ((Integer) r.get("Id") % 2 == 0) c.deleteCurrentRow();
            }
        }
        lap(out, "delete", t);
        out.flush();
        return 0;
    }

    private static Database open(File f) throws IOException {
        return Dump.configure(new DatabaseBuilder(f).setAutoSync(false).open());
    }

    private static long lap(PrintStream out, String op, long start) {
        long now = System.nanoTime();
        out.print(op + "\t" + String.format("%.6f", (now - start) / 1e9) + "\n");
        return now;
    }

    static Table createTable(Database db) throws IOException {
        TableBuilder b = new TableBuilder(TABLE);
        b.addColumn(new ColumnBuilder("Id", DataType.LONG).setAutoNumber(true));
        for (int k = 1; k <= 10; k++) b.addColumn(new ColumnBuilder(name("Text", k), DataType.TEXT).setLengthInUnits(50).setCompressedUnicode(true));
        b.addColumn(new ColumnBuilder("Note", DataType.MEMO).setCompressedUnicode(true));
        for (int k = 1; k <= 10; k++) b.addColumn(new ColumnBuilder(name("Dbl", k), DataType.DOUBLE));
        for (int k = 1; k <= 5; k++) b.addColumn(new ColumnBuilder(name("Int", k), DataType.INT));
        for (int k = 1; k <= 8; k++) b.addColumn(new ColumnBuilder(name("Long", k), DataType.LONG));
        for (int k = 1; k <= 4; k++) b.addColumn(new ColumnBuilder(name("Money", k), DataType.MONEY));
        for (int k = 1; k <= 4; k++) b.addColumn(new ColumnBuilder(name("Date", k), DataType.SHORT_DATE_TIME));
        for (int k = 1; k <= 2; k++) b.addColumn(new ColumnBuilder(name("Flag", k), DataType.BOOLEAN));
        b.addIndex(new IndexBuilder(IndexBuilder.PRIMARY_KEY_NAME).addColumns("Id").setPrimaryKey());
        return b.toTable(db);
    }

    static String name(String prefix, int k) {
        return String.format("%s%02d", prefix, k);
    }

    /** Row i (0-based; its Id becomes i + 1), in column order. */
    static void fillRow(Object[] row, int i) {
        int c = 0;
        row[c++] = null;
        for (int k = 1; k <= 10; k++) row[c++] = "Text" + k + " " + i;
        row[c++] = i % 10 == 0 ? Values.repeat("Note " + i + ". ", 5 * ("Note " + i + ". ").length()) : null;
        for (int k = 1; k <= 10; k++) row[c++] = i * (double) k + 0.25;
        for (int k = 1; k <= 5; k++) row[c++] = (short) ((i * k) % 30000);
        for (int k = 1; k <= 8; k++) row[c++] = i * k * 7;
        for (int k = 1; k <= 4; k++) row[c++] = BigDecimal.valueOf((long) i * k, 2);
        for (int k = 1; k <= 4; k++) row[c++] = DATE_BASE.plusMinutes(10L * i + k);
        for (int k = 1; k <= 2; k++) row[c++] = (i + k) % 2 == 0;
    }
}
