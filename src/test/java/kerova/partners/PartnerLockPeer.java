package kerova.partners;

import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import kerova.core.db.AccessFile;
import kerova.core.db.Database;
import kerova.core.db.Recordset;

/**
 * A second copy of the program for the lock test of Part 4.1: a separate JVM on the same folder that
 * holds the Edit lock of one partner row ("edit ID") until told "quit"; it answers "ok" to each line.
 */
public final class PartnerLockPeer {
    private PartnerLockPeer() {
    }

    public static void main(String[] args) throws Exception {
        AccessFile.setWorkingFolder(Path.of(args[0]));
        BufferedReader in = new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8));
        Recordset editing = null;
        System.out.println("ready");
        System.out.flush();
        String line;
        while ((line = in.readLine()) != null) {
            String[] w = line.split(" ");
            if (w[0].equals("edit")) {
                editing = Database.open("Kerova.dsb").OpenRecordset("select * from beraktar where recordID = " + w[1]);
                editing.Edit();
            } else if (w[0].equals("quit")) {
                if (editing != null) {
                    editing.CancelUpdate();
                }
                AccessFile.closeAll();
                System.out.println("ok");
                return;
            }
            System.out.println("ok");
            System.out.flush();
        }
    }
}
