package kerova.core.vb;

import java.util.function.Supplier;

/**
 * VB's Err object. Handlers run "with errors resumed" through {@link #resume}: a failing call
 * records its number here and the handler goes on; it tests {@link #Number()} and clears it.
 * The program has one thread (the event thread), so one global state is what VB had.
 */
public final class Err {
    private static int number;
    private static String description = "";

    private Err() {
    }

    public static int Number() {
        return number;
    }

    public static String Description() {
        return description;
    }

    public static void Clear() {
        number = 0;
        description = "";
    }

    /** Records an error as if it had been raised and resumed. */
    public static void set(int n, String desc) {
        number = n;
        description = desc == null ? "" : desc;
    }

    /** Runs an action with errors resumed: a VbException is recorded, not thrown. */
    public static void resume(Runnable action) {
        try {
            action.run();
        } catch (VbException e) {
            set(e.getNumber(), e.getMessage());
        }
    }

    /** Runs a function with errors resumed; on error the fallback is returned (VB leaves it Empty). */
    public static <T> T resume(Supplier<T> action, T fallback) {
        try {
            return action.get();
        } catch (VbException e) {
            set(e.getNumber(), e.getMessage());
            return fallback;
        }
    }
}
