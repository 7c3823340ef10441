package kerova.vehicles;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.AbstractButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JTable;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The vehicle form under Xvfb: opened from the main menu, a search and a new record, by component names. */
class VehicleGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        LocalDateTime later = VbClock.today().plusYears(1);
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "beraktar", "recordID", 1, "BerNev", "Őrségi Szerviz Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "GkVezetoNeve", "Győri Ödön", "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later,
                "PartnerNeve", "Őrségi Szerviz Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "ŰRH-455", "GkTipus", "Ikarus 280",
                "GkVezetoNeve", "Szűts Írisz", "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later);
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void openSearchAndNewRecordFromTheMainMenu() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "Gepkocsik", "GKTorzsFormX");
        assertThat(onEdt(form::getTitle)).isEqualTo("Járművek nyilvántartása törzs Tartosan és Kerova");
        waitFor(() -> main.isVisible() ? null : main, "main window hidden"); // it hides once the form shows
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "ŰRH-455".equals(text1.getText()) ? text1 : null, "last vehicle");
        assertThat(onEdt(() -> find(form, "Valaszt").isVisible())).isFalse();
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(2);

        // the plate search
        clickMenu(form.getJMenuBar(), "FrszKeres");
        JDialog input = waitFor(() -> dialogTitled("Keresés rendszám szerint"), "input box");
        onEdt(() -> {
            ((JTextComponent) findIn(input, "InputBoxText")).setText("KŐ");
            return null;
        });
        clickText(input, "OK");
        waitFor(() -> "KŐB-112".equals(text1.getText()) ? text1 : null, "found KŐB-112");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text5")).getText())).isEqualTo("Győri Ödön");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text13")).getText())).isEqualTo("Őrségi Szerviz Kft.");
        Thread.sleep(300);
        screenshot("vehicles-01-search");

        // a new record: key 3, the plate typed and turned to capitals on leaving
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command3"))::doClick);
        JLabel key = (JLabel) find(form, "Label24");
        waitFor(() -> "3".equals(key.getText()) ? key : null, "new key");
        onEdt(() -> {
            text1.requestFocusInWindow();
            text1.setText("győ-315");
            ((JTextComponent) find(form, "Text2")).setText("Volvo FH űrszelvény");
            return null;
        });
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command4"))::doClick);
        waitFor(() -> onEdt(grid::getRowCount) == 3 ? grid : null, "three rows");
        Thread.sleep(300);
        screenshot("vehicles-02-new-record");

        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command13"))::doClick);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("select * from Jarmuvek order by recordID");
        r.MoveLast();
        assertThat(r.get("recordID")).isEqualTo(3);
        assertThat(r.get("GkTipus")).isEqualTo("Volvo FH űrszelvény");
        assertThat(String.valueOf(r.get("GkFrsz"))).isIn("győ-315", "GYŐ-315");
        r.Close();
    }
}
