package kerova.core.db;

import com.healthmarketscience.jackcess.ConstraintViolationException;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.DateTimeType;
import com.healthmarketscience.jackcess.Table;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import java.util.stream.Stream;

/**
 * One open Access 2000 file of the process. Every Jackcess access goes through here, so that
 * locking between processes can be added in one place. A {@code DatabaseName} resolves against
 * the working folder, matching file names without regard to case; {@code betarol.mdb/.dsb} and
 * {@code regiszt.mdb/.dsb} are one file: a spelling that does not exist resolves to the one that does.
 */
public final class AccessFile {
    private static Path workingFolder = Paths.get("").toAbsolutePath();
    private static final Map<Path, AccessFile> OPEN = new HashMap<>();

    private final Path path;
    private Database db;
    private final boolean readOnly;
    private int batchDepth;
    /** Grows each time the Jackcess database is reopened: holders of tables and cursors refetch them. */
    private int generation;
    /** Locks shared with the other processes on this folder; null where none can be made. */
    private final SharedLock shared;
    /** The change counter of the lock file when this process last saw the file. */
    private long seenCounter;
    private int writeDepth;
    private boolean autoSync = true;

    private AccessFile(Path path, Database db, boolean readOnly) {
        this.path = path;
        this.db = db;
        this.readOnly = readOnly;
        this.shared = readOnly ? null : SharedLock.beside(path);
        this.seenCounter = shared == null ? 0 : shared.counter();
    }

    /** The folder that relative database names resolve against (the process's current directory). */
    public static synchronized Path workingFolder() {
        return workingFolder;
    }

    /** Sets the working folder (the program at start-up, and tests); closes files of the old folder. */
    public static synchronized void setWorkingFolder(Path folder) {
        closeAll();
        workingFolder = folder.toAbsolutePath().normalize();
    }

    /** Opens (or returns the already open) file that a {@code DatabaseName} names. */
    public static synchronized AccessFile open(String databaseName) {
        Path p = resolve(databaseName);
        if (p == null) {
            throw new DaoException(DaoException.FILE_NOT_FOUND,
                    "Could not find file '" + workingFolder.resolve(normalize(databaseName)) + "'.");
        }
        AccessFile f = OPEN.get(p);
        if (f != null) {
            return f;
        }
        boolean ro = !Files.isWritable(p);
        f = new AccessFile(p, openJackcess(p, ro, true), ro);
        OPEN.put(p, f);
        return f;
    }

    private static Database openJackcess(Path p, boolean readOnly, boolean autoSync) {
        try {
            Database db = new DatabaseBuilder(p.toFile()).setReadOnly(readOnly).setAutoSync(autoSync).open();
            db.setDateTimeType(DateTimeType.LOCAL_DATE_TIME);
            return db;
        } catch (IOException | RuntimeException e) {
            throw new DaoException(DaoException.CANNOT_OPEN,
                    "Unrecognized database format or file cannot be opened: '" + p + "'.", e);
        }
    }

    /** Resolves a database name to an existing file, or null. */
    public static Path resolve(String databaseName) {
        if (databaseName == null || databaseName.isBlank()) {
            return null;
        }
        Path given = Paths.get(normalize(databaseName));
        Path full = given.isAbsolute() ? given : workingFolder().resolve(given);
        Path dir = full.getParent();
        String name = full.getFileName().toString();
        Path found = findIgnoringCase(dir, name);
        if (found == null) {
            String alt = alternateSpelling(name);
            if (alt != null) {
                found = findIgnoringCase(dir, alt);
            }
        }
        return found == null ? null : found.toAbsolutePath().normalize();
    }

    private static String normalize(String name) {
        // Paths from table Path are Windows paths.
        String n = name.trim();
        if (java.io.File.separatorChar != '\\') {
            n = n.replace('\\', '/');
        }
        return n;
    }

    private static String alternateSpelling(String name) {
        String lower = name.toLowerCase(Locale.ROOT);
        if (lower.equals("betarol.mdb")) {
            return "betarol.dsb";
        }
        if (lower.equals("betarol.dsb")) {
            return "betarol.mdb";
        }
        if (lower.equals("regiszt.mdb")) {
            return "regiszt.dsb";
        }
        if (lower.equals("regiszt.dsb")) {
            return "regiszt.mdb";
        }
        return null;
    }

    private static Path findIgnoringCase(Path dir, String name) {
        if (dir == null || !Files.isDirectory(dir)) {
            return null;
        }
        Path exact = dir.resolve(name);
        if (Files.isRegularFile(exact)) {
            return exact;
        }
        try (Stream<Path> s = Files.list(dir)) {
            return s.filter(p -> p.getFileName().toString().equalsIgnoreCase(name) && Files.isRegularFile(p))
                    .findFirst().orElse(null);
        } catch (IOException e) {
            return null;
        }
    }

    /** Closes every open file (end of the program, change of folder, tests). */
    public static synchronized void closeAll() {
        for (AccessFile f : OPEN.values()) {
            try {
                f.db.close();
            } catch (IOException | RuntimeException ignored) {
                // closing errors are swallowed, as the exit handlers do
            }
            if (f.shared != null) {
                f.shared.close();
            }
        }
        OPEN.clear();
    }

    public Path path() {
        return path;
    }

    public boolean isReadOnly() {
        return readOnly;
    }

    /** The Jackcess database (for the record store and the tools only). */
    public Database jackcess() {
        return db;
    }

    /** A table by name, without regard to case; a missing table raises Jet's error 3078. */
    public Table table(String name) {
        try {
            Table t = db.getTable(name);
            if (t == null) {
                for (String n : db.getTableNames()) {
                    if (n.equalsIgnoreCase(name)) {
                        t = db.getTable(n);
                        break;
                    }
                }
            }
            if (t == null) {
                throw new DaoException(DaoException.UNKNOWN_TABLE,
                        "The Microsoft Jet database engine cannot find the input table or query '" + name
                                + "'. Make sure it exists and that its name is spelled correctly.");
            }
            return t;
        } catch (IOException e) {
            throw io(e);
        }
    }

    /**
     * Runs a batch with writes unsynced and one flush at its end (DESIGN.md: interactive saves stay
     * synced; batches flush once). Nested batches flush at the outermost end. The batch holds the
     * file's write lock throughout, so other processes wait for it.
     */
    public void batch(Runnable work) {
        writing(() -> {
            batchDepth++;
            try {
                if (batchDepth == 1 && !readOnly) {
                    reopen(false);
                }
                work.run();
            } finally {
                batchDepth--;
                if (batchDepth == 0 && !readOnly) {
                    reopen(true); // close() flushes the batch's writes once
                }
            }
        });
    }

    /**
     * Runs a read under the shared file lock, after reloading the file if another process has
     * written it since (Jackcess keeps table metadata in memory).
     */
    public <T> T reading(java.util.function.Supplier<T> work) {
        if (shared == null) {
            return work.get();
        }
        boolean outermost = !shared.holdsAny();
        shared.lockFile(false);
        try {
            if (outermost) {
                refreshIfChanged(); // nested reads were checked by the outer one
            }
            return work.get();
        } finally {
            shared.unlockFile();
        }
    }

    /** Runs a write under the exclusive file lock; the other processes reload the file after it. */
    public void writing(Runnable work) {
        if (shared == null) {
            work.run();
            return;
        }
        shared.lockFile(true);
        writeDepth++;
        try {
            refreshIfChanged();
            work.run();
        } finally {
            writeDepth--;
            try {
                if (writeDepth == 0) {
                    seenCounter = shared.bump();
                }
            } finally {
                shared.unlockFile();
            }
        }
    }

    private void refreshIfChanged() {
        long c = shared.counter();
        if (c != seenCounter) {
            reopen(autoSync);
            seenCounter = c;
        }
    }

    /** The lock of one record for Edit; another process holding it raises Jet's error 3260. */
    void lockRecord(String table, Object rowId) {
        if (shared != null) {
            shared.lockRecord(table, rowId);
        }
    }

    void unlockRecord(String table, Object rowId) {
        if (shared != null) {
            shared.unlockRecord(table, rowId);
        }
    }

    /** Jackcess fixes autoSync at open, so a batch reopens the file unsynced and back. */
    private void reopen(boolean sync) {
        try {
            db.close();
        } catch (IOException e) {
            throw io(e);
        } finally {
            db = openJackcess(path, readOnly, sync);
            autoSync = sync;
            generation++;
        }
    }

    public int generation() {
        return generation;
    }

    /** Turns a Jackcess failure into a DaoException with a Jet-like number. */
    static DaoException io(Exception e) {
        if (e instanceof DaoException d) {
            return d;
        }
        if (e instanceof ConstraintViolationException) {
            return new DaoException(DaoException.DUPLICATE_KEY,
                    "The changes you requested to the table were not successful because they would create"
                            + " duplicate values in the index, primary key, or relationship.", e);
        }
        return new DaoException(DaoException.CANNOT_OPEN, "Disk or network error: " + e.getMessage(), e);
    }
}
