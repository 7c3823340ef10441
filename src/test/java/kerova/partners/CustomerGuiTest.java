package kerova.partners;

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
import javax.swing.JOptionPane;
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

/**
 * The customer form under Xvfb: the main menu opens the vehicle form, whose owner button opens
 * CimzettForm as a picker; a search as you type, the hand-over with its closing check, and the owner
 * stored in the vehicle.
 */
class CustomerGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        LocalDateTime later = VbClock.today().plusYears(1);
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later);
        insert("betarol.mdb", "Orszagjel", "Országjel", "A", "Ország", "Ausztria");
        insert("betarol.mdb", "Orszagjel", "Országjel", "H", "Ország", "Magyarország");
        insert("kitarol.mdb", "Címzett", "recordID", 1, "CimNev", "Győri Űrtechnika Bt.", "CimIrszam", "9021",
                "CimSzekhely", "Győr", "CimCim", "Baross út 3.", "CimOrszag", "H", "CimTelefon", "96/311-222");
        insert("kitarol.mdb", "Címzett", "recordID", 2, "CimNev", "Őrségi Tűzifa Kft.", "CimIrszam", "9941",
                "CimSzekhely", "Őriszentpéter", "CimCim", "Fő út 1.", "CimOrszag", "H", "Kapcsolattartó",
                "Szűts Írisz", "Alvállalkozó", true);
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void theVehicleFormPicksItsOwnerInTheCustomerForm() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog vehicles = openFromMenu(main, "Gepkocsik", "GKTorzsFormX");
        JTextComponent plate = (JTextComponent) find(vehicles, "Text1");
        waitFor(() -> "KŐB-112".equals(plate.getText()) ? plate : null, "the vehicle");

        // the owner button opens the customer form
        SwingUtilities.invokeLater(((AbstractButton) find(vehicles, "Command2"))::doClick);
        JDialog form = waitFor(() -> dialogNamed("CimzettForm"), "customer form");
        assertThat(onEdt(form::getTitle)).isEqualTo("Partnertörzs - Vevők (címzettek) adatai (CRM alap)");
        JTextComponent text2 = (JTextComponent) find(form, "Text2");
        waitFor(() -> "Őrségi Tűzifa Kft.".equals(text2.getText()) ? text2 : null, "last customer by name");
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(2);
        assertThat(onEdt(() -> ((JTable) find(form, "DBGrid2")).getRowCount())).isEqualTo(2);
        assertThat(onEdt(() -> ((javax.swing.JComponent) find(form, "Text3")).getToolTipText())).isEqualTo("Postai jel, irányítószám");

        // the search as you type
        onEdt(() -> {
            ((JTextComponent) find(form, "Text21")).setText("Győ");
            return null;
        });
        waitFor(() -> "Győri Űrtechnika Bt.".equals(text2.getText()) ? text2 : null, "found Győri");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text6")).getText())).isEqualTo("96/311-222");
        assertThat(onEdt(() -> ((JLabel) find(form, "Label14")).getText())).isEqualTo("H");
        Thread.sleep(300);
        screenshot("customers-01-search");

        // the hand-over closes through Kilepes: its check asks with the question mark
        clickMenu(form, "AtadaS");
        JDialog box = waitFor(() -> messageBox("FIGYELEM! Teljeskörű ellenőrzés!"), "check question");
        assertThat(messageOf(box)).isEqualTo("Kéri az adatok teljes ellenőrzését?");
        assertThat(messageTypeOf(box)).isEqualTo(JOptionPane.QUESTION_MESSAGE);
        assertThat(buttonTexts(box)).containsExactly("Igen", "Nem");
        Thread.sleep(300);
        screenshot("customers-02-closing-check");
        clickText(box, "Nem");

        // back in the vehicle form with the owner
        JTextComponent owner = (JTextComponent) find(vehicles, "Text13");
        waitFor(() -> "Győri Űrtechnika Bt.".equals(owner.getText()) ? owner : null, "owner taken");
        assertThat(onEdt(() -> ((JLabel) find(vehicles, "Label23")).getText())).isEqualTo("1");
        SwingUtilities.invokeLater(((AbstractButton) find(vehicles, "Command4"))::doClick);
        waitFor(() -> {
            Recordset r = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
            r.MoveFirst();
            Object name = r.get("PartnerNeve");
            Object id = r.get("PartnerID");
            r.Close();
            return "Győri Űrtechnika Bt.".equals(name) && Integer.valueOf(1).equals(id) ? name : null;
        }, "owner stored");
        SwingUtilities.invokeLater(((AbstractButton) find(vehicles, "Command13"))::doClick);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
    }
}
