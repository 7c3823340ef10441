package kerova.trips;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.text.JTextComponent;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The driver master under Xvfb: opened from the main menu, the quick search, the assigned list, the filter and a delete answered "Nem". */
class DriverGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "Vezetok", "VezetöNeve", "Kőszegi Ödön", "PartnerID", 1, "Munkakör", "gépkocsivezető",
                "LakcimSzékhely", "Kőszeg", "Munkáltató", "Kerekes Fuvarozó Kft.", "AnyjaNeve", "Szűcs Ilona",
                "GépkocsiFrsz", "KŐS-101", "GkID", 1, "Aktiv", false);
        insert("Kerova.dsb", "Vezetok", "VezetöNeve", "Űrös Gyula", "PartnerID", 2, "Aktiv", true);
        insert("Kerova.dsb", "Vezetok", "VezetöNeve", "Bárány Éva", "PartnerID", 3, "Aktiv", false);
        insert("Tartosan.dsb", "VezetokJarmuvei", "VezetöID", 1, "Rendszám", "KŐS-101");
        insert("Tartosan.dsb", "VezetokJarmuvei", "VezetöID", 1, "Rendszám", "GYŐ-202");
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void openSearchFilterAndDeleteAnsweredNoFromTheMainMenu() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "Vezetok", "VezetokTorzsFormX");
        assertThat(onEdt(form::getTitle)).isEqualTo("Járművezető adatai törzs Tartosan");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "Bárány Éva".equals(onEdt(text1::getText)) ? text1 : null, "first driver by name");
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(3);

        // the quick search by name moves the form, and the assigned list follows the driver
        JTextComponent text13 = (JTextComponent) find(form, "Text13");
        onEdt(() -> {
            text13.setText("Kő");
            return null;
        });
        waitFor(() -> "Kőszegi Ödön".equals(onEdt(text1::getText)) ? text1 : null, "found Kőszegi");
        JTable assigned = (JTable) find(form, "DBGrid2");
        waitFor(() -> onEdt(assigned::getRowCount) == 2 ? assigned : null, "two assigned vehicles");
        JLabel label18 = (JLabel) find(form, "Label18");
        assertThat(onEdt(label18::getText)).isEqualTo("KŐS-101");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text12")).getText())).isEqualTo("Szűcs Ilona");

        // "Csak aktívak": Űrös, whose "NEM aktív" box is ticked, goes from the list
        clickNamed(form, "Command6");
        waitFor(() -> onEdt(grid::getRowCount) == 2 ? grid : null, "active drivers only");
        Thread.sleep(300);
        screenshot("drivers-01-active");

        // the delete asks; "Nem" keeps the driver
        clickNamed(form, "Command9");
        JDialog box = waitFor(() -> messageBox("FIGYELEM! Végleges törlés!"), "delete question");
        assertThat(messageOf(box)).isEqualTo("Valóban véglegesen törli a kijelölt adatsort?");
        assertThat(messageTypeOf(box)).isEqualTo(JOptionPane.QUESTION_MESSAGE);
        assertThat(buttonTexts(box)).containsExactly("Igen", "Nem");
        Thread.sleep(300);
        screenshot("drivers-02-delete-question");
        clickText(box, "Nem");
        waitFor(() -> onEdt(box::isShowing) ? null : box, "question closed");

        clickNamed(form, "Command10");
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
        assertThat(FormTestBase.column("Kerova.dsb", "Vezetok", "VezetöNeve"))
                .containsExactly("Kőszegi Ödön", "Űrös Gyula", "Bárány Éva");
        assertThat(FormTestBase.column("Tartosan.dsb", "VezetokJarmuvei", "Rendszám"))
                .containsExactly("KŐS-101", "GYŐ-202");
    }
}
