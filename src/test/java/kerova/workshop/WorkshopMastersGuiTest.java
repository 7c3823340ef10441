package kerova.workshop;

import static kerova.core.form.FormTestBase.insert;
import static kerova.core.form.FormTestBase.rows;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.Globals;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * The mechanics and jobs masters under Xvfb. The service form of Part 6.1 that opens them isn't built,
 * so the program is started and the two forms are opened modally through Forms, as Part 6.1's
 * {@code Command1} and {@code Command2} will; then driven by component names.
 */
class WorkshopMastersGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "SzervizModulSzerelok", "SzerelöNeve", "Kovács Péter", "SzerelöKódja", "K1");
        insert("Kerova.dsb", "SzervizModulSzerelok", "SzerelöNeve", "Szőke Ödön", "SzerelöKódja", "SZ7");
        insert("Kerova.dsb", "SzervizModulSzerelok", "SzerelöNeve", "Nagy Tűző", "SzerelöKódja", "N3");
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    /** Opens a form modally, as a handler of the service form would. */
    static void openModal(String name) {
        SwingUtilities.invokeLater(() -> Forms.run(() -> Forms.get(name).Show(true)));
    }

    @Test
    void pickAMechanicByCodeAndStartAnEmptyJobsMaster() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        assertThat(main).isNotNull();

        openModal("SzerelokFormX");
        JDialog form = waitFor(() -> dialogNamed("SzerelokFormX"), "mechanics form");
        assertThat(onEdt(form::getTitle)).isEqualTo("Szerelők adatai - Kerova");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        JTextComponent text2 = (JTextComponent) find(form, "Text2");
        JTextComponent text3 = (JTextComponent) find(form, "Text3");
        JTable grid = (JTable) find(form, "DBGrid1");
        waitFor(() -> "Kovács Péter".equals(text2.getText()) ? text2 : null, "first mechanic");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(3);
        assertThat(buttonTexts(form)).contains("Új adat", "Töröl", "Vissza");

        // a code that no name begins with finds the mechanic by the exact code
        onEdt(() -> {
            text1.requestFocusInWindow();
            text1.setText("SZ7");
            return null;
        });
        waitFor(() -> "Szőke Ödön".equals(text2.getText()) ? text2 : null, "found by code");
        assertThat(text3.getText()).isEqualTo("SZ7");
        Thread.sleep(300);
        screenshot("workshop62-01-mechanics");

        clickNamed(form, "Command3");
        waitFor(() -> onEdt(form::isShowing) ? null : form, "mechanics form closed");
        assertThat(Globals.PickedMechanicName).isEqualTo("Szőke Ödön");
        assertThat(Globals.PickedMechanicCode).isEqualTo("SZ7");

        // the jobs master on an empty table asks first; "Igen" adds a row
        openModal("MunkakFormX");
        JDialog box = waitFor(() -> messageBox("FIGYELEM!"), "empty question");
        assertThat(messageOf(box)).isEqualTo("Nincs még adat! Visz fel most új adatot?");
        assertThat(buttonTexts(box)).containsExactly("Igen", "Nem");
        assertThat(messageTypeOf(box)).isEqualTo(JOptionPane.PLAIN_MESSAGE);
        Thread.sleep(300);
        screenshot("workshop62-02-jobs-empty");
        clickText(box, "Igen");
        JDialog jobs = waitFor(() -> dialogNamed("MunkakFormX"), "jobs form");
        waitFor(() -> onEdt(jobs::isShowing) ? jobs : null, "jobs showing");
        assertThat(onEdt(jobs::getTitle)).isEqualTo("Munkák törzs - Kerova");
        JTable jobGrid = (JTable) find(jobs, "DBGrid1");
        waitFor(() -> onEdt(jobGrid::getRowCount) == 1 ? jobGrid : null, "new job row");
        assertThat(rows("Kerova.dsb", "SzervizModulMunkak")).hasSize(1);
        clickMenu(jobs.getJMenuBar(), "Kilepes");
        waitFor(() -> onEdt(jobs::isShowing) ? null : jobs, "jobs form closed");
    }
}
