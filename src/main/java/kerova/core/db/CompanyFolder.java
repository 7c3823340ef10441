package kerova.core.db;

import com.healthmarketscience.jackcess.ColumnBuilder;
import com.healthmarketscience.jackcess.DataType;
import com.healthmarketscience.jackcess.Database.FileFormat;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.IndexBuilder;
import com.healthmarketscience.jackcess.TableBuilder;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/** The tools on a company folder: create the catalogue's files ({@code init}) and check a folder ({@code check}). */
public final class CompanyFolder {
    private CompanyFolder() {
    }

    /**
     * Creates every missing database file of the catalogue (or the sibling files) as Access 2000
     * files, and every missing table in an existing one. Existing tables are left as they are.
     * Returns the names of the files it created or completed.
     */
    public static List<String> init(Path dir, boolean sibling) {
        List<String> done = new ArrayList<>();
        try {
            Files.createDirectories(dir);
            for (Catalog.DbFile f : sibling ? Catalog.siblingFiles() : Catalog.companyFiles()) {
                Path existing = findFile(dir, f);
                Path p = existing != null ? existing : dir.resolve(f.fileName());
                com.healthmarketscience.jackcess.Database db = existing != null
                        ? new DatabaseBuilder(p.toFile()).setAutoSync(false).open()
                        : new DatabaseBuilder(p.toFile()).setFileFormat(FileFormat.V2000).setAutoSync(false).create();
                boolean changed = existing == null;
                try (db) {
                    for (Catalog.Table t : f.tables()) {
                        if (!hasTable(db, t.name())) {
                            createTable(db, t);
                            changed = true;
                        }
                    }
                }
                if (changed) {
                    done.add(p.getFileName().toString());
                }
            }
        } catch (IOException e) {
            throw new DaoException(DaoException.CANNOT_OPEN, "Cannot create the database files: " + e.getMessage(), e);
        }
        return done;
    }

    private static boolean hasTable(com.healthmarketscience.jackcess.Database db, String name) throws IOException {
        for (String n : db.getTableNames()) {
            if (n.equalsIgnoreCase(name)) {
                return true;
            }
        }
        return false;
    }

    static void createTable(com.healthmarketscience.jackcess.Database db, Catalog.Table t) throws IOException {
        TableBuilder tb = new TableBuilder(t.name());
        for (Catalog.Column c : t.columns()) {
            tb.addColumn(columnBuilder(c));
        }
        int n = 0;
        for (Catalog.Column c : t.columns()) {
            if (c.unique() || c.type() == Catalog.ColType.AUTONUMBER) {
                IndexBuilder ib = new IndexBuilder("ix" + (n++) + "_" + asciiName(c.name())).addColumns(c.name());
                if (c.unique()) {
                    ib.setUnique();
                }
                tb.addIndex(ib);
            }
        }
        tb.toTable(db);
    }

    private static String asciiName(String s) {
        return java.text.Normalizer.normalize(s, java.text.Normalizer.Form.NFD).replaceAll("[^A-Za-z0-9]", "");
    }

    static ColumnBuilder columnBuilder(Catalog.Column c) {
        ColumnBuilder b = new ColumnBuilder(c.name());
        switch (c.type()) {
            case TEXT -> b.setType(DataType.TEXT).setLengthInUnits(Math.max(1, Math.min(255, c.length())));
            case MEMO -> b.setType(DataType.MEMO);
            case LONG -> b.setType(DataType.LONG);
            case INTEGER -> b.setType(DataType.INT);
            case BYTE -> b.setType(DataType.BYTE);
            case DOUBLE -> b.setType(DataType.DOUBLE);
            case SINGLE -> b.setType(DataType.FLOAT);
            case CURRENCY -> b.setType(DataType.MONEY);
            case BOOLEAN -> b.setType(DataType.BOOLEAN);
            case DATETIME -> b.setType(DataType.SHORT_DATE_TIME);
            case AUTONUMBER -> b.setType(DataType.LONG).setAutoNumber(true);
            default -> throw new IllegalStateException(c.type().toString());
        }
        return b;
    }

    private static Path findFile(Path dir, Catalog.DbFile f) {
        for (String spelling : f.spellings()) {
            try (var s = Files.list(dir)) {
                Path p = s.filter(x -> x.getFileName().toString().equalsIgnoreCase(spelling)).findFirst().orElse(null);
                if (p != null) {
                    return p;
                }
            } catch (IOException e) {
                return null;
            }
        }
        return null;
    }

    /** Lists missing files, tables and columns against the catalogue; empty when the folder is complete. */
    public static List<String> check(Path dir, boolean sibling) {
        List<String> problems = new ArrayList<>();
        for (Catalog.DbFile f : sibling ? Catalog.siblingFiles() : Catalog.companyFiles()) {
            Path p = findFile(dir, f);
            if (p == null) {
                problems.add("hiányzó állomány: " + f.fileName());
                continue;
            }
            try (com.healthmarketscience.jackcess.Database db = new DatabaseBuilder(p.toFile()).setReadOnly(true).open()) {
                for (Catalog.Table t : f.tables()) {
                    com.healthmarketscience.jackcess.Table jt = null;
                    for (String n : db.getTableNames()) {
                        if (n.equalsIgnoreCase(t.name())) {
                            jt = db.getTable(n);
                        }
                    }
                    if (jt == null) {
                        problems.add("hiányzó tábla: " + p.getFileName() + " / " + t.name());
                        continue;
                    }
                    for (Catalog.Column c : t.columns()) {
                        boolean has = jt.getColumns().stream()
                                .anyMatch(x -> x.getName().toLowerCase(Locale.ROOT).equals(c.name().toLowerCase(Locale.ROOT)));
                        if (!has) {
                            problems.add("hiányzó oszlop: " + p.getFileName() + " / " + t.name() + " / " + c.name());
                        }
                    }
                }
            } catch (IOException | RuntimeException e) {
                problems.add("nem olvasható állomány: " + p.getFileName() + " (" + e.getMessage() + ")");
            }
        }
        return problems;
    }
}
