package kerova.partners;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.util.concurrent.atomic.AtomicInteger;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.text.JTextComponent;
import kerova.core.form.Forms;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The partner list of Part 4.2 under Xvfb: main menu GKBesz, then BeszNyom; two pages, "Tovább" and "Mégse". */
class PartnerListGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();

    static final String[][] PARTNERS = {
        {"Őrségi Szerviz Kft.", "9941", "H", "Őriszentpéter", "Fő út 1.", "94428001", "94428002"},
        {"Győri Űrtechnika Bt.", "9021", "H", "Győr", "Szent István út 12.", "96111222", null},
        {"Kőszegi Fűtőolaj Zrt.", "9730", "H", "Kőszeg", "Rákóczi Ferenc u. 5.", "94360111", "94360112"},
        {"Wiener Transport GmbH", "1100", "A", "Wien", "Favoritenstraße 8.", "43160011", null},
    };

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        Forms.reset();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        // 23 partners: a full first page and a second page with one line
        for (int i = 1; i <= 23; i++) {
            String[] p = PARTNERS[(i - 1) % PARTNERS.length];
            String name = i <= PARTNERS.length ? p[0] : i + ". " + p[0];
            insert("Kerova.dsb", "beraktar", "recordID", i, "BerNev", name, "BerIrszam", p[1], "BerOrszag", p[2],
                    "BerSzekhely", p[3], "BerCim", p[4], "BerTelefon", p[5], "BerFax", p[6]);
        }
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void thePartnerListFromTheMainMenuShowsTwoPages() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "GKBesz", "BeraktarozokFormX");
        JTextComponent text2 = (JTextComponent) find(form, "Text2");
        waitFor(() -> "23. Kőszegi Fűtőolaj Zrt.".equals(onEdt(text2::getText)) ? text2 : null, "last partner");

        // the first page
        clickMenu(form, "BeszNyom");
        JDialog page1 = waitFor(() -> dialogNamed(BeszallitoNyomFormX.NAME), "first page");
        waitFor(() -> onEdt(page1::isShowing) ? page1 : null, "first page showing");
        BeszallitoNyomFormX model = (BeszallitoNyomFormX) Forms.get(BeszallitoNyomFormX.NAME);
        assertThat(onEdt(page1::getTitle)).isEqualTo("Beszállítók, partnerek nyomtatása");
        assertThat(onEdt(model::headingText)).isEqualTo("BESZÁLLÍTÓK-PARTNEREK");
        assertThat(onEdt(model::pageLabel)).isEqualTo("Lapszám: 1");
        assertThat(onEdt(() -> model.row(22).get(0))).isEqualTo("22. Győri Űrtechnika Bt.");
        assertThat(buttonTexts(page1)).contains("Tovább", "Nyomtat", "Mégse");
        Thread.sleep(500);
        screenshot("partners42-01-first-page");

        // "Tovább": the second page, headed differently, with a single line
        clickNamed(page1, "Command1");
        JDialog page2 = waitFor(() -> {
            JDialog d = dialogNamed(BeszallitoNyomFormX.NAME);
            return d != null && onEdt(d::isShowing) && "Lapszám: 2".equals(onEdt(model::pageLabel)) ? d : null;
        }, "second page");
        assertThat(onEdt(model::headingText)).isEqualTo("BESZÁLLÍTÓK-BERAKTÁROZÓK");
        assertThat(onEdt(() -> model.row(1))).containsExactly("23. Kőszegi Fűtőolaj Zrt.", "9730", "H", "Kőszeg",
                "Rákóczi Ferenc u. 5.", "94360111 / 94360112");
        assertThat(onEdt(() -> String.join("", model.row(2)))).isEqualTo("");
        Thread.sleep(500);
        screenshot("partners42-02-second-page");

        // "Mégse" ends the list; the partner form stands on its last row
        clickNamed(page2, "Command3");
        waitFor(() -> onEdt(page2::isShowing) ? null : page2, "preview closed");
        waitFor(() -> onEdt(form::isShowing) ? form : null, "partner form back");
        String current = onEdt(() -> text2.getText());
        assertThat(current).isEqualTo("23. Kőszegi Fűtőolaj Zrt.");
        assertThat(showingMessages()).isEmpty();
    }
}
