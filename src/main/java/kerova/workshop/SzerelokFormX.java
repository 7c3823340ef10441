package kerova.workshop;

import java.util.List;
import kerova.core.Globals;
import kerova.core.form.TextBox;

/**
 * Part 6.2: the mechanics of {@code SzervizModulSzerelok}, opened by {@code Command1} of the service
 * form (Part 6.1). The design is {@link WorkshopMasterForm}'s; here stands this form's column of the
 * Part's table. A pick leaves {@code PickedMechanicName} and {@code PickedMechanicCode}.
 */
public class SzerelokFormX extends WorkshopMasterForm {
    public static final String NAME = "SzerelokFormX";

    static final Master MASTER = new Master(NAME, "Szerelők adatai - Kerova", "SzervizModulSzerelok",
            "SzerelöNeve", "SzerelöKódja", true, "Szerelő neve:", "Szerelő kódja:",
            List.of(new GridColumn("Szerelő neve", "SzerelöNeve"), new GridColumn("Szerelő kódja", "SzerelöKódja")),
            "SzerelöNeve", "SzerelöKódja",
            // a text left over from the vehicle form, kept
            "Járművekbe belépés",
            "Szerelők új adat", "Szerelő kiválasztás", "Szerelőt töröl",
            "SZERELŐK ", "SzerelokNyomFormX",
            List.of(new PrintColumn("SzerelöNeve", "Szerelő neve", 3), new PrintColumn("SzerelöKódja", "Szerelő kódja", 2)));

    /** The mechanic's code, bound to {@code SzerelöKódja}. */
    public final TextBox Text3 = (TextBox) secondField;

    public SzerelokFormX() {
        super(MASTER);
    }

    /** The name and the code of the current row. */
    @Override
    protected void handOver() {
        Globals.PickedMechanicName = current("SzerelöNeve");
        Globals.PickedMechanicCode = current("SzerelöKódja");
    }
}
