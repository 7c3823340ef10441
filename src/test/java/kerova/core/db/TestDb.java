package kerova.core.db;

import com.healthmarketscience.jackcess.Database.FileFormat;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import java.io.IOException;
import java.nio.file.Path;
import java.util.function.Consumer;

/** Makes small real Access 2000 files in a temporary folder for record-store tests. */
public final class TestDb {
    private TestDb() {
    }

    /** A file {@code name} in {@code dir} with the given tables; the working folder becomes {@code dir}. */
    public static void create(Path dir, String name, Catalog.Table... tables) throws IOException {
        AccessFile.setWorkingFolder(dir);
        try (com.healthmarketscience.jackcess.Database db =
                     new DatabaseBuilder(dir.resolve(name).toFile()).setFileFormat(FileFormat.V2000).create()) {
            for (Catalog.Table t : tables) {
                CompanyFolder.createTable(db, t);
            }
        }
    }

    /** Adds rows through the record store: each consumer fills one new record. */
    @SafeVarargs
    public static void addRows(String file, String table, Consumer<Recordset>... fillers) {
        Recordset rs = Database.open(file).OpenRecordset(table);
        for (Consumer<Recordset> f : fillers) {
            rs.AddNew();
            f.accept(rs);
            rs.Update();
        }
        rs.Close();
    }

    /** The vehicle-like test table used by the record-store tests. */
    public static Catalog.Table jarmu() {
        return Catalog.table("Jarmuvek",
                Catalog.lng("recordID").asUnique(),
                Catalog.text("GkFrsz", 20),
                Catalog.text("Típus", 50),
                Catalog.dbl("Km"),
                Catalog.date("MuszakiVizsgaDatum"),
                Catalog.bool("Figyelmeztetés"),
                Catalog.autoNumber("Sorszám"));
    }
}
