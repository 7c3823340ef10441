package kerova.core;

import java.math.BigDecimal;
import kerova.core.form.CommandButton;
import kerova.core.form.Label;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.vb.Conv;
import kerova.core.vb.VbConst;
import kerova.core.vb.VbFormat;

/**
 * Part 1.7: the pocket calculator of a journey's fuel cost, with no table behind it. Each input is
 * read by the number-prefix rule (Val) and cut to a 16-bit whole number (CInt: halves to even,
 * overflow above 32767, which no handler catches) before the arithmetic; the cost is rounded to four
 * decimals as a currency value and shown in the locale's currency format.
 */
public class KerovaForm extends RecordForm {
    public static final String NAME = "KerovaForm";
    public static final String TITLE = "Üzemanyagköltség kalkulátor - Kerova";
    /** The result box's background: yellow. */
    public static final int RESULT_COLOR = VbConst.vbYellow;

    public final Label Label1 = add(new Label("Label1", "Üzemanyagköltség kiszámításához kalkulátor"));
    public final Label Label2 = add(new Label("Label2", "Távolság (km):"));
    public final TextBox TxtTavolsag = add(new TextBox("TxtTavolsag"));
    public final Label Label3 = add(new Label("Label3", "Fogyasztás:"));
    public final TextBox TxtFogyasztas = add(new TextBox("TxtFogyasztas"));
    public final Label Label4 = add(new Label("Label4", "Benzinár:"));
    public final TextBox TxtBenzinar = add(new TextBox("TxtBenzinar"));
    public final Label Label5 = add(new Label("Label5", "Üzemanyagköltség:"));
    public final TextBox TxtEredmeny = add(new TextBox("TxtEredmeny"));
    public final CommandButton Kilepes = add(new CommandButton("Kilepes", "Kilépés"));

    public KerovaForm() {
        super(NAME, TITLE);
        layoutConstraints = "wrap 2, insets 14, hidemode 3";
        columnConstraints = "[right][200!,fill]";
        Width = 420;
        Height = 300;
        Label1.layout = "span 2, align center, gapbottom 10";
        TxtEredmeny.layout = "gaptop 8";
        Label5.layout = "gaptop 8";
        Kilepes.layout = "span 2, align right, w 110!, gaptop 12";

        TxtEredmeny.setBackColor(RESULT_COLOR);
        TxtEredmeny.setLocked(true);
        focusColors(TxtTavolsag, TxtFogyasztas, TxtBenzinar);
        TxtTavolsag.Change = this::Recompute;
        TxtFogyasztas.Change = this::Recompute;
        TxtBenzinar.Change = this::Recompute;
        Kilepes.Click = this::Kilepes_Click;
    }

    /**
     * The recompute of each Change. Nothing happens unless all three are above 0, tested in the order
     * price, consumption, distance. The cut to whole numbers is required (7,5 typed as "7.5" is 8).
     * An overflow above 32767 is not caught here: it reaches the runtime's box (docs/DECISIONS.md).
     */
    void Recompute() {
        if (Conv.Val(TxtBenzinar.Text()) > 0) {
            if (Conv.Val(TxtFogyasztas.Text()) > 0) {
                if (Conv.Val(TxtTavolsag.Text()) > 0) {
                    short price = Conv.CInt(Conv.Val(TxtBenzinar.Text()));
                    short consumption = Conv.CInt(Conv.Val(TxtFogyasztas.Text()));
                    short distance = Conv.CInt(Conv.Val(TxtTavolsag.Text()));
                    double cost = consumption / 100.0 * price * distance;
                    BigDecimal currency = Conv.CCur(cost);
                    TxtEredmeny.setText(VbFormat.Format(currency, "Currency"));
                }
            }
        }
    }

    void Kilepes_Click() {
        unloadUnguarded();
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }
}
