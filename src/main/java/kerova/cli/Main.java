package kerova.cli;

import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.List;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.DaoException;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.vb.Conv;
import kerova.core.vb.VbException;

/**
 * The program (no arguments: the current directory is the company) and its tools:
 * {@code init [--sibling] DIR}, {@code check DIR}, {@code sql FILE "statement"}, {@code demo [DIR]}.
 */
public final class Main {
    private Main() {
    }

    public static void main(String[] args) {
        PrintStream out = new PrintStream(System.out, true, StandardCharsets.UTF_8);
        PrintStream err = new PrintStream(System.err, true, StandardCharsets.UTF_8);
        int code;
        try {
            code = run(args, out, err);
        } catch (VbException e) {
            err.println("hiba " + e.getNumber() + ": " + e.getMessage());
            code = 1;
        } catch (RuntimeException e) {
            err.println("hiba: " + e);
            if (System.getenv("KEROVA_DEBUG") != null) {
                e.printStackTrace(err);
            }
            code = 1;
        }
        if (code >= 0) {
            AccessFile.closeAll();
            System.exit(code);
        }
    }

    /** Runs a command; returns the exit status, or -1 when the program's windows keep it alive. */
    public static int run(String[] args, PrintStream out, PrintStream err) {
        if (args.length == 0) {
            return startProgram(Paths.get("").toAbsolutePath());
        }
        switch (args[0]) {
            case "init":
                return init(args, out, err);
            case "check":
                return check(args, out, err);
            case "sql":
                return sql(args, out, err);
            case "demo":
                return demo(args, out, err);
            case "bench":
                return Bench.run(args, out);
            case "-h":
            case "--help":
            case "help":
                usage(out);
                return 0;
            default:
                err.println("ismeretlen parancs: " + args[0]);
                usage(err);
                return 2;
        }
    }

    private static void usage(PrintStream out) {
        out.println("Használat:");
        out.println("  kerova                      a program az aktuális könyvtár cégadataival");
        out.println("  kerova demo [KÖNYVTÁR]      mintacég létrehozása (ha nincs) és a program indítása");
        out.println("  kerova init [--sibling] KÖNYVTÁR   adatbázisok létrehozása");
        out.println("  kerova check KÖNYVTÁR       hiányzó állományok, táblák, oszlopok listája");
        out.println("  kerova sql ÁLLOMÁNY \"utasítás\"   egy SQL utasítás, eredmény TSV-ben");
    }

    private static int init(String[] args, PrintStream out, PrintStream err) {
        boolean sibling = args.length > 1 && args[1].equals("--sibling");
        int dirArg = sibling ? 2 : 1;
        if (args.length != dirArg + 1) {
            err.println("használat: kerova init [--sibling] KÖNYVTÁR");
            return 2;
        }
        Path dir = Paths.get(args[dirArg]).toAbsolutePath();
        List<String> made = CompanyFolder.init(dir, sibling);
        for (String f : made) {
            out.println("létrehozva: " + dir.resolve(f));
        }
        if (made.isEmpty()) {
            out.println("minden adatbázis megvan: " + dir);
        }
        return 0;
    }

    private static int check(String[] args, PrintStream out, PrintStream err) {
        boolean sibling = args.length > 1 && args[1].equals("--sibling");
        int dirArg = sibling ? 2 : 1;
        if (args.length != dirArg + 1) {
            err.println("használat: kerova check [--sibling] KÖNYVTÁR");
            return 2;
        }
        Path dir = Paths.get(args[dirArg]).toAbsolutePath();
        if (!Files.isDirectory(dir)) {
            err.println("nincs ilyen könyvtár: " + dir);
            return 1;
        }
        List<String> problems = CompanyFolder.check(dir, sibling);
        problems.forEach(out::println);
        if (problems.isEmpty()) {
            out.println("rendben: " + dir);
            return 0;
        }
        return 1;
    }

    private static int sql(String[] args, PrintStream out, PrintStream err) {
        if (args.length != 3) {
            err.println("használat: kerova sql ÁLLOMÁNY \"utasítás\"");
            return 2;
        }
        Path file = Paths.get(args[1]).toAbsolutePath();
        AccessFile.setWorkingFolder(file.getParent());
        try {
            Database db = Database.open(file.getFileName().toString());
            String statement = args[2].trim();
            if (statement.toLowerCase(java.util.Locale.ROOT).startsWith("update")) {
                out.println(db.Execute(statement));
                return 0;
            }
            Recordset rs = db.OpenRecordset(statement);
            printTsv(rs, out);
            return 0;
        } catch (VbException e) {
            err.println("hiba " + e.getNumber() + ": " + e.getMessage());
            return 1;
        } finally {
            AccessFile.closeAll();
        }
    }

    /** Header line, then one line a row; values as the program shows them. */
    static void printTsv(Recordset rs, PrintStream out) {
        out.println(String.join("\t", rs.columnNames()));
        int n = rs.size2();
        StringBuilder line = new StringBuilder();
        for (int i = 0; i < n; i++) {
            Object[] row = rs.peek(i);
            line.setLength(0);
            for (int c = 0; c < rs.FieldCount(); c++) {
                if (c > 0) {
                    line.append('\t');
                }
                line.append(cell(row[c]));
            }
            out.println(line);
        }
    }

    static String cell(Object v) {
        if (v == null) {
            return "";
        }
        String s = Conv.CStr(v);
        return s.replace('\t', ' ').replace('\n', ' ').replace('\r', ' ');
    }

    private static int demo(String[] args, PrintStream out, PrintStream err) {
        Path dir = Paths.get(args.length > 1 ? args[1] : "demo").toAbsolutePath();
        try {
            Class<?> demo = Class.forName("kerova.cli.DemoCompany");
            demo.getMethod("createIfAbsent", Path.class).invoke(null, dir);
        } catch (ClassNotFoundException e) {
            CompanyFolder.init(dir, false);
        } catch (ReflectiveOperationException e) {
            Throwable cause = e.getCause() != null ? e.getCause() : e;
            if (cause instanceof RuntimeException re) {
                throw re;
            }
            throw new DaoException(DaoException.CANNOT_OPEN, cause.toString(), cause);
        }
        out.println("mintacég: " + dir);
        return startProgram(dir);
    }

    private static int startProgram(Path dir) {
        if (java.awt.GraphicsEnvironment.isHeadless()) {
            System.err.println("A programnak grafikus képernyő kell (nincs DISPLAY); a tesztek: ./kerova test");
            return 1;
        }
        AccessFile.setWorkingFolder(dir);
        try {
            Class<?> app = Class.forName("kerova.ui.swing.SwingApp");
            app.getMethod("start", Path.class).invoke(null, dir);
            return -1;
        } catch (ClassNotFoundException e) {
            System.err.println("A program ablakai még nem készültek el.");
            return 1;
        } catch (ReflectiveOperationException e) {
            Throwable cause = e.getCause() != null ? e.getCause() : e;
            System.err.println("hiba: " + cause);
            return 1;
        }
    }
}
