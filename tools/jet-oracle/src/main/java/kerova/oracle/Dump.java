package kerova.oracle;

import java.io.File;
import java.io.IOException;
import java.io.PrintStream;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.DateTimeType;
import com.healthmarketscience.jackcess.Index;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.Table;

/** `dump FILE [TABLE...]`: tables, columns, indexes and rows in the shared text form. */
final class Dump {
    private Dump() {}

    /** Names ordered by Unicode code point (String.compareTo orders UTF-16 units). */
    static final Comparator<String> CODE_POINT_ORDER = (a, b) -> {
        int i = 0, j = 0;
        while (i < a.length() && j < b.length()) {
            int ca = a.codePointAt(i), cb = b.codePointAt(j);
            if (ca != cb) return Integer.compare(ca, cb);
            i += Character.charCount(ca);
            j += Character.charCount(cb);
        }
        return Boolean.compare(i < a.length(), j < b.length());
    };

    static int run(String file, String[] tableNames, PrintStream out) throws IOException {
        try (Database db = openReadOnly(file)) {
            for (Table table : tables(db, tableNames)) {
                dumpTable(table, out);
            }
        }
        out.flush();
        return 0;
    }

    static Database openReadOnly(String file) throws IOException {
        File f = new File(file);
        if (!f.isFile()) {
            throw new Main.Failure("no such file: " + file);
        }
        return configure(new DatabaseBuilder(f).setReadOnly(true).setAutoSync(false).open());
    }

    /** Dates as LocalDateTime, columns in ascending column number: what every command uses. */
    static Database configure(Database db) {
        db.setDateTimeType(DateTimeType.LOCAL_DATE_TIME);
        db.setColumnOrder(Table.ColumnOrder.DATA);
        return db;
    }

    /** The named tables (system tables allowed), or every user table that is not linked. */
    static List<Table> tables(Database db, String[] names) throws IOException {
        List<Table> tables = new ArrayList<>();
        if (names.length == 0) {
            for (Table t : db.newIterable().setIncludeLinkedTables(false)) {
                tables.add(t);
            }
        } else {
            for (String name : names) {
                Table t = db.getTable(name);
                if (t == null) {
                    t = db.getSystemTable(name);
                }
                if (t == null) {
                    throw new Main.Failure("no table " + name + " in " + db.getFile());
                }
                tables.add(t);
            }
        }
        tables.sort(Comparator.comparing(Table::getName, CODE_POINT_ORDER));
        return tables;
    }

    static void dumpTable(Table table, PrintStream out) throws IOException {
        out.print("TABLE " + Values.escape(table.getName()) + "\n");
        List<? extends Column> columns = table.getColumns();
        for (Column c : columns) {
            out.print("COLUMN " + Values.escape(c.getName()) + "\t" + c.getType().name() + "\t" + c.getLength() + "\n");
        }
        List<Index> indexes = new ArrayList<>(table.getIndexes());
        indexes.sort(Comparator.comparing(Index::getName, CODE_POINT_ORDER));
        for (Index index : indexes) {
            out.print("INDEX " + Values.escape(index.getName()) + "\t" + indexColumns(index) + "\t" + kind(index) + "\n");
        }
        long rows = 0;
        StringBuilder line = new StringBuilder(256);
        for (Row row : table) {
            line.setLength(0);
            line.append("ROW ");
            for (int i = 0; i < columns.size(); i++) {
                if (i > 0) line.append('\t');
                Column c = columns.get(i);
                line.append(Values.format(c, row.get(c.getName())));
            }
            line.append('\n');
            out.print(line);
            rows++;
        }
        out.print("END " + rows + "\n");
    }

    static String indexColumns(Index index) {
        StringBuilder b = new StringBuilder();
        for (Index.Column c : index.getColumns()) {
            if (b.length() > 0) b.append(',');
            if (!c.isAscending()) b.append('-');
            b.append(Values.escape(c.getName()));
        }
        return b.toString();
    }

    static String kind(Index index) {
        if (index.isPrimaryKey()) return "primary";
        if (index.isForeignKey()) return "foreign";
        if (index.isUnique()) return "unique";
        return "plain";
    }
}
