package kerova.oracle;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class OracleTest {

    @Test
    void textNotationRoundTripsAndExpandsTheMemoShorthand() {
        String tricky = "a\\b\tc\nd\re\\t";
        assertEquals("a\\\\b\\tc\\nd\\re\\\\t", Values.escape(tricky));
        assertEquals(tricky, Values.unescape(Values.escape(tricky)));
        assertEquals("őabőabő", Values.parseText("memo:7:őab"));
        assertEquals("memo:x:y", Values.parseText("memo:x:y"));
    }

    @Test
    void datesFollowTheStoredDoubleConvention() {
        // Negative days count back from 1899-12-30 while the fraction still runs forward.
        String[] expected = {"1899-12-30 00:00:00.000", "1899-12-29 12:00:00.000", "1899-12-30 06:00:00.000",
                "1899-12-30 00:00:00.062", "2023-03-16 00:00:00.000"};
        double[] stored = {0.0, -1.5, -0.25, 0.0625 / 86400, 45000.999999999};
        for (int i = 0; i < stored.length; i++) {
            assertEquals(expected[i], Values.formatDate(
                    com.healthmarketscience.jackcess.impl.ColumnImpl.ldtFromLocalDateDouble(stored[i])));
        }
    }

    @Test
    void scriptWrittenFileDumpsAndChecks(@TempDir Path dir) throws Exception {
        Path script = dir.resolve("s.txt");
        Files.writeString(script, String.join("\n",
                "new",
                "table\tT",
                "column\tId\tLONG\tauto",
                "column\tNev\tTEXT\t20",
                "column\tMegj\tMEMO",
                "column\tWhen\tSHORT_DATE_TIME",
                "index\tPrimaryKey\tprimary\tId",
                "index\tNev\tunique\t-Nev",
                "end",
                "insert\tT\t\\N\tÁrvíz\t\\N\t1899-12-29 18:00",
                "insert\tT\t\\N\tb\\tc\tx\t2024-01-02",
                "update\tT\tNev\tÁrvíz\tMegj\tmemo:5000:ű",
                "delete\tT\tId\t2",
                "insert\tT\t\\N\tűr\t\\N\t\\N"), StandardCharsets.UTF_8);
        String file = dir.resolve("t.mdb").toString();
        assertEquals(0, ScriptWriter.run(file, script.toString()));

        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        assertEquals(0, Dump.run(file, new String[0], new PrintStream(bytes, true, StandardCharsets.UTF_8)));
        String expected = "TABLE T\nCOLUMN Id\tLONG\t4\nCOLUMN Nev\tTEXT\t40\nCOLUMN Megj\tMEMO\t0\n"
                + "COLUMN When\tSHORT_DATE_TIME\t8\nINDEX Nev\t-Nev\tunique\nINDEX PrimaryKey\tId\tprimary\n"
                + "ROW 1\tÁrvíz\t" + "ű".repeat(5000) + "\t1899-12-29 18:00:00.000\n"
                + "ROW 3\tűr\t\\N\t\\N\nEND 2\n";
        assertEquals(expected, bytes.toString(StandardCharsets.UTF_8));

        bytes.reset();
        assertEquals(0, Check.run(file, new PrintStream(bytes, true, StandardCharsets.UTF_8)));
        assertEquals("OK\n", bytes.toString(StandardCharsets.UTF_8));
    }
}
