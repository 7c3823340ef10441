package kerova.oracle;

import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;

/**
 * Command line entry of the oracle: reads and writes Access 2000 files through Jackcess so the
 * engine's tests can compare with an independent implementation. Usage errors and failures print
 * one line on stderr and exit with 2.
 */
public final class Main {
    private Main() {}

    /** A failure that ends the command with one line on stderr and exit status 2. */
    public static final class Failure extends RuntimeException {
        public Failure(String message) {
            super(message);
        }
    }

    static final String USAGE = "usage: jet-oracle dump FILE [TABLE...] | check FILE | write FILE SCRIPT"
            + " | write FILE random SEED N | bench FILE ROWS | codes ... | key ...";

    public static void main(String[] args) {
        System.exit(run(args));
    }

    public static int run(String[] args) {
        // Jackcess logs warnings through java.util.logging; stderr carries only our error line.
        java.util.logging.LogManager.getLogManager().reset();
        if (args.length == 0) {
            return fail(USAGE);
        }
        String[] rest = Arrays.copyOfRange(args, 1, args.length);
        try {
            switch (args[0]) {
                case "dump":
                    if (rest.length < 1) return fail(USAGE);
                    return Dump.run(rest[0], Arrays.copyOfRange(rest, 1, rest.length), stdout());
                case "check":
                    if (rest.length != 1) return fail(USAGE);
                    return Check.run(rest[0], stdout());
                case "write":
                    if (rest.length == 4 && rest[1].equals("random")) {
                        return RandomWriter.run(rest[0], parseLong(rest[2], "SEED"), (int) parseLong(rest[3], "N"));
                    }
                    if (rest.length != 2) return fail(USAGE);
                    return ScriptWriter.run(rest[0], rest[1]);
                case "bench":
                    if (rest.length != 2) return fail(USAGE);
                    return Bench.run(rest[0], (int) parseLong(rest[1], "ROWS"), stdout());
                case "date":
                    return dates(rest, stdout());
                case "codes":
                    return Codes.codes(rest);
                case "key":
                    return Codes.key(rest);
                default:
                    return fail(USAGE);
            }
        } catch (Failure e) {
            return fail(e.getMessage());
        } catch (Exception | StackOverflowError e) {
            return fail(e.getClass().getSimpleName() + ": " + e.getMessage());
        }
    }

    /** `date VALUE...`: a stored date double (0x + 16 hex digits of its bits, or a decimal) as the dump shows it. */
    static int dates(String[] values, PrintStream out) {
        for (String v : values) {
            double d = v.startsWith("0x") ? Double.longBitsToDouble(Long.parseUnsignedLong(v.substring(2), 16))
                    : Double.parseDouble(v);
            out.print(Values.formatDate(com.healthmarketscience.jackcess.impl.ColumnImpl.ldtFromLocalDateDouble(d)) + "\n");
        }
        out.flush();
        return 0;
    }

    static int fail(String message) {
        if (out != null) out.flush();
        System.out.flush();
        System.err.println(message.replace('\n', ' '));
        System.err.flush();
        return 2;
    }

    static long parseLong(String text, String what) {
        try {
            return Long.parseLong(text);
        } catch (NumberFormatException e) {
            throw new Failure(what + " is not a number: " + text);
        }
    }

    /** UTF-8 stdout with "\n" line ends whatever the platform says. */
    static synchronized PrintStream stdout() {
        if (out == null) out = new PrintStream(new java.io.BufferedOutputStream(new java.io.FileOutputStream(java.io.FileDescriptor.out), 1 << 16),
                false, StandardCharsets.UTF_8);
        return out;
    }

    private static PrintStream out;
}
