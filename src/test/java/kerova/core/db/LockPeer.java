package kerova.core.db;

import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;

/**
 * A second copy of the program for {@link SharedFolderTest}: a separate JVM on the same folder,
 * driven by lines on standard input, answering "ok" or "err NUMBER" for each.
 */
public final class LockPeer {
    private LockPeer() {
    }

    public static void main(String[] args) throws Exception {
        AccessFile.setWorkingFolder(Path.of(args[0]));
        BufferedReader in = new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8));
        Recordset editing = null;
        String line;
        System.out.println("ready");
        System.out.flush();
        while ((line = in.readLine()) != null) {
            String[] w = line.split(" ");
            try {
                switch (w[0]) {
                    case "edit" -> {
                        editing = Database.open("Kerova.dsb")
                                .OpenRecordset("select * from Jarmuvek where recordID = " + w[1]);
                        editing.Edit();
                    }
                    case "update" -> {
                        editing.set("Típus", w[1]);
                        editing.Update();
                    }
                    case "add" -> {
                        Recordset rs = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
                        int n = Integer.parseInt(w[1]);
                        int start = Integer.parseInt(w[2]);
                        for (int i = 0; i < n; i++) {
                            rs.AddNew();
                            rs.set("recordID", start + i);
                            rs.set("GkFrsz", "P-" + (start + i));
                            rs.Update();
                        }
                        rs.Close();
                    }
                    case "quit" -> {
                        AccessFile.closeAll();
                        System.out.println("ok");
                        return;
                    }
                    default -> throw new IllegalArgumentException(line);
                }
                System.out.println("ok");
            } catch (DaoException e) {
                System.out.println("err " + e.getNumber());
            }
            System.out.flush();
        }
    }
}
