package kerova.partners;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.event.MouseEvent;
import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.text.JTextComponent;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The partner master under Xvfb: opened from the main menu, a search, a country pick, a new partner, the exit check. */
class PartnerGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "Orszagjel", "Országjel", "A", "Ország", "Ausztria");
        insert("Kerova.dsb", "Orszagjel", "Országjel", "H", "Ország", "Magyarország");
        insert("Kerova.dsb", "beraktar", "recordID", 1, "BerNev", "Őrségi Szerviz Kft.", "BerIrszam", "9941",
                "BerSzekhely", "Őriszentpéter", "BerOrszag", "H", "Kapcsolattartó", "Szűts Írisz");
        insert("Kerova.dsb", "beraktar", "recordID", 2, "BerNev", "Győri Űrtechnika Bt.", "BerIrszam", "9021",
                "BerSzekhely", "Győr", "BerOrszag", "H");
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void openSearchPickACountryAddAPartnerAndLeaveFromTheMainMenu() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "GKBesz", "BeraktarozokFormX");
        assertThat(onEdt(form::getTitle)).isEqualTo("Beszállítók, partnerek adatai törzs - Kerova");
        JTextComponent text2 = (JTextComponent) find(form, "Text2");
        waitFor(() -> "Győri Űrtechnika Bt.".equals(text2.getText()) ? text2 : null, "last partner");

        // the name search
        clickNamed(form, "keres");
        JDialog input = waitFor(() -> dialogTitled("Keresés (cég)névre"), "input box");
        onEdt(() -> {
            ((JTextComponent) findIn(input, "InputBoxText")).setText("Őrs");
            return null;
        });
        clickText(input, "OK");
        waitFor(() -> "Őrségi Szerviz Kft.".equals(text2.getText()) ? text2 : null, "found Őrségi");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text11")).getText())).isEqualTo("Szűts Írisz");

        // a double click in the country grid sets the mark
        JTable countries = (JTable) find(form, "DBGrid2");
        onEdt(() -> {
            countries.setRowSelectionInterval(0, 0);
            countries.dispatchEvent(new MouseEvent(countries, MouseEvent.MOUSE_CLICKED, System.currentTimeMillis(),
                    0, 5, 5, 2, false));
            return null;
        });
        JLabel mark = (JLabel) find(form, "Label14");
        waitFor(() -> "A".equals(mark.getText()) ? mark : null, "country mark A");
        Thread.sleep(300);
        screenshot("partners-01-search-and-country");

        // a new partner, identifier 3
        clickMenu(form, "UjAdat");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "3".equals(text1.getText()) ? text1 : null, "new identifier");
        onEdt(() -> {
            text2.setText("Szőlőskertű Fuvar Kft.");
            ((JTextComponent) find(form, "Text4")).setText("Tűzköves");
            return null;
        });

        // "Mentés-Kilépés": the check asks with the question mark; "Nem" leaves every row
        clickMenu(form, "Kilepes");
        JDialog box = waitFor(() -> messageBox("Ellenőrzés..."), "check question");
        assertThat(messageOf(box)).isEqualTo("Kéri az adatok teljes ellenőrzését?");
        assertThat(messageTypeOf(box)).isEqualTo(JOptionPane.QUESTION_MESSAGE);
        assertThat(buttonTexts(box)).containsExactly("Igen", "Nem");
        Thread.sleep(300);
        screenshot("partners-02-exit-check");
        clickText(box, "Nem");
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");

        Recordset r = Database.open("Kerova.dsb").OpenRecordset("beraktar");
        r.MoveFirst();
        assertThat(r.get("BerOrszag")).isEqualTo("A");
        r.MoveLast();
        assertThat(r.get("recordID")).isEqualTo(3);
        assertThat(r.get("BerNev")).isEqualTo("Szőlőskertű Fuvar Kft.");
        assertThat(r.get("BerSzekhely")).isEqualTo("Tűzköves");
        r.Close();
    }
}
