package kerova.trips;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.event.WindowEvent;
import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JTable;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The route master under Xvfb: opened from the main menu, a search, a return row, the country picker and the list. */
class RouteGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "UtakTavolsag", "Honnan", "Budapest", "Hova", "Győr", "TávolságKm", 121.0,
                "HonnanOrszág", "H", "HovaOrszág", "H");
        insert("Kerova.dsb", "UtakTavolsag", "Honnan", "Kőszeg", "Hova", "Szűcsi", "TávolságKm", 212.5,
                "HonnanOrszág", "H", "HovaOrszág", "H");
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void openSearchReturnRowPickerAndListFromTheMainMenu() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "UtTav", "GkUtakTavolsagaTorzsFormX");
        assertThat(onEdt(form::getTitle)).isEqualTo("Utak távolsága törzs - Kerova");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "Budapest".equals(onEdt(text1::getText)) ? text1 : null, "first route");
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(2);

        // the search by start place
        clickMenu(form, "GTKeresHonnan");
        JDialog input = waitFor(() -> dialogTitled("Keresés - honnan"), "input box");
        onEdt(() -> {
            ((JTextComponent) findIn(input, "InputBoxText")).setText("Kő");
            return null;
        });
        clickText(input, "OK");
        waitFor(() -> "Kőszeg".equals(onEdt(text1::getText)) ? text1 : null, "found Kőszeg");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text2")).getText())).isEqualTo("Szűcsi");

        // the return row: from and to swapped, the distance kept, no country codes
        clickNamed(form, "Command5");
        JLabel key = (JLabel) find(form, "Label4");
        waitFor(() -> "3".equals(onEdt(key::getText)) ? key : null, "new row");
        waitFor(() -> "Szűcsi".equals(onEdt(text1::getText)) ? text1 : null, "swapped");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text3")).getText())).isEqualTo("212,5");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text4")).getText())).isEmpty();

        // the country picker opens modally and comes back
        clickNamed(form, "Command2");
        JDialog countries = waitFor(() -> dialogNamed("OrszagokFormX"), "country form");
        SwingUtilities.invokeLater(() -> countries.dispatchEvent(new WindowEvent(countries, WindowEvent.WINDOW_CLOSING)));
        waitFor(() -> onEdt(countries::isShowing) ? null : countries, "country form closed");

        clickNamed(form, "Command1");
        waitFor(() -> onEdt(grid::getRowCount) == 3 ? grid : null, "three rows");
        Thread.sleep(300);
        screenshot("routes-01-return-row");

        // the list: one page, "Mégse" ends it
        clickNamed(form, "Command9");
        JDialog page = waitFor(() -> dialogNamed("UttavNyomFormX"), "list preview");
        waitFor(() -> onEdt(page::isShowing) ? page : null, "preview showing");
        Thread.sleep(500);
        screenshot("routes-02-list");
        clickText(page, "Mégse");
        waitFor(() -> onEdt(page::isShowing) ? null : page, "preview closed");

        clickNamed(form, "Command11");
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("select * from UtakTavolsag order by Sorszám");
        r.MoveLast();
        assertThat(r.get("Honnan")).isEqualTo("Szűcsi");
        assertThat(r.get("Hova")).isEqualTo("Kőszeg");
        assertThat(r.get("TávolságKm")).isEqualTo(212.5);
        assertThat(r.get("HonnanOrszág")).isNull();
        r.Close();
    }
}
