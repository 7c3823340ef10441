package kerova.core;

import static org.assertj.core.api.Assertions.assertThat;

import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 1.7: the fuel calculator, with the scripted Ui. */
class Part1_7Test extends FormTestBase {
    private static final ScriptedUi.Message OVERFLOW =
            new ScriptedUi.Message("Váratlan hiba (6): Overflow", 16, "Kerova");

    private KerovaForm open() {
        KerovaForm f = Forms.put(new KerovaForm());
        f.Show();
        return f;
    }

    private static void type(KerovaForm f, String distance, String consumption, String price) {
        f.TxtTavolsag.setText(distance);
        f.TxtFogyasztas.setText(consumption);
        f.TxtBenzinar.setText(price);
    }

    // ---- edge cases of Part 1.7 ----

    @Test
    void distance100Consumption7Price400Gives2800InCurrencyForm() {
        KerovaForm f = open();
        type(f, "100", "7", "400");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void consumptionWithACommaIsReadUpToTheComma() {
        KerovaForm f = open();
        type(f, "100", "7,5", "400");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
    }

    @Test
    void consumptionWithAPointIsRoundedHalfToEven() {
        KerovaForm f = open();
        type(f, "100", "7.5", "400");
        // 7,5 is used as 8
        assertThat(f.TxtEredmeny.Text()).isEqualTo("3 200,00 Ft");
        // 6,5 is used as 6
        f.TxtFogyasztas.setText("6.5");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 400,00 Ft");
    }

    @Test
    void emptyingOneBoxKeepsTheEarlierResult() {
        KerovaForm f = open();
        type(f, "100", "7", "400");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        f.TxtFogyasztas.setText("");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        f.TxtFogyasztas.setText("7");
        f.TxtTavolsag.setText("");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        f.TxtTavolsag.setText("100");
        f.TxtBenzinar.setText("");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        assertThat(ui.messages).isEmpty();
    }

    // ---- the rest of the Part ----

    @Test
    void eachChangeRecomputesAndTheCutComesBeforeTheArithmetic() {
        KerovaForm f = open();
        type(f, "100", "7", "400");
        f.TxtTavolsag.setText("1000");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("28 000,00 Ft");
        // 0.4 passes the test (above 0), then is cut to 0: the cost is 0
        f.TxtBenzinar.setText("0.4");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("0,00 Ft");
        // a price in fillér: 399.5 is used as 400 (halves to even), 398.5 as 398
        f.TxtBenzinar.setText("399.5");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("28 000,00 Ft");
        f.TxtBenzinar.setText("398.5");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("27 860,00 Ft");
        // consumption / 100 * price * distance: 3 / 100 * 333 * 1 = 9,99 in currency form
        type(f, "1", "3", "333");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("9,99 Ft");
    }

    @Test
    void theNumberPrefixRule() {
        KerovaForm f = open();
        type(f, "100km", "7 l", "400 Ft");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        // a text that starts with no number reads as 0: nothing happens
        f.TxtBenzinar.setText("Ft 400");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
        // a negative value isn't above 0
        f.TxtBenzinar.setText("-400");
        assertThat(f.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
    }

    @Test
    void aValueAbove32767RaisesTheUncaughtOverflowOnceAChange() {
        KerovaForm f = open();
        type(f, "100", "7", "400");
        f.TxtTavolsag.setText("32767");
        assertThat(ui.messages).isEmpty();
        assertThat(f.TxtEredmeny.Text()).isEqualTo("917 476,00 Ft");
        f.TxtTavolsag.setText("32768");
        // the runtime's one box; the result keeps its text and the calculator stays open
        assertThat(ui.messages).containsExactly(OVERFLOW);
        assertThat(f.TxtEredmeny.Text()).isEqualTo("917 476,00 Ft");
        assertThat(f.isLoaded()).isTrue();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        // 32767,5 rounds to 32768 and overflows too
        ui.clear();
        f.TxtTavolsag.setText("32767.5");
        assertThat(ui.messages).containsExactly(OVERFLOW);
        // the calculator goes on working afterwards
        ui.clear();
        f.TxtTavolsag.setText("10");
        assertThat(ui.messages).isEmpty();
        assertThat(f.TxtEredmeny.Text()).isEqualTo("280,00 Ft");
    }

    @Test
    void noOverflowWhileAnotherInputIsNotAboveZero() {
        KerovaForm f = open();
        type(f, "99999", "", "400");
        assertThat(ui.messages).isEmpty();
        assertThat(f.TxtEredmeny.Text()).isEmpty();
        f.TxtFogyasztas.setText("7");
        assertThat(ui.messages).containsExactly(OVERFLOW);
    }

    @Test
    void captionsTitleAndTheYellowResultBox() {
        KerovaForm f = new KerovaForm();
        assertThat(f.Caption()).isEqualTo("Üzemanyagköltség kalkulátor - Kerova");
        assertThat(f.Label1.Caption()).isEqualTo("Üzemanyagköltség kiszámításához kalkulátor");
        assertThat(f.Label2.Caption()).isEqualTo("Távolság (km):");
        assertThat(f.Label3.Caption()).isEqualTo("Fogyasztás:");
        assertThat(f.Label4.Caption()).isEqualTo("Benzinár:");
        assertThat(f.Kilepes.Caption()).isEqualTo("Kilépés");
        assertThat(f.TxtEredmeny.BackColor()).isEqualTo(0x00FFFF);
        assertThat(f.TxtEredmeny.Text()).isEmpty();
    }

    @Test
    void focusColoursOfTheInputs() {
        KerovaForm f = open();
        f.TxtTavolsag.SetFocus();
        assertThat(f.TxtTavolsag.BackColor()).isEqualTo(0xFFFF80);
        f.TxtFogyasztas.SetFocus();
        assertThat(f.TxtTavolsag.BackColor()).isEqualTo(RecordForm.REST_COLOR);
        assertThat(f.TxtFogyasztas.BackColor()).isEqualTo(0xFFFF80);
        f.TxtBenzinar.SetFocus();
        assertThat(f.TxtFogyasztas.BackColor()).isEqualTo(0x80000005);
        assertThat(f.TxtBenzinar.BackColor()).isEqualTo(0xFFFF80);
        // the result box keeps its yellow
        assertThat(f.TxtEredmeny.BackColor()).isEqualTo(0x00FFFF);
    }

    @Test
    void kilepesAndTheCloseBoxUnload() {
        KerovaForm f = open();
        f.Kilepes.fireClick();
        assertThat(f.isLoaded()).isFalse();
        KerovaForm g = open();
        g.closeBox();
        assertThat(g.isLoaded()).isFalse();
        assertThat(g.CloseGuard).isFalse();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theMainFormIsDisabledWhileTheCalculatorIsOpen() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Teszt Kft.");
        KerovaX main = Forms.put(new KerovaX());
        main.Show();
        boolean[] seen = new boolean[1];
        ui.whenShown("KerovaForm", f -> {
            seen[0] = true;
            assertThat(f).isInstanceOf(KerovaForm.class);
            assertThat(main.Enabled()).isFalse();
            assertThat(main.Visible()).isTrue();
            KerovaForm k = (KerovaForm) f;
            type(k, "100", "7", "400");
            assertThat(k.TxtEredmeny.Text()).isEqualTo("2 800,00 Ft");
            k.Kilepes.fireClick();
        });
        main.UaKtsg.fireClick();
        assertThat(seen[0]).isTrue();
        assertThat(main.Enabled()).isTrue();
        assertThat(main.Visible()).isTrue();
        // Command4 calls the same entry
        ui.whenShown("KerovaForm", f -> assertThat(main.Enabled()).isFalse());
        main.Command4.fireClick();
        assertThat(main.Enabled()).isTrue();
        assertThat(ui.messages).isEmpty();
    }
}
