package kerova.partners;

import static kerova.core.form.FormTestBase.insert;
import static kerova.core.form.FormTestBase.rows;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.stream.Collectors;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.text.JTextComponent;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * The country form under Xvfb. The main menu has no entry of its own for it: it is opened as the route
 * master's country picker (main menu "UtTav", then the route form's "Országjel törzs", Part 3.3), driven by
 * component names, and hands a row back to that form.
 */
class CountryGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "UtakTavolsag", "Honnan", "Győr", "Hova", "Kőszeg", "TávolságKm", 98.0,
                "HonnanOrszág", "H", "HovaOrszág", "H");
        insert("betarol.mdb", "Orszagjel", "Országjel", "H", "Ország", "Magyarország");
        insert("betarol.mdb", "Orszagjel", "Országjel", "A", "Ország", "Ausztria");
        insert("betarol.mdb", "Orszagjel", "Országjel", "D", "Ország", "Németország");
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    static List<String> table(String db, String name) {
        return rows(db, name).stream().map(r -> r[0] + "|" + r[1]).collect(Collectors.toList());
    }

    @Test
    void pickACountryForARouteFromTheMainMenu() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog route = openFromMenu(main, "UtTav", "GkUtakTavolsagaTorzsFormX");
        clickNamed(route, "Command2");
        JDialog form = waitFor(() -> dialogNamed("OrszagokFormX"), "country form");
        assertThat(onEdt(form::getTitle)).isEqualTo("Jelzés- és ország törzs");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        JTextComponent text2 = (JTextComponent) find(form, "Text2");
        JTable grid = (JTable) find(form, "DBGrid1");
        waitFor(() -> "H".equals(text1.getText()) ? text1 : null, "first country");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(3);

        // a new country, typed and saved
        clickNamed(form, "Command2");
        waitFor(() -> onEdt(grid::getRowCount) == 4 && text1.getText().isEmpty() ? grid : null, "new row");
        onEdt(() -> {
            text1.requestFocusInWindow();
            text1.setText("TR");
            text2.setText("Törökország");
            return null;
        });
        clickNamed(form, "Command1");
        waitFor(() -> "Törökország".equals(String.valueOf(grid.getValueAt(3, 1))) ? grid : null, "saved row");

        // archived once without a question, the second time the question; "Nem" doubles the archive
        clickNamed(form, "Command4");
        waitFor(() -> table("parameter.dsb", "OrszagjelArchiv").size() == 4 ? grid : null, "archive");
        clickNamed(form, "Command4");
        JDialog box = waitFor(() -> messageBox("FIGYELEM! VISSZAVONHATATLAN TÖRLÉS vagy adathozzáfűzés!"),
                "archive question");
        assertThat(messageOf(box)).isEqualTo("Törli véglegesen az archív táblában az adatokat?");
        assertThat(buttonTexts(box)).containsExactly("Igen", "Nem");
        assertThat(messageTypeOf(box)).isEqualTo(JOptionPane.PLAIN_MESSAGE);
        Thread.sleep(300);
        screenshot("countries-01-archive-question");
        clickText(box, "Nem");
        waitFor(() -> onEdt(box::isShowing) ? null : box, "box closed");
        waitFor(() -> table("parameter.dsb", "OrszagjelArchiv").size() == 8 ? grid : null, "archive doubled");

        // the row of Austria handed over to the route form
        onEdt(() -> {
            grid.changeSelection(1, 0, false, false);
            return null;
        });
        waitFor(() -> "A".equals(text1.getText()) ? text1 : null, "Austria");
        Thread.sleep(300);
        screenshot("countries-02-form");
        clickNamed(form, "Command8");
        waitFor(() -> onEdt(form::isShowing) ? null : form, "country form closed");
        JTextComponent routeText4 = (JTextComponent) find(route, "Text4");
        waitFor(() -> "A".equals(routeText4.getText()) ? routeText4 : null, "mark handed over");
        assertThat(table("betarol.mdb", "Orszagjel"))
                .containsExactly("H|Magyarország", "A|Ausztria", "D|Németország", "TR|Törökország");
    }
}
