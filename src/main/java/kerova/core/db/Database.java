package kerova.core.db;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.Cursor;
import com.healthmarketscience.jackcess.CursorBuilder;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.Table;
import java.io.IOException;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import kerova.core.db.sql.BoundUpdate;
import kerova.core.db.sql.Sql;
import kerova.core.db.sql.Statement;
import kerova.core.db.sql.UpdateStatement;

/** DAO's Database of a Data control: OpenRecordset and Execute on one file. */
public final class Database {
    private final AccessFile file;

    public Database(AccessFile file) {
        this.file = file;
    }

    public static Database open(String databaseName) {
        return new Database(AccessFile.open(databaseName));
    }

    public AccessFile file() {
        return file;
    }

    public Recordset OpenRecordset(String source) {
        return new Recordset(file, source);
    }

    public Recordset OpenRecordset(String source, int type) {
        return new Recordset(file, source);
    }

    /**
     * Runs an action statement (UPDATE) at once, as one batch with a single flush. Every new value
     * is computed and converted before the first row is written, so a failing expression changes nothing.
     * Returns the number of rows changed.
     */
    public int Execute(String sql) {
        Statement st = Sql.parse(sql);
        if (!(st instanceof UpdateStatement up)) {
            throw new DaoException(3065, "Cannot execute a select query.");
        }
        int[] count = new int[1];
        // the whole statement under the file's write lock: no other process writes in between
        file.writing(() -> count[0] = execute(st, up));
        return count[0];
    }

    private int execute(Statement st, UpdateStatement up) {
        Table table = file.table(st.tableName());
        List<String> names = Recordset.columnNames(table);
        BoundUpdate bound = up.bind(names);
        List<? extends Column> cols = table.getColumns();
        List<Map.Entry<com.healthmarketscience.jackcess.RowId, Map<String, Object>>> changes = new ArrayList<>();
        try {
            Cursor c = CursorBuilder.createCursor(table);
            c.beforeFirst();
            Row row;
            while ((row = c.getNextRow()) != null) {
                Object[] full = new Object[names.size()];
                for (int i = 0; i < full.length; i++) {
                    full[i] = row.get(names.get(i));
                }
                if (bound.matches(full)) {
                    Map<String, Object> set = new LinkedHashMap<>();
                    for (Map.Entry<Integer, Object> e : bound.assignments(full).entrySet()) {
                        Column col = cols.get(e.getKey());
                        set.put(col.getName(), Values.toColumn(col, e.getValue()));
                    }
                    changes.add(Map.entry(row.getId(), set));
                }
            }
        } catch (IOException e) {
            throw AccessFile.io(e);
        }
        file.batch(() -> {
            try {
                Cursor c = CursorBuilder.createCursor(file.table(st.tableName()));
                for (var e : changes) {
                    if (c.findRow(e.getKey())) {
                        c.updateCurrentRowFromMap(e.getValue());
                    }
                }
            } catch (IOException e) {
                throw AccessFile.io(e);
            }
        });
        return changes.size();
    }
}
