package kerova.trips;

import static kerova.core.form.FormTestBase.insert;
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
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * Part 3.5 under Xvfb: the purposes opened from the main menu, a new purpose saved; the passenger
 * form, which only the trip form of Part 3.1 opens, shown through Forms without and with a group id.
 */
class PurposeGuiTest {
    static final String GROUP = "2026112336930,5";

    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        TripGlobals.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "MegnevezesTorzs", "Megnevezés", "Őrzés-védelem");
        insert("Kerova.dsb", "MegnevezesTorzs", "Megnevezés", "Fűtőolaj szállítása");
        insert("Kerova.dsb", "MegnevezesTorzs", "Megnevezés", "Áruszállítás");
        insert("Kerova.dsb", "UtakSzallitottSzemely", "SzállitottSzemélyNeve", "Győri Ödön",
                "UtakCsoportAzonosito", GROUP);
    }

    @AfterEach
    void tearDown() throws Exception {
        TripGlobals.reset();
        closeAll();
    }

    @Test
    void purposesFromTheMainMenuTakeANewRowAndSaveIt() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "Megnevezesek", "MegnevezesTorzsFormX");
        assertThat(onEdt(form::getTitle)).isEqualTo("Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "Áruszállítás".equals(onEdt(text1::getText)) ? text1 : null, "first purpose in order");
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(3);

        // "Új adat", a name, "OK-Mentés": the row is stored and the cursor comes back to it
        clickMenu(form, "UjAdat");
        waitFor(() -> onEdt(grid::getRowCount) == 4 ? grid : null, "new row");
        waitFor(() -> onEdt(text1::getText).isEmpty() ? text1 : null, "empty new row");
        onEdt(() -> {
            text1.setText("Ügyfél szállítása");
            return null;
        });
        clickNamed(form, "Command1");
        waitFor(() -> "Ügyfél szállítása".equals(onEdt(() -> String.valueOf(grid.getValueAt(3, 0)))) ? grid : null,
                "saved in order");
        assertThat(onEdt(() -> text1.getText())).isEqualTo("Ügyfél szállítása");
        Thread.sleep(300);
        screenshot("purposes-01-saved");

        clickMenu(form, "Kilepes");
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
        assertThat(FormTestBase.column("Kerova.dsb", "MegnevezesTorzs", "Megnevezés"))
                .containsExactly("Őrzés-védelem", "Fűtőolaj szállítása", "Áruszállítás", "Ügyfél szállítása");
    }

    @Test
    void thePassengerFormLeavesWithoutAGroupAndShowsTheGroupWithOne() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main");
        // as the trip form would open it, with no group chosen
        SwingUtilities.invokeLater(() -> Forms.get("UtakSzallitottSzemelyekFormX").Show(true));
        confirm("FIGYELEM! Kezelői hiba! Válasszon utat először!",
                "Csoportazonosító nélkül nem lehet személyt felvinni!", JOptionPane.ERROR_MESSAGE,
                "passengers-01-no-group", "OK");
        waitFor(() -> dialogNamed("UtakSzallitottSzemelyekFormX") == null ? main : null, "form left");

        // with the group id of the trip form's group
        TripGlobals.CurrentGroupID = GROUP;
        SwingUtilities.invokeLater(() -> Forms.get("UtakSzallitottSzemelyekFormX").Show(true));
        JDialog form = waitFor(() -> dialogNamed("UtakSzallitottSzemelyekFormX"), "passenger form");
        assertThat(onEdt(form::getTitle)).isEqualTo("Szállított személyek felvitele - Kerova");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "Győri Ödön".equals(onEdt(text1::getText)) ? text1 : null, "the group's passenger");
        Thread.sleep(300);
        screenshot("passengers-02-group");
        clickMenu(form, "Kilepes");
        waitFor(() -> dialogNamed("UtakSzallitottSzemelyekFormX") == null ? main : null, "form closed");
    }
}
