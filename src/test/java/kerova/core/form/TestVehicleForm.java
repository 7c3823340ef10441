package kerova.core.form;

import kerova.core.Globals;
import kerova.core.db.DataControl;

/** A small record form over Jarmuvek for the tests of Part 1.3 (the vehicle form's shape, reduced). */
public class TestVehicleForm extends RecordForm {
    public static final String SEARCH_PROMPT = "Adja meg a keresett forgalmi rendszámot!";
    public static final String SEARCH_TITLE = "Keresés rendszám szerint";
    public static final String NOT_FOUND = "Nincs ilyen forgalmi rendszám! Keressen újra!";
    public static final String DELETE_TEXT = "Biztosan törölni akarja az aktuális adatot?";
    public static final String DELETE_TITLE = "FIGYELEM! Aktuális adat végleges törlése!";
    public static final String ARCHIVE_FAIL = "ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!";
    public static final String MANDATORY_TEXT = "Nincs megadva típus! Az adat törölhető?";
    public static final String MANDATORY_TITLE = "FIGYELEM! Aktuális adat törlése!";

    public final DataControl JarmuData = data("JarmuData", "Kerova.dsb", "Jarmuvek");
    public final DataControl ArchivData = data("ArchivData", "Kerova.dsb", "JarmuvekArchiv");
    public final DataControl RegisztData = data("RegisztData", "Regiszt.dsb", "Regisztrálás");

    public final TextBox Text1 = add(new TextBox("Text1"));
    public final TextBox Text2 = add(new TextBox("Text2"));
    public final TextBox Text3 = add(new TextBox("Text3"));
    public final TextBox Text21 = add(new TextBox("Text21"));
    public final Label Label5 = add(new Label("Label5"));
    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "OK-Mentés"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Új adat"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Kilépés"));
    public final Menu Kereses = menu(new Menu("Kereses", "Keresések"));
    public final Menu KeresFrsz = Kereses.add(new Menu("KeresFrsz", "Rendszám szerint"));
    public final Menu Muveletek = menu(new Menu("Muveletek", "Műveletek"));
    public final Menu OKMent = Muveletek.add(new Menu("OKMent", "OK-Mentés"));
    public final Menu UjAdat = Muveletek.add(new Menu("UjAdat", "Új adat"));
    public final Menu Torles = Muveletek.add(new Menu("Torles", "Törlés"));
    public final Menu Nyomtat = Muveletek.add(new Menu("Nyomtat", "Nyomtatás"));
    public final Menu Valaszt = Muveletek.add(new Menu("Valaszt", "Választ"));
    public final Menu Segedlet = menu(new Menu("Segedlet", "Segédlet"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "Kilépés"));

    /** Whether the delete keeps an archive copy (the vehicle form does). */
    public boolean archive = true;
    public int exits;

    public TestVehicleForm() {
        super("TestVehicleForm", "Járművek (teszt)");
        Text1.bind(JarmuData, "GkFrsz");
        Text2.bind(JarmuData, "GkTipus");
        Text3.bind(JarmuData, "FogyasztásLiter100");
        Label5.bind(JarmuData, "recordID");
        DBGrid1.bind(JarmuData);
        DBGrid1.addColumn("GkFrsz");
        DBGrid1.addColumn("GkTipus");
        DBGrid1.addColumn("recordID");
        focusColors(Text1, REST_COLOR, upperCase(Text1));
        focusColors(Text2);
        focusColors(Text21, QUICK_SEARCH_COLOR, null);
        decimal(Text3);
        Text21.Change = () -> quickSearch(JarmuData, "GkFrsz", Text21.Text());
        DBGrid1.HeadClick = col -> headerSort(JarmuData, DBGrid1, col);
        KeresFrsz.Click = () -> standardSearch(JarmuData, "GkFrsz", SEARCH_PROMPT, SEARCH_TITLE, NOT_FOUND);
        OKMent.Click = () -> save(JarmuData, DBGrid1);
        UjAdat.Click = this::UjAdat_Click;
        Torles.Click = () -> delete(JarmuData, DELETE_TEXT, DELETE_TITLE, archive ? ArchivData : null,
                ARCHIVE_FAIL, 48, "FIGYELEM!", this::UjAdat_Click);
        Nyomtat.Click = () -> printCheck(JarmuData);
        Valaszt.Click = () -> returnPick(JarmuData, () -> Globals.PickedName = Text1.Text(),
                () -> Globals.PickedName = "");
        Segedlet.Click = this::help;
        Kilepes.Click = this::Kilepes_Click;
        Command1.Click = OKMent::fireClick;
        Command2.Click = UjAdat::fireClick;
        Command3.Click = Kilepes::fireClick;
    }

    void UjAdat_Click() {
        newRecord(JarmuData, Label5, "recordID", Text1);
    }

    @Override
    protected void Form_Load() {
        pickStart();
        Valaszt.setVisible("PickerCaller".equals(Globals.CurrentFormName));
    }

    @Override
    protected void Form_Activate() {
        openOnLast(JarmuData, "recordID", Text1);
        LogAction(RegisztData, "Járművekbe belépés", Label5);
    }

    void Kilepes_Click() {
        exits++;
        standardExit(() -> offerDeleteIfEmpty(JarmuData, Text2.Text(), MANDATORY_TEXT, MANDATORY_TITLE),
                JarmuData, ArchivData, RegisztData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }
}
