package kerova.oracle;

import java.io.File;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.ColumnBuilder;
import com.healthmarketscience.jackcess.DataType;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.IndexBuilder;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.Table;
import com.healthmarketscience.jackcess.TableBuilder;

/**
 * `write FILE SCRIPT`: runs a line script of creations, inserts, updates and deletes through
 * Jackcess. Fields are separated by TAB; values use the dump's notation (see README.md).
 */
final class ScriptWriter {
    private Database db;
    private TableBuilder pendingTable;
    private final String file;
    private String where = "";

    private ScriptWriter(String file) {
        this.file = file;
    }

    static int run(String file, String script) throws IOException {
        List<String> lines = script.equals("-")
                ? new String(System.in.readAllBytes(), StandardCharsets.UTF_8).lines().toList()
                : Files.readAllLines(Path.of(script), StandardCharsets.UTF_8);
        ScriptWriter w = new ScriptWriter(file);
        try {
            for (int n = 0; n < lines.size(); n++) {
                String line = lines.get(n);
                if (line.endsWith("\r")) line = line.substring(0, line.length() - 1);
                if (line.isBlank() || line.startsWith("#")) continue;
                w.where = script + ":" + (n + 1) + ": ";
                try {
                    w.command(line.split("\t", -1));
                } catch (Main.Failure e) {
                    throw new Main.Failure(w.where + e.getMessage());
                } catch (IOException | RuntimeException e) {
                    throw new Main.Failure(w.where + e.getClass().getSimpleName() + ": " + e.getMessage());
                }
            }
            if (w.pendingTable != null) throw new Main.Failure(script + ": table definition without its end line");
        } finally {
            if (w.db != null) w.db.close();
        }
        return 0;
    }

    private void command(String[] f) throws IOException {
        String op = f[0];
        if (db == null && !op.equals("new") && !op.equals("open")) {
            throw new Main.Failure("the script starts with new or open");
        }
        if (pendingTable != null && !op.equals("column") && !op.equals("index") && !op.equals("end")) {
            throw new Main.Failure("only column, index and end lines inside a table definition");
        }
        switch (op) {
            case "new" -> {
                arity(f, 1, 1);
                if (db != null) throw new Main.Failure("the file is already open");
                File target = new File(file);
                Files.deleteIfExists(target.toPath());
                db = Dump.configure(new DatabaseBuilder(target).setFileFormat(Database.FileFormat.V2000)
                        .setAutoSync(false).create());
            }
            case "open" -> {
                arity(f, 1, 1);
                if (db != null) throw new Main.Failure("the file is already open");
                db = Dump.configure(new DatabaseBuilder(new File(file)).setAutoSync(false).open());
            }
            case "table" -> {
                arity(f, 2, 2);
                pendingTable = new TableBuilder(f[1]);
            }
            case "column" -> {
                if (pendingTable == null) throw new Main.Failure("column outside a table definition");
                pendingTable.addColumn(column(f));
            }
            case "index" -> {
                if (pendingTable == null) throw new Main.Failure("index outside a table definition");
                pendingTable.addIndex(index(f));
            }
            case "end" -> {
                if (pendingTable == null) throw new Main.Failure("end without a table definition");
                pendingTable.toTable(db);
                pendingTable = null;
            }
            case "insert" -> insert(f);
            case "update" -> update(f);
            case "delete" -> delete(f);
            default -> throw new Main.Failure("unknown command " + op);
        }
    }

    private static void arity(String[] f, int min, int max) {
        if (f.length < min || f.length > max) {
            throw new Main.Failure(f[0] + " takes " + (min == max ? "" + (min - 1) : (min - 1) + " to " + (max - 1)) + " fields");
        }
    }

    /** column NAME TYPE [LENGTH | PRECISION SCALE] [auto] [nocompress] */
    static ColumnBuilder column(String[] f) {
        if (f.length < 3) throw new Main.Failure("column NAME TYPE [LENGTH] [auto] [nocompress]");
        DataType type;
        try {
            type = DataType.valueOf(f[2]);
        } catch (IllegalArgumentException e) {
            throw new Main.Failure("unknown type " + f[2]);
        }
        ColumnBuilder c = new ColumnBuilder(f[1], type);
        if (type == DataType.TEXT || type == DataType.MEMO) c.setCompressedUnicode(true);
        List<Integer> numbers = new ArrayList<>();
        for (int i = 3; i < f.length; i++) {
            switch (f[i]) {
                case "auto" -> c.setAutoNumber(true);
                case "nocompress" -> c.setCompressedUnicode(false);
                default -> numbers.add((int) Main.parseLong(f[i], "length"));
            }
        }
        if (type == DataType.NUMERIC) {
            if (numbers.size() > 0) c.setPrecision(numbers.get(0));
            if (numbers.size() > 1) c.setScale(numbers.get(1));
        } else if (type == DataType.TEXT && numbers.size() == 1) {
            c.setLengthInUnits(numbers.get(0));
        } else if (type == DataType.BINARY && numbers.size() == 1) {
            c.setLength(numbers.get(0));
        } else if (!numbers.isEmpty()) {
            throw new Main.Failure("no length for a " + type + " column");
        }
        return c;
    }

    /** index NAME primary|unique|plain COLUMNS [ignorenulls] [required]; "-" before a column: descending. */
    static IndexBuilder index(String[] f) {
        if (f.length < 4) throw new Main.Failure("index NAME KIND COLUMNS [ignorenulls] [required]");
        IndexBuilder b = new IndexBuilder(f[1]);
        for (String col : f[3].split(",")) {
            boolean desc = col.startsWith("-");
            b.addColumns(!desc, desc ? col.substring(1) : col);
        }
        switch (f[2]) {
            case "primary" -> b.setPrimaryKey();
            case "unique" -> b.setUnique();
            case "plain" -> { }
            default -> throw new Main.Failure("index kind is primary, unique or plain, not " + f[2]);
        }
        for (int i = 4; i < f.length; i++) {
            switch (f[i]) {
                case "ignorenulls" -> b.setIgnoreNulls();
                case "required" -> b.setRequired();
                default -> throw new Main.Failure("unknown index option " + f[i]);
            }
        }
        return b;
    }

    private Table table(String name) throws IOException {
        Table t = db.getTable(name);
        if (t == null) throw new Main.Failure("no table " + name);
        return t;
    }

    private Column columnOf(Table t, String name) {
        Column c = t.getColumn(name);
        if (c == null) throw new Main.Failure("no column " + name + " in " + t.getName());
        return c;
    }

    /** insert TABLE V1 V2 ...: one value per column in column order (any value for an autonumber). */
    private void insert(String[] f) throws IOException {
        Table t = table(f[1]);
        List<? extends Column> cols = t.getColumns();
        if (f.length - 2 != cols.size()) {
            throw new Main.Failure(t.getName() + " has " + cols.size() + " columns, the line gives " + (f.length - 2) + " values");
        }
        Object[] row = new Object[cols.size()];
        for (int i = 0; i < cols.size(); i++) {
            row[i] = cols.get(i).isAutoNumber() ? Column.AUTO_NUMBER : Values.parse(cols.get(i), f[i + 2]);
        }
        t.addRow(row);
    }

    /** update TABLE COLUMN VALUE SETCOLUMN SETVALUE...: every row whose COLUMN shows as VALUE. */
    private void update(String[] f) throws IOException {
        if (f.length < 6 || f.length % 2 != 0) throw new Main.Failure("update TABLE COLUMN VALUE SETCOLUMN SETVALUE...");
        Table t = table(f[1]);
        Map<String, Object> changes = new LinkedHashMap<>();
        for (int i = 4; i < f.length; i += 2) {
            Column c = columnOf(t, f[i]);
            changes.put(c.getName(), Values.parse(c, f[i + 1]));
        }
        Column key = columnOf(t, f[2]);
        String wanted = Values.format(key, Values.parse(key, f[3]));
        // Collect first: an update may move a row, and a scan must not meet it twice.
        List<Row> hits = matches(t, key, wanted);
        for (Row row : hits) {
            row.putAll(changes);
            t.updateRow(row);
        }
        int n = hits.size();
        if (n == 0) throw new Main.Failure("no row in " + t.getName() + " where " + key.getName() + " is " + f[3]);
    }

    /** delete TABLE COLUMN VALUE: every row whose COLUMN shows as VALUE. */
    private void delete(String[] f) throws IOException {
        arity(f, 4, 4);
        Table t = table(f[1]);
        Column key = columnOf(t, f[2]);
        String wanted = Values.format(key, Values.parse(key, f[3]));
        List<Row> hits = matches(t, key, wanted);
        for (Row row : hits) {
            t.deleteRow(row);
        }
        if (hits.isEmpty()) throw new Main.Failure("no row in " + t.getName() + " where " + key.getName() + " is " + f[3]);
    }

    private static List<Row> matches(Table t, Column key, String wanted) throws IOException {
        List<Row> hits = new ArrayList<>();
        for (Row row : t) {
            if (Values.format(key, row.get(key.getName())).equals(wanted)) hits.add(row);
        }
        return hits;
    }
}
