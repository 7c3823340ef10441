package kerova.oracle;

import java.io.File;
import java.io.PrintStream;
import java.lang.reflect.Field;
import java.lang.reflect.Method;
import java.math.BigDecimal;
import java.nio.charset.StandardCharsets;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

import com.healthmarketscience.jackcess.ColumnBuilder;
import com.healthmarketscience.jackcess.DataType;
import com.healthmarketscience.jackcess.Database;
import com.healthmarketscience.jackcess.DatabaseBuilder;
import com.healthmarketscience.jackcess.DateTimeType;
import com.healthmarketscience.jackcess.IndexBuilder;
import com.healthmarketscience.jackcess.Table;
import com.healthmarketscience.jackcess.TableBuilder;
import com.healthmarketscience.jackcess.impl.IndexData;
import com.healthmarketscience.jackcess.impl.IndexImpl;

/**
 * Index keys as the reference library writes them, for the engine's tests and for generating the
 * engine's table of General sort order character codes.
 *
 * <pre>
 * codes [FROM-TO ...]     one line per character (hex ranges, default: see DEFAULT_RANGES):
 *                         CODE TYPE INLINE EXTRA UNPRINT MODIFIER CRAZY
 *                         CODE: 4 hex digits; TYPE: the handler class letter (S simple,
 *                         I international, U unprintable, P unprintable-ext, Z international-ext,
 *                         G significant, X ignored); byte fields as hex or "-" when absent;
 *                         MODIFIER and CRAZY: one hex byte (00 when none).
 * key SPEC VALUE...       one line per key: the hex of the entry bytes (without row id), or
 *                         "ERR message". SPEC is a comma-separated list of key columns
 *                         TYPE[:asc|:desc][:pN][:sN] with TYPE one of boolean byte integer long
 *                         currency single double datetime text guid binary numeric (pN/sN:
 *                         precision and scale of numeric). The VALUEs are taken one per key column,
 *                         key after key. "\N" is null; texts may use \\uXXXX and \\\\ escapes;
 *                         datetime is an ISO local date-time; binary is hex; guid "{...}".
 * </pre>
 */
public final class Codes {

    private Codes() {}

    /** Latin-1, Latin Extended-A/B, IPA, spacing modifiers, combining marks, general
     *  punctuation, currency symbols, letterlike symbols and number forms. */
    static final String[] DEFAULT_RANGES = {"0000-036F", "2000-20CF", "2100-218F"};

    private static final String PKG = "com.healthmarketscience.jackcess.impl.";

    public static int codes(String[] args) {
        try {
            String[] ranges = args.length > 0 ? args : DEFAULT_RANGES;
            Class<?> codesClass = Class.forName(PKG + "GeneralLegacyIndexCodes");
            Object instance = field(codesClass, "GEN_LEG_INSTANCE").get(null);
            Method handlerOf = codesClass.getDeclaredMethod("getCharHandler", char.class);
            handlerOf.setAccessible(true);
            Class<?> handlerClass = Class.forName(PKG + "GeneralLegacyIndexCodes$CharHandler");
            Method type = method(handlerClass, "getType");
            Method inline = method(handlerClass, "getInlineBytes");
            Method extra = method(handlerClass, "getExtraBytes");
            Method unprint = method(handlerClass, "getUnprintableBytes");
            Method modifier = method(handlerClass, "getExtraByteModifier");
            Method crazy = method(handlerClass, "getCrazyFlag");
            Class<?> typeClass = Class.forName(PKG + "GeneralLegacyIndexCodes$Type");
            Method prefix = method(typeClass, "getPrefixCode");

            PrintStream out = new PrintStream(System.out, false, StandardCharsets.US_ASCII);
            for (String range : ranges) {
                String[] ends = range.split("-");
                int from = Integer.parseInt(ends[0], 16);
                int to = Integer.parseInt(ends[ends.length - 1], 16);
                for (int c = from; c <= to; ++c) {
                    if (Character.isSurrogate((char) c)) {
                        continue;  // no fixed code: the library refuses them
                    }
                    Object h = handlerOf.invoke(instance, (char) c);
                    out.printf("%04X %s %s %s %s %02X %02X%n", c,
                            prefix.invoke(type.invoke(h)),
                            hex((byte[]) inline.invoke(h)), hex((byte[]) extra.invoke(h)),
                            hex((byte[]) unprint.invoke(h)),
                            ((Byte) modifier.invoke(h)) & 0xFF, ((Byte) crazy.invoke(h)) & 0xFF);
                }
            }
            out.flush();
            return 0;
        } catch (Exception e) {
            System.err.println("codes: " + e);
            return 1;
        }
    }

    private static Field field(Class<?> c, String name) throws NoSuchFieldException {
        Field f = c.getDeclaredField(name);
        f.setAccessible(true);
        return f;
    }

    private static Method method(Class<?> c, String name) throws NoSuchMethodException {
        Method m = c.getDeclaredMethod(name);
        m.setAccessible(true);
        return m;
    }

    static String hex(byte[] bytes) {
        if (bytes == null) {
            return "-";
        }
        StringBuilder sb = new StringBuilder();
        for (byte b : bytes) {
            sb.append(String.format("%02X", b & 0xFF));
        }
        return sb.length() == 0 ? "-" : sb.toString();
    }

    /** One key column of a `key` request. */
    private static final class Spec {
        String type;
        boolean ascending = true;
        int precision = 18;
        int scale = 0;
    }

    public static int key(String[] args) {
        if (args.length < 1) {
            System.err.println("usage: key TYPE[:asc|:desc][,TYPE...] VALUE...");
            return 2;
        }
        File file = null;
        try {
            List<Spec> specs = new ArrayList<>();
            for (String s : args[0].split(",")) {
                Spec spec = new Spec();
                String[] parts = s.split(":");
                spec.type = parts[0].toLowerCase(Locale.ROOT);
                for (int i = 1; i < parts.length; ++i) {
                    String p = parts[i].toLowerCase(Locale.ROOT);
                    if (p.equals("asc")) spec.ascending = true;
                    else if (p.equals("desc")) spec.ascending = false;
                    else if (p.startsWith("p")) spec.precision = Integer.parseInt(p.substring(1));
                    else if (p.startsWith("s")) spec.scale = Integer.parseInt(p.substring(1));
                    else throw new IllegalArgumentException("bad column option " + p);
                }
                specs.add(spec);
            }
            int n = specs.size();
            if ((args.length - 1) % n != 0) {
                throw new IllegalArgumentException("value count is not a multiple of " + n);
            }

            file = File.createTempFile("jet-oracle-key", ".mdb");
            file.delete();
            try (Database db = new DatabaseBuilder(file)
                    .setFileFormat(Database.FileFormat.V2000).create()) {
                db.setDateTimeType(DateTimeType.LOCAL_DATE_TIME);
                TableBuilder tb = new TableBuilder("K");
                IndexBuilder ib = new IndexBuilder("ix");
                for (int i = 0; i < n; ++i) {
                    Spec spec = specs.get(i);
                    ColumnBuilder cb = new ColumnBuilder("c" + i, dataType(spec.type));
                    if (spec.type.equals("text")) cb.setLengthInUnits(255);
                    if (spec.type.equals("binary")) cb.setLength(255);
                    if (spec.type.equals("numeric")) cb.setPrecision(spec.precision).setScale(spec.scale);
                    tb.addColumn(cb);
                    ib.addColumns(spec.ascending, "c" + i);
                }
                tb.addIndex(ib);
                Table table = tb.toTable(db);
                IndexData data = ((IndexImpl) table.getIndex("ix")).getIndexData();
                for (IndexData.ColumnDescriptor cd : data.getColumns()) {
                    String kind = cd.getClass().getSimpleName();
                    if (kind.contains("Text") && !kind.equals("GenLegTextColumnDescriptor")) {
                        throw new IllegalStateException("text column is not in the legacy General order: " + kind);
                    }
                }
                Method create = IndexData.class.getDeclaredMethod("createEntryBytes", Object[].class);
                create.setAccessible(true);

                PrintStream out = new PrintStream(System.out, false, StandardCharsets.US_ASCII);
                for (int k = 1; k < args.length; k += n) {
                    try {
                        Object[] row = new Object[n];
                        for (int i = 0; i < n; ++i) {
                            row[i] = parseValue(specs.get(i).type, args[k + i]);
                        }
                        byte[] entry = (byte[]) create.invoke(data, (Object) row);
                        out.println(entry.length == 0 ? "" : hex(entry));
                    } catch (Exception e) {
                        Throwable cause = e.getCause() != null ? e.getCause() : e;
                        out.println("ERR " + cause.toString().replace('\n', ' '));
                    }
                }
                out.flush();
            }
            return 0;
        } catch (Exception e) {
            System.err.println("key: " + e);
            return 1;
        } finally {
            if (file != null) {
                file.delete();
            }
        }
    }

    private static DataType dataType(String type) {
        switch (type) {
            case "boolean": return DataType.BOOLEAN;
            case "byte": return DataType.BYTE;
            case "integer": return DataType.INT;
            case "long": return DataType.LONG;
            case "currency": return DataType.MONEY;
            case "single": return DataType.FLOAT;
            case "double": return DataType.DOUBLE;
            case "datetime": return DataType.SHORT_DATE_TIME;
            case "text": return DataType.TEXT;
            case "guid": return DataType.GUID;
            case "binary": return DataType.BINARY;
            case "numeric": return DataType.NUMERIC;
            default: throw new IllegalArgumentException("unknown column type " + type);
        }
    }

    private static Object parseValue(String type, String v) {
        if (v.equals("\\N")) {
            return null;
        }
        switch (type) {
            case "boolean": return Boolean.parseBoolean(v);
            case "byte": return Integer.parseInt(v);
            case "integer": return Short.parseShort(v);
            case "long": return Integer.parseInt(v);
            case "currency":
            case "numeric": return new BigDecimal(v);
            case "single": return Float.parseFloat(v);
            case "double": return Double.parseDouble(v);
            case "datetime": return LocalDateTime.parse(v);
            case "text": return unescape(v);
            case "guid": return v;
            case "binary": return unhex(v);
            default: throw new IllegalArgumentException("unknown column type " + type);
        }
    }

    private static String unescape(String v) {
        StringBuilder sb = new StringBuilder();
        for (int i = 0; i < v.length(); ++i) {
            char c = v.charAt(i);
            if (c == '\\' && i + 1 < v.length()) {
                char e = v.charAt(i + 1);
                if (e == '\\') {
                    sb.append('\\');
                    ++i;
                    continue;
                }
                if (e == 'u' && i + 6 <= v.length()) {
                    sb.append((char) Integer.parseInt(v.substring(i + 2, i + 6), 16));
                    i += 5;
                    continue;
                }
            }
            sb.append(c);
        }
        return sb.toString();
    }

    private static byte[] unhex(String v) {
        byte[] b = new byte[v.length() / 2];
        for (int i = 0; i < b.length; ++i) {
            b[i] = (byte) Integer.parseInt(v.substring(2 * i, 2 * i + 2), 16);
        }
        return b;
    }
}
