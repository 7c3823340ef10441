package kerova.core.db;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.io.OutputStreamWriter;
import java.io.PrintWriter;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.HashSet;
import java.util.Set;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.TimeUnit;
import kerova.core.vb.Err;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * Two copies of the program on one folder (Part 1.1: "only the record locks of Edit stand between
 * them"): a second JVM holds record locks and writes while this one works on the same file.
 */
class SharedFolderTest {
    @TempDir
    Path dir;

    Process peer;
    PrintWriter toPeer;
    BufferedReader fromPeer;

    @BeforeEach
    void setUp() throws Exception {
        TestDb.create(dir, "Kerova.dsb", TestDb.jarmu());
        TestDb.addRows("Kerova.dsb", "Jarmuvek",
                r -> vehicle(r, 1, "ABC-123"), r -> vehicle(r, 2, "KŐB-456"), r -> vehicle(r, 3, "GYŐ-789"));
        String java = Paths.get(System.getProperty("java.home"), "bin", "java").toString();
        peer = new ProcessBuilder(java, "-cp", System.getProperty("java.class.path"), "kerova.core.db.LockPeer",
                dir.toString()).redirectErrorStream(true).start();
        toPeer = new PrintWriter(new OutputStreamWriter(peer.getOutputStream(), StandardCharsets.UTF_8), true);
        fromPeer = new BufferedReader(new InputStreamReader(peer.getInputStream(), StandardCharsets.UTF_8));
        assertThat(fromPeer.readLine()).isEqualTo("ready");
    }

    @AfterEach
    void tearDown() throws Exception {
        AccessFile.closeAll();
        if (peer.isAlive()) {
            toPeer.println("quit");
            peer.waitFor(10, TimeUnit.SECONDS);
            peer.destroyForcibly();
        }
    }

    private static void vehicle(Recordset r, int id, String plate) {
        r.set("recordID", id);
        r.set("GkFrsz", plate);
        r.set("Típus", "eredeti");
    }

    private String peer(String command) throws Exception {
        toPeer.println(command);
        return fromPeer.readLine();
    }

    private Recordset vehicles() {
        return Database.open("Kerova.dsb").OpenRecordset("select * from Jarmuvek order by recordID");
    }

    @Test
    void aRecordInAnotherCopysEditIsLockedAndFreeAfterItsUpdate() throws Exception {
        assertThat(peer("edit 1")).isEqualTo("ok");
        Recordset rs = vehicles();
        assertThatThrownBy(rs::Edit).isInstanceOf(DaoException.class)
                .extracting(e -> ((DaoException) e).getNumber()).isEqualTo(DaoException.LOCKED);
        Err.resume(rs::Edit);
        assertThat(Err.Number()).isEqualTo(DaoException.LOCKED);
        Err.Clear();
        rs.MoveNext(); // another record is free
        rs.Edit();
        rs.set("Típus", "itt");
        rs.Update();

        assertThat(peer("update túloldal")).isEqualTo("ok");
        rs.MoveFirst(); // read fresh: the other copy's change shows
        assertThat(rs.get("Típus")).isEqualTo("túloldal");
        rs.Edit();
        rs.set("Típus", "végül");
        rs.Update();
        assertThat(peer("edit 1")).isEqualTo("ok"); // and the other copy can take it again
    }

    @Test
    void aDeleteWaitsForNobodyButFailsOnALockedRecord() throws Exception {
        assertThat(peer("edit 3")).isEqualTo("ok");
        Recordset rs = vehicles();
        rs.MoveLast();
        assertThatThrownBy(rs::Delete).isInstanceOf(DaoException.class);
        assertThat(rs.get("GkFrsz")).isEqualTo("GYŐ-789");
        assertThat(peer("update x")).isEqualTo("ok");
        rs.Delete();
        rs.MoveNext();
        assertThat(rs.EOF()).isTrue();
    }

    @Test
    void twoCopiesAddingAtOnceLoseNoRow() throws Exception {
        CompletableFuture<String> other = CompletableFuture.supplyAsync(() -> {
            try {
                return peer("add 300 1000");
            } catch (Exception e) {
                return e.toString();
            }
        });
        Recordset rs = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
        for (int i = 0; i < 300; i++) {
            rs.AddNew();
            rs.set("recordID", 2000 + i);
            rs.set("GkFrsz", "H-" + (2000 + i));
            rs.Update();
        }
        assertThat(other.get(60, TimeUnit.SECONDS)).isEqualTo("ok");
        Recordset all = vehicles();
        Set<Object> ids = new HashSet<>();
        while (!all.EOF()) {
            ids.add(all.get("recordID"));
            all.MoveNext();
        }
        assertThat(ids).hasSize(603).contains(1, 2, 3, 1000, 1299, 2000, 2299);
        assertThat(peer("quit")).isEqualTo("ok");
        AccessFile.closeAll();
        String csv = CompatibilityTest.run("mdb-export", dir.resolve("Kerova.dsb").toString(), "Jarmuvek");
        assertThat(csv.lines().count()).isEqualTo(604);
    }
}
