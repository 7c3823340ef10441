package kerova.core.form;

/** Stands in for a form of a later Part: a window titled with the form's name and one notice. */
public class StandInForm extends Form {
    public static final String NOTICE = "Ez a modul még nem készült el.";
    public final Label Label1 = add(new Label("Label1", NOTICE));
    public final CommandButton Kilepes = add(new CommandButton("Kilepes", "Kilépés"));

    public StandInForm(String formName) {
        super(formName, formName);
        layoutConstraints = "wrap 1, insets 24, align center center";
        Kilepes.layout = "align center, w 120!";
        Label1.layout = "align center, gapbottom 12";
        Width = 460;
        Height = 180;
        Kilepes.Click = this::Kilepes_Click;
    }

    void Kilepes_Click() {
        unloadUnguarded();
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }
}
