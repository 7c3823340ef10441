package kerova.core.db;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.channels.FileChannel;
import java.nio.channels.FileLock;
import java.nio.channels.OverlappingFileLockException;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.HashMap;
import java.util.Map;

/**
 * What stands between several copies of the program on one folder: a lock file beside each
 * database ({@code NAME.klk}, like Access's .ldb) with operating-system byte-range locks.
 * <ul>
 * <li>byte 0: the file lock: exclusive while a process writes, shared while one reads;</li>
 * <li>bytes 8–15: a change counter, raised after every write, so that the other processes know
 * that their view of the file (Jackcess keeps table metadata in memory) must be reloaded;</li>
 * <li>from byte 2^20 on: record locks of {@code Edit}, one byte a record.</li>
 * </ul>
 * Locks are re-entrant within the process: the program is one thread, and its own Data controls
 * do not lock each other out. Where the lock file can't be made (a read-only folder), nothing is
 * locked: such a folder can't be written anyway.
 */
final class SharedLock {
    private static final long RECORD_BASE = 1L << 20;
    private static final long WAIT_MILLIS = 10_000;

    private final FileChannel channel;
    private FileLock fileLock;
    private boolean fileLockExclusive;
    private int fileLockDepth;
    private final Map<Long, Held> records = new HashMap<>();

    private record Held(FileLock lock, int count) {
    }

    private SharedLock(FileChannel channel) {
        this.channel = channel;
    }

    /** The lock of a database file, or null when no lock file can be made beside it. */
    static SharedLock beside(Path database) {
        Path lockFile = database.resolveSibling(database.getFileName() + ".klk");
        try {
            return new SharedLock(FileChannel.open(lockFile, StandardOpenOption.CREATE, StandardOpenOption.READ,
                    StandardOpenOption.WRITE));
        } catch (IOException | UnsupportedOperationException e) {
            return null;
        }
    }

    /** Takes the file lock (exclusive to write, shared to read), waiting a while for other processes. */
    void lockFile(boolean exclusive) {
        if (fileLockDepth > 0) {
            if (exclusive && !fileLockExclusive) {
                // a write inside a read: upgrade by releasing and taking the exclusive lock
                release(fileLock);
                fileLock = acquire(0, exclusive);
                fileLockExclusive = true;
            }
            fileLockDepth++;
            return;
        }
        fileLock = acquire(0, exclusive);
        fileLockExclusive = exclusive;
        fileLockDepth = 1;
    }

    void unlockFile() {
        if (fileLockDepth == 0) {
            return;
        }
        if (--fileLockDepth == 0) {
            release(fileLock);
            fileLock = null;
        }
    }

    boolean holdsAny() {
        return fileLockDepth > 0;
    }

    boolean holdsExclusive() {
        return fileLockDepth > 0 && fileLockExclusive;
    }

    private FileLock acquire(long position, boolean exclusive) {
        long until = System.currentTimeMillis() + WAIT_MILLIS;
        try {
            while (true) {
                FileLock l = channel.tryLock(position, 1, !exclusive);
                if (l != null) {
                    return l;
                }
                if (System.currentTimeMillis() > until) {
                    throw new DaoException(3218, "Could not update; currently locked.");
                }
                Thread.sleep(20);
            }
        } catch (IOException e) {
            throw new DaoException(3218, "Could not lock file: " + e.getMessage(), e);
        } catch (InterruptedException e) {
            Thread.currentThread().interrupt();
            throw new DaoException(3218, "Could not update; currently locked.");
        }
    }

    private static void release(FileLock l) {
        try {
            if (l != null && l.isValid()) {
                l.release();
            }
        } catch (IOException ignored) {
            // the lock goes with the channel anyway
        }
    }

    /** The change counter as the last writer left it. */
    long counter() {
        ByteBuffer b = ByteBuffer.allocate(8);
        try {
            int n = channel.read(b, 8);
            return n < 8 ? 0 : b.flip().getLong();
        } catch (IOException e) {
            return 0;
        }
    }

    /** Raises the change counter (called at the end of a write, under the exclusive lock). */
    long bump() {
        long next = counter() + 1;
        ByteBuffer b = ByteBuffer.allocate(8).putLong(next).flip();
        try {
            channel.write(b, 8);
            channel.force(false);
        } catch (IOException e) {
            throw new DaoException(3218, "Could not write the lock file: " + e.getMessage(), e);
        }
        return next;
    }

    /** Takes the lock of one record without waiting; another process holding it is Jet's error 3260. */
    void lockRecord(String table, Object rowId) {
        long pos = recordPosition(table, rowId);
        Held h = records.get(pos);
        if (h != null) {
            records.put(pos, new Held(h.lock(), h.count() + 1));
            return;
        }
        FileLock l;
        try {
            l = channel.tryLock(pos, 1, false);
        } catch (IOException | OverlappingFileLockException e) {
            l = null;
        }
        if (l == null) {
            throw new DaoException(DaoException.LOCKED,
                    "Couldn't update; currently locked by another user on another machine.");
        }
        records.put(pos, new Held(l, 1));
    }

    void unlockRecord(String table, Object rowId) {
        long pos = recordPosition(table, rowId);
        Held h = records.get(pos);
        if (h == null) {
            return;
        }
        if (h.count() > 1) {
            records.put(pos, new Held(h.lock(), h.count() - 1));
        } else {
            records.remove(pos);
            release(h.lock());
        }
    }

    private static long recordPosition(String table, Object rowId) {
        long hash = (table.toLowerCase(java.util.Locale.ROOT) + "\u0000" + rowId).hashCode() & 0x7FFFFFFFL;
        return RECORD_BASE + hash;
    }

    void close() {
        for (Held h : records.values()) {
            release(h.lock());
        }
        records.clear();
        release(fileLock);
        fileLock = null;
        fileLockDepth = 0;
        try {
            channel.close();
        } catch (IOException ignored) {
            // closing errors are swallowed
        }
    }
}
