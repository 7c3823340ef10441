package kerova.ui.swing;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Color;
import java.awt.Container;
import java.awt.event.KeyEvent;
import java.awt.event.WindowEvent;
import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JCheckBox;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JOptionPane;
import javax.swing.JScrollPane;
import javax.swing.JTable;
import javax.swing.JTextField;
import javax.swing.SwingUtilities;
import javax.swing.border.TitledBorder;
import kerova.core.Globals;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * Parts 1.5, 1.6 and 1.7 in their real windows under Xvfb, driven by component names from the main
 * menu: the parameter grids edited in place, the operator record with its key filter and the
 * empty-name end, the calculator with its yellow result and the overflow box. Screenshots go to
 * target/screenshots.
 */
class CoreFormsGuiTest {
    private static final String INSPECTION = "Van olyan jármű, aminek a műszaki vizsgája aktuális!";

    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        LocalDateTime today = VbClock.today();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.", "UzIrszam", "9021",
                "UzSzekhely", "Győr", "UzCim", "Szent István út 12.");
        insertValues("Torzsek.dsb", "VizsgaFigyelmeztetoNap", 15, 30, 0, 0, 0, 10000, 15000, 20000, 60000, 90000);
        insert("parameter.dsb", "Egyebek", "Napidíj", 4500.0, "NapidíjDevizanem", "Ft");
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "db", "Állandó", false);
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        insert("parameter.dsb", "Path", "PolcrakPath", "C:\\Polcrák", "FogastorPath", "C:\\Fogastőr",
                "BizonylaNextPath", "C:\\BizonylaNext", "InterfacePath", "C:\\Űrlapok");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "MuszakiVizsgaDatum", today.minusDays(40));
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void parametersOperatorAndCalculator() throws Exception {
        SwingApp.start(dir, exits::incrementAndGet);
        confirm("FIGYELEM!", INSPECTION, JOptionPane.WARNING_MESSAGE, null);
        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> onEdt(() -> main.isShowing()) ? main : null, "main showing");

        // ---------------- Part 1.5: the parameters
        clickMenu(main, "ParameterAdat");
        JDialog par = waitFor(() -> dialogNamed("ParameterFormX"), "parameter form");
        assertThat(onEdt(() -> par.getTitle())).isEqualTo("Paraméter adatok beállítása - Kerova");
        assertThat(onEdt(() -> main.isVisible())).isFalse();
        JTable g1 = (JTable) find(par, "DBGrid1");
        JTable g3 = (JTable) find(par, "DBGrid3");
        assertThat(onEdt(() -> title(par, "DBGrid1")))
                .startsWith("A táblázatban adja meg, hogy hány nappal vagy kilométerrel előre kapjo");
        assertThat(onEdt(() -> title(par, "DBGrid2")))
                .isEqualTo("A táblázatban adja meg a pontos elérési útvonalakat (Path)!");
        assertThat(onEdt(() -> g1.getColumnCount())).isEqualTo(10);
        assertThat(onEdt(() -> g1.getColumnName(0))).isEqualTo("Müszaki vizsga figyelmeztető nap");
        assertThat(onEdt(() -> g1.getColumnName(9))).isEqualTo("Vezérmű ékszíjcsere kilométer");
        assertThat(onEdt(() -> g1.getValueAt(0, 0))).isEqualTo("15");
        // the unit grid: two units and the empty row for a new one; Check1 follows the current row
        assertThat(onEdt(() -> g3.getRowCount())).isEqualTo(3);
        JCheckBox check = (JCheckBox) find(par, "Check1");
        assertThat(onEdt(() -> check.getText())).isEqualTo("Görgetés adatoknál (állandó)");
        assertThat(onEdt(() -> check.isSelected())).isFalse();
        SwingUtilities.invokeAndWait(() -> g3.setRowSelectionInterval(1, 1));
        waitFor(() -> onEdt(() -> check.isSelected()) ? check : null, "Check1 on the fixed unit");
        // the inspection days edited in place through the cell editor: 0 switches the reminder off
        editCell(g1, 0, 0, "0");
        waitFor(() -> "0".equals(onEdt(() -> g1.getValueAt(0, 0))) ? g1 : null, "cell stored");
        Thread.sleep(300);
        screenshot("10-parameter-form");
        click(par, "Command2");
        waitFor(() -> onEdt(() -> main.isShowing()) ? main : null, "main back after the parameters");
        Thread.sleep(300);
        assertThat(showingMessages()).isEmpty();
        assertThat(onEdt(() -> Globals.WarnInspectionDays)).isZero();
        assertThat(onEdt(() -> Globals.FixedUnit)).isEqualTo("tonna");
        assertThat(onEdt(() -> Globals.FogastorPathValue)).isEqualTo("C:\\Fogastőr");

        // ---------------- Part 1.6: the operator record
        clickMenu(main, "Uzemelteto");
        JDialog op = waitFor(() -> dialogNamed("UzemeltetokForm"), "operator form");
        assertThat(onEdt(() -> op.getTitle())).isEqualTo("Nyilvántartást végző adatai - Kerova");
        JTextField name = (JTextField) find(op, "Text2");
        JTextField postal = (JTextField) find(op, "Text3");
        assertThat(onEdt(() -> name.getText())).isEqualTo("Kerekes Fuvarozó Kft.");
        assertThat(onEdt(() -> name.getToolTipText())).isEqualTo("Üresen hagyva az adatlap TÖRLŐDIK!");
        assertThat(onEdt(() -> ((JTextField) find(op, "Text24")).getToolTipText())).isEqualTo("Telephely teljes címe");
        // a letter in the postal code doesn't appear; a digit does
        SwingUtilities.invokeAndWait(() -> postal.setCaretPosition(postal.getDocument().getLength()));
        typeKey(postal, 'a');
        assertThat(onEdt(() -> postal.getText())).isEqualTo("9021");
        typeKey(postal, '7');
        assertThat(onEdt(() -> postal.getText())).isEqualTo("90217");
        typeKey(postal, (char) KeyEvent.VK_BACK_SPACE);
        SwingUtilities.invokeAndWait(() -> postal.setText("9027"));
        SwingUtilities.invokeAndWait(() -> ((JTextField) find(op, "Text24")).setText("9027 Győr, Ipari park 3."));
        Thread.sleep(300);
        screenshot("11-operator-form");
        // the close box takes Kilepes_Click: the values are stored, the form closes
        SwingUtilities.invokeLater(() -> op.dispatchEvent(new WindowEvent(op, WindowEvent.WINDOW_CLOSING)));
        waitFor(() -> onEdt(() -> main.isShowing()) && dialogNamed("UzemeltetokForm") == null ? main : null, "operator closed");
        Recordset b = Database.open("Torzsek.dsb").OpenRecordset("Bettorzs");
        b.MoveFirst();
        assertThat(b.get("UzIrszam")).isEqualTo("9027");
        assertThat(b.get("Telephely")).isEqualTo("9027 Győr, Ipari park 3.");
        b.Close();

        // ---------------- Part 1.7: the calculator; the main window stays, disabled
        clickMenu(main, "UaKtsg");
        JDialog calc = waitFor(() -> dialogNamed("KerovaForm"), "calculator");
        assertThat(onEdt(() -> calc.getTitle())).isEqualTo("Üzemanyagköltség kalkulátor - Kerova");
        assertThat(onEdt(() -> main.isVisible())).isTrue();
        assertThat(onEdt(() -> main.isEnabled())).isFalse();
        JTextField dist = (JTextField) find(calc, "TxtTavolsag");
        JTextField cons = (JTextField) find(calc, "TxtFogyasztas");
        JTextField price = (JTextField) find(calc, "TxtBenzinar");
        JTextField result = (JTextField) find(calc, "TxtEredmeny");
        SwingUtilities.invokeAndWait(() -> {
            dist.setText("100");
            cons.setText("7");
            price.setText("400");
        });
        assertThat(onEdt(() -> result.getText())).isEqualTo("2 800,00 Ft");
        assertThat(onEdt(() -> result.getBackground())).isEqualTo(new Color(255, 255, 0));
        SwingUtilities.invokeAndWait(() -> cons.setText("7.5"));
        assertThat(onEdt(() -> result.getText())).isEqualTo("3 200,00 Ft");
        SwingUtilities.invokeAndWait(() -> cons.setText(""));
        assertThat(onEdt(() -> result.getText())).isEqualTo("3 200,00 Ft");
        SwingUtilities.invokeAndWait(() -> cons.setText("7,5"));
        assertThat(onEdt(() -> result.getText())).isEqualTo("2 800,00 Ft");
        SwingUtilities.invokeAndWait(dist::requestFocusInWindow);
        Thread.sleep(300);
        screenshot("12-calculator");
        // the overflow above 32767: the runtime's one box; the calculator goes on
        SwingUtilities.invokeLater(() -> dist.setText("40000"));
        confirm("Kerova", "Váratlan hiba (6): Overflow", JOptionPane.ERROR_MESSAGE, "13-calculator-overflow");
        assertThat(onEdt(() -> result.getText())).isEqualTo("2 800,00 Ft");
        assertThat(onEdt(() -> calc.isShowing())).isTrue();
        click(calc, "Kilepes");
        waitFor(() -> onEdt(() -> main.isShowing() && main.isEnabled()) ? main : null, "main enabled again");

        // ---------------- Part 1.6: an empty name deletes the row and ends the program
        clickMenu(main, "Uzemelteto");
        JDialog op2 = waitFor(() -> dialogNamed("UzemeltetokForm"), "operator form again");
        JTextField name2 = (JTextField) find(op2, "Text2");
        SwingUtilities.invokeAndWait(() -> name2.setText(""));
        click(op2, "Command1");
        JDialog box = waitFor(() -> messageBox("FIGYELEM! SÚLYOS HIBA!"), "empty-name box");
        assertThat(messageOf(box))
                .isEqualTo("Hiányos kitöltés! Az adat törlődik! A program bejegyzett üzemeltető nélkül nem működik!");
        assertThat(messageTypeOf(box))
                .isEqualTo(JOptionPane.ERROR_MESSAGE);
        Thread.sleep(300);
        screenshot("14-operator-empty-name");
        click(box, "OK");
        waitFor(() -> exits.get() == 1 ? exits : null, "the program ends");
        Recordset b2 = Database.open("Torzsek.dsb").OpenRecordset("Bettorzs");
        assertThat(b2.RecordCount()).isZero();
        b2.Close();
    }

    // ---------------------------------------------------------------- helpers

    private static String title(Container root, String gridName) {
        JScrollPane sp = (JScrollPane) findIn(root, gridName + ".scroll");
        return ((TitledBorder) sp.getBorder()).getTitle();
    }

    private static void editCell(JTable t, int row, int col, String text) throws Exception {
        SwingUtilities.invokeAndWait(() -> {
            t.editCellAt(row, col);
            ((JTextField) t.getEditorComponent()).setText(text);
            t.getCellEditor().stopCellEditing();
        });
    }

    private static void typeKey(JTextField f, char ch) throws Exception {
        SwingUtilities.invokeAndWait(() -> f.dispatchEvent(
                new KeyEvent(f, KeyEvent.KEY_TYPED, System.currentTimeMillis(), 0, KeyEvent.VK_UNDEFINED, ch)));
    }

    private static void confirm(String title, String text, int type, String shot) throws Exception {
        Gui.confirm(title, text, type, shot == null ? null : "core-" + shot);
    }

    private static void screenshot(String name) throws Exception {
        Gui.screenshot("core-" + name);
    }
}
