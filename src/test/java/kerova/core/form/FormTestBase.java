package kerova.core.form;

import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.vb.Err;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.io.TempDir;

/** A fresh company folder, a fixed clock, a scripted Ui and clean public variables for each test. */
public abstract class FormTestBase {
    public static final LocalDateTime NOW = LocalDateTime.of(2026, 11, 23, 10, 15, 30);

    @TempDir
    public Path dir;
    public ScriptedUi ui;

    @BeforeEach
    void setUpCompany() {
        AccessFile.closeAll();
        CompanyFolder.init(dir, false);
        AccessFile.setWorkingFolder(dir);
        VbClock.setFixed(NOW);
        Globals.reset();
        Forms.reset();
        Err.Clear();
        ui = new ScriptedUi();
        Forms.setUi(ui);
    }

    @AfterEach
    void tearDownCompany() {
        Forms.reset();
        Forms.setUi(new HeadlessUi());
        VbClock.reset();
        AccessFile.closeAll();
    }

    /** Appends a row to a table: pairs of column name and value. */
    public static void insert(String database, String table, Object... pairs) {
        Recordset r = Database.open(database).OpenRecordset(table);
        r.AddNew();
        for (int i = 0; i < pairs.length; i += 2) {
            r.set((String) pairs[i], pairs[i + 1]);
        }
        r.Update();
        r.Close();
    }

    /** The values of one column of every row, in table order. */
    public static List<Object> column(String database, String table, String col) {
        Recordset r = Database.open(database).OpenRecordset(table);
        List<Object> out = new ArrayList<>();
        if (r.RecordCount() > 0) {
            r.MoveFirst();
            while (!r.EOF()) {
                out.add(r.get(col));
                r.MoveNext();
            }
        }
        r.Close();
        return out;
    }

    /** Every row of a table as arrays, in table order. */
    public static List<Object[]> rows(String database, String table) {
        Recordset r = Database.open(database).OpenRecordset(table);
        List<Object[]> out = new ArrayList<>();
        for (int i = 0; i < r.size2(); i++) {
            out.add(r.peek(i));
        }
        r.Close();
        return out;
    }
}
