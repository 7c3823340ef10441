package kerova.core.db;

import com.healthmarketscience.jackcess.Column;
import com.healthmarketscience.jackcess.Cursor;
import com.healthmarketscience.jackcess.CursorBuilder;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.RowId;
import com.healthmarketscience.jackcess.Table;
import java.io.IOException;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collection;
import java.util.Comparator;
import java.util.HashMap;
import java.util.HashSet;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.concurrent.CopyOnWriteArrayList;
import kerova.core.db.sql.BoundCondition;
import kerova.core.db.sql.BoundSelect;
import kerova.core.db.sql.SelectStatement;
import kerova.core.db.sql.Sql;
import kerova.core.db.sql.Statement;

/**
 * A DAO Recordset (Part 1.1). A dynaset: the query runs once at open and yields an ordered key
 * set of row ids; a row's values are read fresh when it becomes current. A statement with
 * DISTINCT, an aggregate or an alias-only list is a read-only snapshot of computed rows.
 */
public final class Recordset {
    /** The type value in use (dbOpenDynaset). */
    public static final int dbOpenDynaset = 2;

    /** The write-on-move hook of a Data control: called before the cursor leaves a record and after it arrives. */
    public interface MoveListener {
        void beforeMove(Recordset rs);

        void afterMove(Recordset rs);
    }

    private enum EditMode { NONE, EDIT, ADD }

    private final AccessFile file;
    private final String source;
    private final String tableName;
    private final List<String> tableColumns;
    private final List<String> outputColumns;
    private final BoundSelect select;
    private final boolean snapshot;

    private List<RowId> keys;          // dynaset
    private List<Object[]> rows;       // snapshot
    private Map<Object, Integer> bookmarkIndex;

    private int pos;                   // -1 before first, size() after last
    private boolean currentDeleted;
    private int maxVisited = -1;       // for the RecordCount idiom
    private Object[] current;          // cached values of the current row (output columns)
    private EditMode editMode = EditMode.NONE;
    private Object[] buffer;
    private boolean[] dirty;
    private RowId editKey;
    private boolean noMatch;
    private String sort = "";
    private boolean closed;
    private final List<MoveListener> listeners = new CopyOnWriteArrayList<>();

    private Cursor cursor;
    private int cursorGeneration = -1;

    Recordset(AccessFile file, String source) {
        this.file = file;
        this.source = source.trim();
        if (isStatement(this.source)) {
            Statement st = Sql.parse(this.source);
            if (!(st instanceof SelectStatement sel)) {
                throw new DaoException(DaoException.SYNTAX_ERROR_STATEMENT,
                        "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'.");
            }
            this.tableName = st.tableName();
            this.tableColumns = columnNames(file.table(tableName));
            this.select = sel.bind(tableColumns);
            this.snapshot = select.isSnapshot();
            this.outputColumns = select.outputColumns();
        } else {
            this.tableName = this.source;
            this.tableColumns = columnNames(file.table(tableName));
            this.select = null;
            this.snapshot = false;
            this.outputColumns = tableColumns;
        }
        run();
    }

    static boolean isStatement(String source) {
        String s = source.stripLeading().toLowerCase(java.util.Locale.ROOT);
        return s.startsWith("select") || s.startsWith("update") || s.startsWith("(");
    }

    static List<String> columnNames(Table t) {
        List<String> names = new ArrayList<>();
        for (Column c : t.getColumns()) {
            names.add(c.getName());
        }
        return List.copyOf(names);
    }

    // ---- running the query ----

    private Table table() {
        return file.table(tableName);
    }

    private Cursor cursor() {
        if (cursor == null || cursorGeneration != file.generation()) {
            try {
                cursor = CursorBuilder.createCursor(table());
            } catch (IOException e) {
                throw AccessFile.io(e);
            }
            cursorGeneration = file.generation();
        }
        return cursor;
    }

    private void run() {
        if (snapshot) {
            rows = new ArrayList<>(select.snapshot(scan(select.readColumns())));
            keys = null;
        } else {
            keys = runKeys();
            rows = null;
        }
        bookmarkIndex = null;
        pos = size() == 0 ? -1 : 0;
        maxVisited = size() == 0 ? -1 : 0;
        currentDeleted = false;
        current = null;
        editMode = EditMode.NONE;
    }

    private List<RowId> runKeys() {
        int[] needed = select == null ? new int[0] : select.neededColumns();
        List<Object[]> scanned = new ArrayList<>();
        List<RowId> ids = new ArrayList<>();
        for (Object[] r : scanIds(needed)) {
            if (select == null || select.matches(r)) {
                scanned.add(r);
            }
        }
        if (select != null && select.ordering() != null) {
            select.sort(scanned); // stable, sort keys computed once a row
        }
        for (Object[] r : scanned) {
            ids.add((RowId) r[tableColumns.size()]);
        }
        return ids;
    }

    /** Full rows of the table (for snapshots and UPDATE), columns by table index. */
    private Iterable<Object[]> scan(int[] columns) {
        List<Object[]> out = new ArrayList<>();
        for (Object[] r : scanIds(columns == null ? allColumns() : columns)) {
            out.add(Arrays.copyOf(r, tableColumns.size()));
        }
        return out;
    }

    private int[] allColumns() {
        int[] a = new int[tableColumns.size()];
        for (int i = 0; i < a.length; i++) {
            a[i] = i;
        }
        return a;
    }

    /** Rows with only the given columns read; the row id in the slot after the last column. */
    private List<Object[]> scanIds(int[] columns) {
        List<String> names = new ArrayList<>();
        for (int c : columns) {
            names.add(tableColumns.get(c));
        }
        Collection<String> wanted = new HashSet<>(names.isEmpty() ? List.of(tableColumns.get(0)) : names);
        return file.reading(() -> scanRows(columns, names, wanted));
    }

    private List<Object[]> scanRows(int[] columns, List<String> names, Collection<String> wanted) {
        List<Object[]> out = new ArrayList<>();
        try {
            Table t = table();
            Column[] cols = new Column[columns.length];
            for (int i = 0; i < columns.length; i++) {
                cols[i] = t.getColumn(names.get(i));
            }
            // value by value from the cursor: no row map a row (the scans run over whole tables)
            Cursor c = CursorBuilder.createCursor(t);
            c.beforeFirst();
            while (c.moveToNextRow()) {
                Object[] r = new Object[tableColumns.size() + 1];
                for (int i = 0; i < cols.length; i++) {
                    r[columns[i]] = c.getCurrentRowValue(cols[i]);
                }
                r[tableColumns.size()] = c.getSavepoint().getCurrentPosition().getRowId();
                out.add(r);
            }
        } catch (IOException e) {
            throw AccessFile.io(e);
        }
        return out;
    }

    private int size() {
        return snapshot ? rows.size() : keys.size();
    }

    // ---- state ----

    private void checkOpen() {
        if (closed) {
            throw new DaoException(DaoException.OBJECT_CLOSED, "Object invalid or no longer set.");
        }
    }

    public boolean EOF() {
        checkOpen();
        return size() == 0 || pos >= size();
    }

    public boolean BOF() {
        checkOpen();
        return size() == 0 || pos < 0;
    }

    public boolean NoMatch() {
        return noMatch;
    }

    /** DAO's RecordCount: the records visited so far, exact only after MoveLast (Part 1.1's idiom). */
    public int RecordCount() {
        checkOpen();
        if (size() == 0) {
            return 0;
        }
        return Math.min(size(), Math.max(1, maxVisited + 1));
    }

    /** The true number of rows (for grids and tools; not DAO's RecordCount). */
    public int size2() {
        checkOpen();
        return size();
    }

    public boolean isSnapshot() {
        return snapshot;
    }

    public boolean isUpdatable() {
        return !snapshot && !file.isReadOnly();
    }

    public String source() {
        return source;
    }

    public String tableName() {
        return tableName;
    }

    public List<String> columnNames() {
        return outputColumns;
    }

    public AccessFile file() {
        return file;
    }

    public void addMoveListener(MoveListener l) {
        listeners.add(l);
    }

    public void removeMoveListener(MoveListener l) {
        listeners.remove(l);
    }

    private void beforeMove() {
        for (MoveListener l : listeners) {
            l.beforeMove(this);
        }
    }

    private void arrived() {
        current = null;
        currentDeleted = false;
        endEdit();
        if (pos >= 0 && pos < size()) {
            maxVisited = Math.max(maxVisited, pos);
        }
        for (MoveListener l : listeners) {
            l.afterMove(this);
        }
    }

    // ---- navigation ----

    public void MoveFirst() {
        checkOpen();
        noEmpty();
        beforeMove();
        pos = 0;
        arrived();
    }

    public void MoveLast() {
        checkOpen();
        noEmpty();
        beforeMove();
        pos = size() - 1;
        arrived();
    }

    public void MoveNext() {
        checkOpen();
        if (EOF() && !currentDeleted) {
            throw noCurrent();
        }
        beforeMove();
        pos = currentDeleted ? pos : pos + 1; // after Delete the next row has slid into pos
        if (pos > size()) {
            pos = size();
        }
        arrived();
    }

    public void MovePrevious() {
        checkOpen();
        if (BOF() && !currentDeleted) {
            throw noCurrent();
        }
        beforeMove();
        pos = pos - 1;
        if (pos < -1) {
            pos = -1;
        }
        arrived();
    }

    private void noEmpty() {
        if (size() == 0) {
            throw noCurrent();
        }
    }

    private static DaoException noCurrent() {
        return new DaoException(DaoException.NO_CURRENT_RECORD, "No current record.");
    }

    /** The current record as a position (0 upwards), or -1 when there is none. */
    public int AbsolutePosition() {
        checkOpen();
        return pos >= 0 && pos < size() && !currentDeleted ? pos : -1;
    }

    public void setAbsolutePosition(int p) {
        checkOpen();
        if (p < 0 || p >= size()) {
            throw noCurrent();
        }
        beforeMove();
        pos = p;
        arrived();
    }

    public Object Bookmark() {
        checkOpen();
        if (pos < 0 || pos >= size() || currentDeleted) {
            throw noCurrent();
        }
        return snapshot ? (Object) new SnapshotMark(rows.get(pos)) : keys.get(pos);
    }

    public void setBookmark(Object bookmark) {
        checkOpen();
        Integer i = bookmarkIndex().get(bookmark);
        if (i == null) {
            throw new DaoException(DaoException.NO_CURRENT_RECORD, "Not a valid bookmark.");
        }
        beforeMove();
        pos = i;
        arrived();
    }

    private record SnapshotMark(Object[] row) {
        @Override
        public boolean equals(Object o) {
            return o instanceof SnapshotMark m && m.row == row;
        }

        @Override
        public int hashCode() {
            return System.identityHashCode(row);
        }
    }

    private Map<Object, Integer> bookmarkIndex() {
        if (bookmarkIndex == null) {
            bookmarkIndex = new HashMap<>();
            for (int i = 0; i < size(); i++) {
                bookmarkIndex.put(snapshot ? new SnapshotMark(rows.get(i)) : keys.get(i), i);
            }
        }
        return bookmarkIndex;
    }

    // ---- Find ----

    public void FindFirst(String filter) {
        find(filter, 0, +1);
    }

    public void FindNext(String filter) {
        find(filter, currentDeleted ? pos : pos + 1, +1);
    }

    public void FindPrevious(String filter) {
        find(filter, pos - 1, -1);
    }

    public void FindLast(String filter) {
        find(filter, size() - 1, -1);
    }

    private void find(String filter, int start, int step) {
        checkOpen();
        noMatch = true; // a filter that fails to parse leaves "no match", as the handlers expect
        BoundCondition cond = Sql.parseCondition(filter).bind(outputColumns);
        int found = -1;
        if (snapshot) {
            for (int i = start; i >= 0 && i < size(); i += step) {
                if (cond.matches(rows.get(i))) {
                    found = i;
                    break;
                }
            }
        } else if (start >= 0 && start < size()) {
            Set<RowId> matching = matchingIds(cond);
            for (int i = start; i >= 0 && i < size(); i += step) {
                if (matching.contains(keys.get(i))) {
                    found = i;
                    break;
                }
            }
        }
        if (found < 0) {
            return; // the current record stays
        }
        noMatch = false;
        beforeMove();
        pos = found;
        arrived();
    }

    /** One sequential scan of the columns the filter reads: cheaper than reading each key's row. */
    private Set<RowId> matchingIds(BoundCondition cond) {
        int[] needed = cond.neededColumns();
        int tableWidth = tableColumns.size();
        int[] tableNeeded = Arrays.stream(needed).filter(i -> i < tableWidth).toArray();
        boolean needsExtras = tableNeeded.length != needed.length;
        Set<RowId> out = new HashSet<>();
        for (Object[] r : scanIds(needsExtras ? allColumns() : tableNeeded)) {
            Object[] values = r;
            if (needsExtras) {
                Object[] full = Arrays.copyOf(r, tableWidth);
                values = concatExtras(full);
            }
            if (cond.matches(values)) {
                out.add((RowId) r[tableWidth]);
            }
        }
        return out;
    }

    private Object[] concatExtras(Object[] full) {
        if (select == null || outputColumns.size() == tableColumns.size()) {
            return full;
        }
        Object[] extras = select.extras(full);
        Object[] all = Arrays.copyOf(full, full.length + extras.length);
        System.arraycopy(extras, 0, all, full.length, extras.length);
        return all;
    }

    // ---- values ----

    private Object[] currentValues() {
        checkOpen();
        if (currentDeleted) {
            throw new DaoException(DaoException.DELETED, "Record is deleted.");
        }
        if (pos < 0 || pos >= size()) {
            throw noCurrent();
        }
        if (current == null) {
            current = snapshot ? rows.get(pos) : readRow(keys.get(pos));
        }
        return current;
    }

    private Object[] readRow(RowId id) {
        return file.reading(() -> readRowLocked(id));
    }

    private Object[] readRowLocked(RowId id) {
        try {
            Cursor c = cursor();
            if (!c.findRow(id)) {
                throw new DaoException(DaoException.DELETED, "Record is deleted.");
            }
            Row row = c.getCurrentRow();
            Object[] full = new Object[tableColumns.size()];
            for (int i = 0; i < full.length; i++) {
                full[i] = row.get(tableColumns.get(i));
            }
            return concatExtras(full);
        } catch (IOException e) {
            throw AccessFile.io(e);
        }
    }

    /** The values of the row at a position, without moving (grids). */
    public Object[] peek(int position) {
        checkOpen();
        if (position == pos && current != null && !currentDeleted) {
            return current;
        }
        return snapshot ? rows.get(position) : readRow(keys.get(position));
    }

    int columnIndex(String name) {
        for (int i = 0; i < outputColumns.size(); i++) {
            if (outputColumns.get(i).equalsIgnoreCase(name)) {
                return i;
            }
        }
        throw new DaoException(DaoException.UNKNOWN_FIELD, "Item not found in this collection.");
    }

    public Field Fields(String name) {
        checkOpen();
        return new Field(this, columnIndex(name));
    }

    public Field Fields(int index) {
        checkOpen();
        if (index < 0 || index >= outputColumns.size()) {
            throw new DaoException(DaoException.UNKNOWN_FIELD, "Item not found in this collection.");
        }
        return new Field(this, index);
    }

    public int FieldCount() {
        return outputColumns.size();
    }

    /** Shorthand for {@code Fields(name).Value}. */
    public Object get(String name) {
        return Fields(name).Value();
    }

    /** Shorthand for {@code Fields(name).Value = v}. */
    public void set(String name, Object v) {
        Fields(name).setValue(v);
    }

    Object value(int index) {
        if (editMode != EditMode.NONE && dirty[index]) {
            return buffer[index];
        }
        if (editMode == EditMode.ADD) {
            return buffer[index];
        }
        return currentValues()[index];
    }

    void setValue(int index, Object v) {
        checkOpen();
        if (editMode == EditMode.NONE) {
            throw new DaoException(DaoException.NO_EDIT, "Update or CancelUpdate without AddNew or Edit.");
        }
        if (index >= tableColumns.size()) {
            throw new DaoException(DaoException.NOT_UPDATABLE, "Field can't be updated.");
        }
        Column col = table().getColumns().get(index);
        if (col.isAutoNumber()) {
            throw new DaoException(3164, "Field can't be updated.");
        }
        buffer[index] = Values.toColumn(col, v);
        dirty[index] = true;
    }

    // ---- editing ----

    private void checkUpdatable() {
        if (snapshot) {
            throw new DaoException(DaoException.NOT_UPDATABLE, "Cannot update. Database or object is read-only.");
        }
        if (file.isReadOnly()) {
            throw new DaoException(DaoException.NOT_UPDATABLE, "Cannot update. Database or object is read-only.");
        }
    }

    public void AddNew() {
        checkOpen();
        checkUpdatable();
        beforeMove();
        buffer = new Object[tableColumns.size()];
        dirty = new boolean[tableColumns.size()];
        editMode = EditMode.ADD;
    }

    /** Starts editing the current record and takes its lock; another process holding it is error 3260. */
    public void Edit() {
        checkOpen();
        checkUpdatable();
        endEdit();
        RowId key = keys.get(pos);
        file.lockRecord(tableName, key);
        try {
            current = null; // read fresh under the lock
            buffer = Arrays.copyOf(currentValues(), tableColumns.size());
        } catch (RuntimeException e) {
            file.unlockRecord(tableName, key);
            throw e;
        }
        dirty = new boolean[tableColumns.size()];
        editKey = key;
        editMode = EditMode.EDIT;
    }

    /** Ends an Edit or AddNew without storing it, releasing the record's lock. */
    private void endEdit() {
        if (editMode == EditMode.EDIT && editKey != null) {
            file.unlockRecord(tableName, editKey);
        }
        editMode = EditMode.NONE;
        editKey = null;
        buffer = null;
        dirty = null;
    }

    public boolean isEditing() {
        return editMode != EditMode.NONE;
    }

    public void CancelUpdate() {
        endEdit();
    }

    public void Update() {
        checkOpen();
        if (editMode == EditMode.NONE) {
            throw new DaoException(DaoException.NO_EDIT, "Update or CancelUpdate without AddNew or Edit.");
        }
        EditMode mode = editMode;
        Map<String, Object> changes = new LinkedHashMap<>();
        for (int i = 0; i < tableColumns.size(); i++) {
            if (dirty[i]) {
                changes.put(tableColumns.get(i), buffer[i]);
            }
        }
        try {
            file.writing(() -> store(mode, changes));
        } finally {
            // a failed Update leaves the edit open in DAO; the handlers move on, so we close it
            endEdit();
            current = null;
        }
    }

    private void store(EditMode mode, Map<String, Object> changes) {
        try {
            if (mode == EditMode.ADD) {
                boolean wasEof = pos >= size();
                boolean allVisited = maxVisited == size() - 1;
                keys.add(insert(changes));
                bookmarkIndex = null;
                if (wasEof && pos >= 0) {
                    pos = size(); // stays after the last
                }
                if (allVisited && size() > 1) {
                    maxVisited++; // DAO counts the added record
                }
            } else if (!changes.isEmpty()) {
                Cursor c = cursor();
                if (!c.findRow(editKey)) {
                    throw new DaoException(DaoException.DELETED, "Record is deleted.");
                }
                c.updateCurrentRowFromMap(changes);
            }
        } catch (IOException e) {
            throw AccessFile.io(e);
        }
    }

    private RowId insert(Map<String, Object> values) throws IOException {
        // An Object[] with the row-id slot gets the new row's id back from Jackcess.
        com.healthmarketscience.jackcess.impl.TableImpl t = (com.healthmarketscience.jackcess.impl.TableImpl) table();
        Object[] row = t.asRowWithRowId(values);
        t.addRow(row);
        RowId id = t.getRowId(row);
        if (id == null) {
            throw new DaoException(DaoException.CANNOT_OPEN, "The new row could not be located.");
        }
        return id;
    }

    public void Delete() {
        checkOpen();
        checkUpdatable();
        if (pos < 0 || pos >= size() || currentDeleted) {
            throw noCurrent();
        }
        RowId key = keys.get(pos);
        file.lockRecord(tableName, key); // another user's Edit stops a Delete
        try {
            file.writing(() -> {
                try {
                    Cursor c = cursor();
                    if (!c.findRow(key)) {
                        throw new DaoException(DaoException.DELETED, "Record is deleted.");
                    }
                    c.deleteCurrentRow();
                } catch (IOException e) {
                    throw AccessFile.io(e);
                }
            });
        } finally {
            file.unlockRecord(tableName, key);
        }
        keys.remove(pos);
        bookmarkIndex = null;
        if (maxVisited >= pos) {
            maxVisited--;
        }
        currentDeleted = true;
        current = null;
        endEdit();
    }

    // ---- reopening ----

    public void Requery() {
        checkOpen();
        beforeMove();
        run();
        arrived();
    }

    public String Sort() {
        return sort;
    }

    public void setSort(String sort) {
        this.sort = sort == null ? "" : sort;
    }

    /** A new Recordset from this one, honouring its Sort. */
    public Recordset OpenRecordset() {
        checkOpen();
        if (sort.isBlank()) {
            return new Recordset(file, source);
        }
        String base = isStatement(source) ? stripOrderBy(source) : "select * from [" + source + "]";
        return new Recordset(file, base + " order by " + sort);
    }

    /** The statement without its ORDER BY clause (quotes respected). */
    static String stripOrderBy(String sql) {
        String lower = sql.toLowerCase(java.util.Locale.ROOT);
        boolean inQuote = false;
        char q = 0;
        int cut = -1;
        for (int i = 0; i < lower.length(); i++) {
            char ch = lower.charAt(i);
            if (inQuote) {
                if (ch == q) {
                    inQuote = false;
                }
            } else if (ch == '\'' || ch == '"') {
                inQuote = true;
                q = ch;
            } else if (lower.startsWith("order", i) && (i == 0 || Character.isWhitespace(lower.charAt(i - 1)))) {
                int j = i + 5;
                while (j < lower.length() && Character.isWhitespace(lower.charAt(j))) {
                    j++;
                }
                if (lower.startsWith("by", j)) {
                    cut = i;
                }
            }
        }
        return cut < 0 ? sql : sql.substring(0, cut).trim();
    }

    public void Close() {
        checkOpen();
        try {
            beforeMove();
        } finally {
            endEdit();
            closed = true;
            listeners.clear();
            cursor = null;
        }
    }

    public boolean isClosed() {
        return closed;
    }
}
