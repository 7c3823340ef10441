package kerova.core;

import kerova.core.db.AccessFile;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CommandButton;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.vb.Err;
import kerova.core.vb.VbConst;

/**
 * Part 1.6: the operator's single record in {@code Bettorzs}: name, address, tax numbers, telephones.
 * The name is mandatory: leaving with an empty name deletes the row and ends the program.
 */
public class UzemeltetokForm extends RecordForm {
    public static final String NAME = "UzemeltetokForm";
    public static final String TITLE = "Nyilvántartást végző adatai - Kerova";
    public static final String LOG_TEXT = "Üzemeltető adatai";
    public static final String EMPTY_NAME_TEXT =
            "Hiányos kitöltés! Az adat törlődik! A program bejegyzett üzemeltető nélkül nem működik!";
    /** The Part leaves the box's title open: ours, a serious error that ends the program (style 16). */
    public static final String EMPTY_NAME_TITLE = "FIGYELEM! SÚLYOS HIBA!";
    public static final int EMPTY_NAME_STYLE = VbConst.vbCritical;

    // ---- Data controls ----
    public final DataControl Betarol = data("Betarol", "Torzsek.dsb", "Bettorzs");
    public final DataControl Regisztrálás = data("Regisztrálás", "Regiszt.dsb", "Regisztrálás");

    // ---- controls ----
    public final Label Label1 = add(new Label("Label1", "A nyilvántartást végző (üzemeltető) adatai"));
    public final TextBox Text2 = field("Üzemeltető neve:", "Text2", "UzNev");
    public final TextBox Text3 = field("Irányítószám:", "Text3", "UzIrszam");
    public final TextBox Text4 = field("Székhely (település):", "Text4", "UzSzekhely");
    public final TextBox Text5 = field("Cím:", "Text5", "UzCim");
    public final TextBox Text6 = field("Adószám:", "Text6", "UzAdoszam");
    public final TextBox Text7 = field("Bankszámlaszám:", "Text7", "UzSzamlaszam");
    public final TextBox Text12 = field("Telefon:", "Text12", "Uztelefon");
    public final TextBox Text13 = field("Fax:", "Text13", "UzFax");
    public final TextBox Text14 = field("Mobil:", "Text14", "UzMobil");
    public final TextBox Text20 = field("EU adószám:", "Text20", "EUAdoszam");
    public final TextBox Text22 = field("VPID:", "Text22", "VPID");
    public final TextBox Text24 = field("Telephely:", "Text24", "Telephely");
    /** The folder of the data (CurDir, Part 1.1). */
    public final Label FolderCaption = add(new Label("FolderCaption", "Adatkönyvtár:"));
    public final Label Folder = add(new Label("Folder"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "Kilépés"));

    // ---- menu ----
    public final Menu Kilepes = menu(new Menu("Kilepes", "Kilépés"));

    public UzemeltetokForm() {
        super(NAME, TITLE);
        layoutConstraints = "wrap 2, insets 12, hidemode 3";
        columnConstraints = "[right][420!,fill]";
        Width = 640;
        Height = 500;
        Label1.layout = "span 2, align center, gapbottom 8";
        Command1.layout = "span 2, align right, w 120!, gaptop 10";

        Text2.setToolTipText("Üresen hagyva az adatlap TÖRLŐDIK!");
        Text24.setToolTipText("Telephely teljes címe");
        focusColors(Text2, Text3, Text4, Text5, Text6, Text7, Text12, Text13, Text14, Text20, Text22, Text24);
        wholeNumber(Text3, Text6, Text12, Text13, Text14);

        Command1.Click = Kilepes::fireClick;
        Kilepes.Click = this::Kilepes_Click;
    }

    private TextBox field(String caption, String name, String column) {
        add(new Label(name + "Caption", caption));
        TextBox t = add(new TextBox(name));
        t.bind(Betarol, column);
        return t;
    }

    // ---------------------------------------------------------------- lifecycle

    /** The form always has a row to bind to: the first, or a new empty one. */
    @Override
    protected void Form_Activate() {
        Folder.setCaption(AccessFile.workingFolder().toString());
        if (count(Betarol) > 0) {
            Err.resume(() -> rs(Betarol).MoveFirst());
        } else {
            addRow(Betarol);
        }
        Err.Clear();
        Forms.MousePointer(VbConst.vbDefault);
    }

    // ---------------------------------------------------------------- exit

    void Kilepes_Click() {
        CloseGuard = false;
        // 1: the action log, when the form stands on a row
        if (count(Betarol) > 0 && !Err.resume(() -> rs(Betarol).EOF(), true)) {
            LogAction(Regisztrálás, LOG_TEXT, null);
        }
        Err.Clear();
        // 2: the bound values are written by the moves
        Err.resume(() -> rs(Betarol).MoveLast());
        Err.resume(() -> rs(Betarol).MoveFirst());
        Err.Clear();
        // 3: the name is mandatory; a name that can't be read counts as empty (the If of Resume Next)
        Object name = Err.resume(() -> rs(Betarol).Fields("UzNev").Value(), null);
        Err.Clear();
        if (name == null || name.toString().isEmpty()) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(EMPTY_NAME_TEXT, EMPTY_NAME_STYLE, EMPTY_NAME_TITLE);
            Err.resume(() -> rs(Betarol).Delete());
            closeAll(Betarol, Regisztrálás);
            Err.Clear();
            Forms.End();
            return;
        }
        // 4
        closeAll(Regisztrálás, Betarol);
        Err.Clear();
        Unload();
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }
}
