package kerova.oracle;

import java.io.IOException;
import java.io.PrintStream;
import java.lang.reflect.Method;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.IdentityHashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

import com.healthmarketscience.jackcess.CursorBuilder;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.IndexCursor;
import com.healthmarketscience.jackcess.Row;
import com.healthmarketscience.jackcess.Table;
import com.healthmarketscience.jackcess.impl.IndexData;
import com.healthmarketscience.jackcess.impl.IndexImpl;
import com.healthmarketscience.jackcess.impl.RowIdImpl;
import com.healthmarketscience.jackcess.impl.TableImpl;

/**
 * `check FILE`: every table's row count against a scan, and every index against the rows: one
 * entry per row with the key Jackcess would write, entries in Jackcess's order, each row found by
 * a lookup of its key, no duplicate key in a unique index, and Jackcess's own B-tree validation.
 */
final class Check {
    private Check() {}

    /** Problems reported per index before the rest are only counted. */
    static final int MAX_PER_INDEX = 20;

    private static final Method CREATE_ENTRY_BYTES;
    private static final Method ENTRY_BYTES;

    static {
        try {
            CREATE_ENTRY_BYTES = IndexData.class.getDeclaredMethod("createEntryBytes", Object[].class);
            CREATE_ENTRY_BYTES.setAccessible(true);
            ENTRY_BYTES = IndexData.Entry.class.getDeclaredMethod("getEntryBytes");
            ENTRY_BYTES.setAccessible(true);
        } catch (ReflectiveOperationException e) {
            throw new ExceptionInInitializerError(e);
        }
    }

    /** A row's key in one index: the encoded entry bytes and where the row lives. */
    record Key(byte[] bytes, RowIdImpl rowId, boolean allNull, Object[] row) {}

    static final Comparator<Key> ENTRY_ORDER = (a, b) -> {
        int c = IndexData.BYTE_CODE_COMPARATOR.compare(a.bytes, b.bytes);
        return c != 0 ? c : a.rowId.compareTo(b.rowId);
    };

    static int run(String file, PrintStream out) throws IOException {
        List<String> problems = new ArrayList<>();
        try (Database db = Dump.openReadOnly(file)) {
            for (Table table : Dump.tables(db, new String[0])) {
                checkTable((TableImpl) table, problems);
            }
        }
        if (problems.isEmpty()) {
            out.print("OK\n");
        } else {
            for (String p : problems) out.print(p.replace('\n', ' ') + "\n");
        }
        out.flush();
        return problems.isEmpty() ? 0 : 1;
    }

    static void checkTable(TableImpl table, List<String> problems) throws IOException {
        String where = "TABLE " + table.getName();
        List<IndexData> datas = new ArrayList<>(table.getIndexDatas());
        Map<IndexData, List<Key>> expected = new IdentityHashMap<>();
        for (IndexData d : datas) expected.put(d, new ArrayList<>());

        long scanned = 0;
        try {
            for (Row row : table) {
                scanned++;
                RowIdImpl rowId = (RowIdImpl) row.getId();
                Object[] values = table.asRow(row);
                for (IndexData d : datas) {
                    boolean allNull = d.getColumns().stream().allMatch(c -> values[c.getColumnIndex()] == null);
                    expected.get(d).add(new Key(tryEntryBytes(d, values), rowId, allNull, values));
                }
            }
        } catch (RuntimeException e) {
            problems.add(where + ": reading rows failed after " + scanned + " rows: " + e);
            return;
        }
        if (scanned != table.getRowCount()) {
            problems.add(where + ": row count " + table.getRowCount() + " in the definition, " + scanned + " rows found");
        }
        for (IndexData d : datas) {
            checkIndex(table, d, expected.get(d), problems);
        }
    }

    static void checkIndex(TableImpl table, IndexData data, List<Key> rows, List<String> all) throws IOException {
        String where = "TABLE " + table.getName() + " INDEX " + indexNames(table, data);
        List<String> problems = new ArrayList<>();
        try {
            data.validate(true);
        } catch (IOException | RuntimeException e) {
            problems.add(where + ": index pages invalid: " + e.getMessage());
        }

        // The entries as the index holds them, in its order.
        List<Key> entries = new ArrayList<>();
        try {
            IndexData.EntryCursor cursor = data.cursor();
            IndexData.Entry last = cursor.getLastEntry();
            IndexData.Entry prev = null;
            for (IndexData.Entry e = cursor.getNextEntry(); !e.equals(last); e = cursor.getNextEntry()) {
                if (prev != null && prev.compareTo(e) >= 0) {
                    problems.add(where + ": entry for row " + e.getRowId() + " is not after the entry for row " + prev.getRowId());
                }
                entries.add(new Key(bytesOf(e), e.getRowId(), false, null));
                prev = e;
            }
        } catch (IOException | RuntimeException e) {
            report(all, problems, where + ": reading entries failed: " + e);
            return;
        }

        List<Key> wanted = new ArrayList<>();
        for (Key k : rows) {
            if (!(k.allNull && data.shouldIgnoreNulls())) wanted.add(k);
        }
        if (entries.size() != wanted.size()) {
            problems.add(where + ": " + entries.size() + " entries for " + wanted.size() + " indexed rows");
        }
        if (rows.stream().anyMatch(k -> k.bytes == null)) {
            // Jackcess cannot encode these keys (a sort order it only reads): count and order only.
            report(all, problems, null);
            return;
        }

        // Same (key, row) pairs on both sides: a merge over both sorted lists.
        List<Key> sortedWanted = new ArrayList<>(wanted);
        sortedWanted.sort(ENTRY_ORDER);
        List<Key> sortedEntries = new ArrayList<>(entries);
        sortedEntries.sort(ENTRY_ORDER);
        int i = 0, j = 0;
        while (i < sortedWanted.size() || j < sortedEntries.size()) {
            int c = i >= sortedWanted.size() ? 1 : j >= sortedEntries.size() ? -1
                    : ENTRY_ORDER.compare(sortedWanted.get(i), sortedEntries.get(j));
            if (c == 0) {
                i++;
                j++;
            } else if (c < 0) {
                Key k = sortedWanted.get(i++);
                problems.add(where + ": row " + k.rowId + " has no entry with key " + Values.hex(k.bytes));
            } else {
                Key k = sortedEntries.get(j++);
                problems.add(where + ": entry with key " + Values.hex(k.bytes) + " for row " + k.rowId + " matches no row");
            }
        }

        if (data.isUnique()) {
            Map<RowIdImpl, Boolean> nullKey = new java.util.HashMap<>();
            for (Key k : rows) nullKey.put(k.rowId, k.allNull);
            for (int n = 1; n < entries.size(); n++) {
                Key a = entries.get(n - 1), b = entries.get(n);
                if (Arrays.equals(a.bytes, b.bytes) && !nullKey.getOrDefault(a.rowId, false)
                        && !nullKey.getOrDefault(b.rowId, false)) {
                    problems.add(where + ": unique index holds key " + Values.hex(a.bytes) + " for rows " + a.rowId + " and " + b.rowId);
                }
            }
        }

        findByKey(table, data, wanted, where, problems);
        report(all, problems, null);
    }

    /**
     * Looks every key up as a reader would: Jackcess's entry cursor positioned before the key
     * must walk exactly that key's rows, and an index cursor must find the key's first row.
     */
    static void findByKey(TableImpl table, IndexData data, List<Key> wanted, String where, List<String> problems)
            throws IOException {
        Map<String, List<Key>> groups = new LinkedHashMap<>();
        for (Key k : wanted) groups.computeIfAbsent(Values.hex(k.bytes), x -> new ArrayList<>()).add(k);
        IndexImpl logical = table.getIndexes().stream().filter(x -> x.getIndexData() == data).findFirst().orElseThrow();
        IndexCursor indexCursor = CursorBuilder.createCursor(logical);
        IndexData.EntryCursor entryCursor = data.cursor();
        for (List<Key> group : groups.values()) {
            group.sort(ENTRY_ORDER);
            Key first = group.get(0);
            try {
                entryCursor.beforeEntry(first.row);
                List<RowIdImpl> found = new ArrayList<>();
                for (IndexData.Entry e = entryCursor.getNextEntry(); e.isValid() && Arrays.equals(bytesOf(e), first.bytes);
                     e = entryCursor.getNextEntry()) {
                    found.add(e.getRowId());
                }
                List<RowIdImpl> rowIds = group.stream().map(Key::rowId).toList();
                if (!found.equals(rowIds)) {
                    problems.add(where + ": lookup of key " + Values.hex(first.bytes) + " finds rows " + brief(found)
                            + ", expected " + brief(rowIds));
                }
                Object[] entryValues = data.getColumns().stream().map(c -> first.row[c.getColumnIndex()]).toArray();
                if (!indexCursor.findFirstRowByEntry(entryValues)) {
                    problems.add(where + ": index cursor does not find row " + first.rowId + " by its key");
                } else if (!indexCursor.getSavepoint().getCurrentPosition().getRowId().equals(first.rowId)) {
                    problems.add(where + ": index cursor finds row " + indexCursor.getSavepoint().getCurrentPosition().getRowId()
                            + " for the key of row " + first.rowId);
                }
            } catch (IOException | RuntimeException e) {
                problems.add(where + ": lookup of key " + Values.hex(first.bytes) + " failed: " + e);
            }
        }
    }

    static void report(List<String> all, List<String> problems, String extra) {
        if (extra != null) problems.add(extra);
        for (int n = 0; n < problems.size() && n < MAX_PER_INDEX; n++) all.add(problems.get(n));
        if (problems.size() > MAX_PER_INDEX) {
            all.add("... and " + (problems.size() - MAX_PER_INDEX) + " more problems in the same index");
        }
    }

    /** A list shown with at most ten items. */
    static String brief(List<?> items) {
        if (items.size() <= 10) return items.toString();
        return items.subList(0, 10).toString().replace("]", ", ... " + (items.size() - 10) + " more]");
    }

    static String indexNames(TableImpl table, IndexData data) {
        StringBuilder b = new StringBuilder();
        for (IndexImpl i : table.getIndexes()) {
            if (i.getIndexData() != data) continue;
            if (b.length() > 0) b.append('/');
            b.append(i.getName());
        }
        return b.toString();
    }

    /** The key bytes Jackcess would write for the row, or null when it cannot encode them. */
    static byte[] tryEntryBytes(IndexData data, Object[] row) {
        try {
            return entryBytes(data, row);
        } catch (IOException | RuntimeException e) {
            return null;
        }
    }

    static byte[] entryBytes(IndexData data, Object[] row) throws IOException {
        try {
            return (byte[]) CREATE_ENTRY_BYTES.invoke(data, (Object) row);
        } catch (java.lang.reflect.InvocationTargetException e) {
            if (e.getCause() instanceof IOException io) throw io;
            throw new IllegalStateException(e.getCause());
        } catch (IllegalAccessException e) {
            throw new IllegalStateException(e);
        }
    }

    static byte[] bytesOf(IndexData.Entry entry) {
        try {
            return (byte[]) ENTRY_BYTES.invoke(entry);
        } catch (ReflectiveOperationException e) {
            throw new IllegalStateException(e);
        }
    }
}
