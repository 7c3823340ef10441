package kerova.core.db;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.Optional;

/**
 * The catalogue of Part 1.1: every database file, its tables and their columns in the order the
 * Parts give (positions are relied on). The data are in {@link CatalogData}; this class holds the
 * model and the look-ups.
 */
public final class Catalog {

    /** Column types as the Parts use them (mapped to Jackcess types when a file is created). */
    public enum ColType {
        /** Text of up to {@code length} characters (at most 255). */
        TEXT,
        /** Long text. */
        MEMO,
        /** 32-bit whole number. */
        LONG,
        /** 16-bit whole number. */
        INTEGER,
        BYTE,
        DOUBLE,
        SINGLE,
        CURRENCY,
        BOOLEAN,
        DATETIME,
        /** 32-bit AutoNumber (the {@code Sorszám} columns). */
        AUTONUMBER
    }

    public record Column(String name, ColType type, int length, boolean unique) {
        public Column asUnique() {
            return new Column(name, type, length, true);
        }
    }

    public record Table(String name, List<Column> columns) {
        public Optional<Column> column(String columnName) {
            return columns.stream().filter(c -> c.name().equalsIgnoreCase(columnName)).findFirst();
        }

        public List<String> columnNames() {
            return columns.stream().map(Column::name).toList();
        }
    }

    /**
     * One physical database file. {@code fileName} is the spelling {@code init} creates;
     * {@code spellings} are every spelling the forms use (matched without regard to case).
     * {@code sibling} marks the files of sibling products (created only by {@code init --sibling}).
     */
    public record DbFile(String fileName, List<String> spellings, boolean sibling, List<Table> tables) {
        public Optional<Table> table(String tableName) {
            return tables.stream().filter(t -> t.name().equalsIgnoreCase(tableName)).findFirst();
        }
    }

    private Catalog() {
    }

    /** The files of a company folder. */
    public static List<DbFile> companyFiles() {
        return CatalogData.FILES.stream().filter(f -> !f.sibling()).toList();
    }

    /** The files of the sibling products (Parts 6.3, 6.4). */
    public static List<DbFile> siblingFiles() {
        return CatalogData.FILES.stream().filter(DbFile::sibling).toList();
    }

    public static List<DbFile> allFiles() {
        return CatalogData.FILES;
    }

    /** The catalogue file that a spelling names, if any. */
    public static Optional<DbFile> file(String spelling) {
        String s = spelling.toLowerCase(Locale.ROOT);
        return CatalogData.FILES.stream()
                .filter(f -> f.spellings().stream().anyMatch(x -> x.toLowerCase(Locale.ROOT).equals(s)))
                .findFirst();
    }

    // --- small DSL for CatalogData ---

    static DbFile file(String fileName, List<String> spellings, Table... tables) {
        return new DbFile(fileName, spellings, false, List.of(tables));
    }

    static DbFile siblingFile(String fileName, Table... tables) {
        return new DbFile(fileName, List.of(fileName), true, List.of(tables));
    }

    static Table table(String name, Column... columns) {
        return new Table(name, List.of(columns));
    }

    /**
     * A table with the columns of another, in the same order (JarmuvekArchiv, CikkszámIdeigl):
     * same names, types and widths, but without the unique indexes, since such a table receives
     * copies of rows and a key may come back (a deleted last vehicle's key is given again).
     */
    static Table copyOf(String name, Table of) {
        return new Table(name, of.columns().stream()
                .map(c -> new Column(c.name(), c.type(), c.length(), false))
                .toList());
    }

    static Column[] concat(Column[]... parts) {
        List<Column> all = new ArrayList<>();
        for (Column[] p : parts) {
            all.addAll(Arrays.asList(p));
        }
        return all.toArray(new Column[0]);
    }

    static Column text(String name, int length) {
        return new Column(name, ColType.TEXT, length, false);
    }

    static Column text(String name) {
        return text(name, 50);
    }

    static Column memo(String name) {
        return new Column(name, ColType.MEMO, 0, false);
    }

    static Column lng(String name) {
        return new Column(name, ColType.LONG, 0, false);
    }

    static Column integer(String name) {
        return new Column(name, ColType.INTEGER, 0, false);
    }

    static Column byteCol(String name) {
        return new Column(name, ColType.BYTE, 0, false);
    }

    static Column dbl(String name) {
        return new Column(name, ColType.DOUBLE, 0, false);
    }

    static Column single(String name) {
        return new Column(name, ColType.SINGLE, 0, false);
    }

    static Column currency(String name) {
        return new Column(name, ColType.CURRENCY, 0, false);
    }

    static Column bool(String name) {
        return new Column(name, ColType.BOOLEAN, 0, false);
    }

    static Column date(String name) {
        return new Column(name, ColType.DATETIME, 0, false);
    }

    static Column autoNumber(String name) {
        return new Column(name, ColType.AUTONUMBER, 0, false);
    }
}
