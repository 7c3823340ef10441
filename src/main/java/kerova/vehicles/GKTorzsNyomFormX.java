package kerova.vehicles;

import kerova.core.print.SheetPageForm;

/**
 * The page form of Part 2.2 (a page frame of Part 1.4): the sheet of one vehicle, sixteen lines
 * {@code Sor(1)} … {@code Sor(16)}, each a text followed by the value, and the last line
 * {@code Kiadva} ("Kiadva: " and today); the buttons "Tovább", "Nyomtat", "Mégse". The lines are
 * filled by {@link VehicleSheets}.
 */
public class GKTorzsNyomFormX extends SheetPageForm {
    public static final String NAME = "GKTorzsNyomFormX";
    /** The preview window's title (ours: the Part names none). */
    public static final String TITLE = "Gépjármű adatlap";
    /** The heading on the paper (ours: the layout is left to the implementer). */
    public static final String HEADING = "GÉPJÁRMŰ ADATLAP";
    public static final int LINES = 16;

    public GKTorzsNyomFormX() {
        super(NAME, TITLE, HEADING, LINES);
    }
}
