package kerova.trips;

/**
 * Part 3.5: the documents attached to a group of trips. Its design source is
 * {@code UtakCsatoltOkmany} and its grid shows {@code CsatoltOkmány}, but the opening points it to
 * the passenger query of {@link GroupAttachmentForm} and {@code Text1} is bound to
 * {@code SzállitottSzemélyNeve}: on that path it shows the passengers of the group, and the rows it
 * adds go to the passenger table. Kept as the Part states it (no decision to mend it; DECISIONS).
 */
public class UtakCsatoltOkmanyokFormX extends GroupAttachmentForm {
    public static final String NAME = "UtakCsatoltOkmanyokFormX";
    public static final String TITLE = "Csatolt okmányok felvitele - Kerova";
    public static final String SOURCE = "select * from UtakCsatoltOkmany";

    public UtakCsatoltOkmanyokFormX() {
        super(NAME, TITLE, SOURCE, "Csatolt okmány:",
                "Csatolt okmány", "CsatoltOkmány", "Csoportazonosító", "UtakCsoportAzonosito");
        DBGrid1.setCaption("Csatolt okmányok");
    }
}
