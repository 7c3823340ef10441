package kerova.trips;

/** Part 3.5: the people carried on a group of trips, {@code UtakSzallitottSzemely}. */
public class UtakSzallitottSzemelyekFormX extends GroupAttachmentForm {
    public static final String NAME = "UtakSzallitottSzemelyekFormX";
    public static final String TITLE = "Szállított személyek felvitele - Kerova";
    public static final String SOURCE = "select * from UtakSzallitottSzemely";

    public UtakSzallitottSzemelyekFormX() {
        super(NAME, TITLE, SOURCE, "Személy neve:",
                "Személy neve", "SzállitottSzemélyNeve", "Csoportazonosító", "UtakCsoportAzonosito");
        DBGrid1.setCaption("Szállított személyek");
    }
}
