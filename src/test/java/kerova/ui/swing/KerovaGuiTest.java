package kerova.ui.swing;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.event.WindowEvent;
import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.AbstractButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.SwingUtilities;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.TestVehicleForm;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Drives the real windows under Xvfb by component name, and saves screenshots under target/screenshots. */
class KerovaGuiTest {
    private static final String INSPECTION = "Van olyan jármű, aminek a műszaki vizsgája aktuális!";

    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        LocalDateTime today = VbClock.today();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insertValues("Torzsek.dsb", "VizsgaFigyelmeztetoNap", 15, 0, 0, 0, 0, 10000, 15000, 20000, 60000, 90000);
        insert("parameter.dsb", "Egyebek", "Napidíj", 4500.0, "NapidíjDevizanem", "Ft");
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "GkVezetoNeve", "Győri Ödön", "MuszakiVizsgaDatum", today.minusDays(40));
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "ŰRH-455", "GkTipus", "Ikarus 280",
                "GkVezetoNeve", "Szűts Írisz", "MuszakiVizsgaDatum", today.minusDays(20));
        insert("Kerova.dsb", "Jarmuvek", "recordID", 3, "GkFrsz", "ABC-123", "GkTipus", "Opel Astra",
                "MuszakiVizsgaDatum", today.plusDays(300));
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    // ---------------------------------------------------------------- the test

    @Test
    void startRemindersMenusAndCloseBox() throws Exception {
        SwingApp.start(dir, exits::incrementAndGet);
        Forms.register("GKTorzsFormX", TestVehicleForm::new);
        // the partner form's exit check (Part 4.1) is PartnerGuiTest's concern
        Forms.register("BeraktarozokFormX", () -> new kerova.core.form.StandInForm("BeraktarozokFormX"));

        // the reminder comes first, with its text and title, as a modal box
        JDialog box = confirmMessage("FIGYELEM!", INSPECTION, "01-reminder");
        assertThat(box.isModal()).isTrue();

        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> main.isShowing() ? main : null, "main window showing");
        JTable grid = (JTable) find(main, "DBGrid1");
        waitFor(() -> onEdt(() -> grid.isShowing() && grid.getRowCount() == 2) ? grid : null, "warned grid");
        assertThat(onEdt(() -> grid.getValueAt(0, 0))).isEqualTo("KŐB-112");
        assertThat(onEdt(() -> grid.getValueAt(1, 0))).isEqualTo("ŰRH-455");
        assertThat(onEdt(() -> grid.getColumnCount())).isEqualTo(29);
        assertThat(onEdt(() -> ((JLabel) findIn(main, "Label1")).getText()))
                .isEqualTo("Kerova Jármű-, Szerviz- és Útnyilvántartó Adatbázis");
        assertThat(onEdt(main::getTitle)).startsWith("Kerova");
        Thread.sleep(300);
        screenshot("02-main");

        // every menu entry opens its window; the main window hides and comes back with the reminders
        String[][] entries = {
            {"UtTav", "GkUtakTavolsagaTorzsFormX"}, {"Vezetok", "VezetokTorzsFormX"},
            {"GKBesz", "BeraktarozokFormX"}, {"Megnevezesek", "MegnevezesTorzsFormX"},
            {"Uzemelteto", "UzemeltetokForm"}, {"AlkatreszTorzse", "cikkszamform"},
            {"ParameterAdat", "ParameterFormX"}, {"KerovatUj", "UtNyilvantartasFormX"},
            {"KMNyt", "KilometerNytFormX"}, {"GKSzamlaBe", "UzemanyagSzamlaFormX"},
            {"SzervizModul", "SzervizmodulFormX"}, {"Lekerdezes", "LekerdezesFormX"},
            {"UaKtsg", "KerovaForm"}, {"AdatSzerviz", "KerovaSzervizFormX"},
            {"Kezik", "KerovaFelhasznaloiKezikonyvForm"},
        };
        int n = 0;
        for (String[] e : entries) {
            clickMenu(main, e[0]);
            JDialog form = waitFor(() -> dialogNamed(e[1]), e[1]);
            // a form that is built (a Part of its own) is tested by its Part's GUI test; here it only opens
            if (onEdt(() -> Forms.get(e[1]) instanceof kerova.core.form.StandInForm)) {
                assertThat(onEdt(form::getTitle)).isEqualTo(e[1]);
                assertThat(onEdt(() -> ((JLabel) findIn(form, "Label1")).getText()))
                        .isEqualTo("Ez a modul még nem készült el.");
            }
            boolean stays = e[1].equals("KerovaForm") || e[1].equals("KerovaSzervizFormX");
            assertThat(onEdt(main::isVisible)).as(e[1]).isEqualTo(stays);
            if (e[1].equals("KerovaForm")) {
                assertThat(onEdt(main::isEnabled)).isFalse();
            }
            if (n++ < 2 || stays) {
                Thread.sleep(200);
                screenshot(String.format("03-menu-%s", e[1]));
            }
            if (n == 1) {
                // the stand-in's own button closes it
                AbstractButton exit = (AbstractButton) find(form, "Kilepes");
                SwingUtilities.invokeLater(exit::doClick);
            } else {
                // the close box takes the form's exit handler
                SwingUtilities.invokeLater(() -> form.dispatchEvent(new WindowEvent(form, WindowEvent.WINDOW_CLOSING)));
            }
            confirmMessage("FIGYELEM!", INSPECTION, null);
            waitFor(() -> onEdt(() -> main.isShowing() && main.isEnabled()) ? main : null, "main back after " + e[1]);
        }

        // the close box of a form takes its exit handler: the vehicle form's mandatory check asks
        insert("Kerova.dsb", "Jarmuvek", "recordID", 4, "GkFrsz", "NEW-001");
        clickMenu(main, "Gepkocsik");
        JDialog vehicles = waitFor(() -> dialogNamed("TestVehicleForm"), "vehicle form");
        assertThat(onEdt(main::isVisible)).isFalse();
        Thread.sleep(200);
        screenshot("04-vehicle-form");
        SwingUtilities.invokeLater(() -> vehicles.dispatchEvent(new WindowEvent(vehicles, WindowEvent.WINDOW_CLOSING)));
        JDialog question = waitFor(() -> messageBox(TestVehicleForm.MANDATORY_TITLE), "exit question");
        assertThat(messageOf(question)).isEqualTo(TestVehicleForm.MANDATORY_TEXT);
        assertThat(buttonTexts(question)).containsExactly("Igen", "Nem");
        Thread.sleep(200);
        screenshot("05-close-box-question");
        clickText(question, "Igen");
        confirmMessage("FIGYELEM!", INSPECTION, null);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back after the vehicle form");
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
        assertThat(r.size2()).isEqualTo(3);
        r.Close();

        // Kilepes ends the program through the exit hook
        clickMenu(main, "Kilepes");
        waitFor(() -> exits.get() == 1 ? exits : null, "exit");
        assertThat(onEdt(main::isDisplayable)).isFalse();
    }

    // ---------------------------------------------------------------- helpers

    private static JDialog confirmMessage(String title, String text, String shot) throws Exception {
        return confirm(title, text, JOptionPane.WARNING_MESSAGE, shot, "OK");
    }
}
