package kerova.partners;

import kerova.core.print.ListPageForm;
import kerova.core.print.PageFont;

/**
 * The page form of the customer list of Part 4.5 (the pattern of Part 4.2): the heading
 * "CÍMZETTEK-VÁSÁRLÓK" on every page, "Kiadva: " and today, "Lapszám: " and the page number, and 22
 * lines of six labels: name, post code, country mark, town, street, phone " / " fax.
 */
public class CimzettNyomFormX extends ListPageForm {
    public static final String NAME = "CimzettNyomFormX";
    /** The preview window's title (ours: the Part names none). */
    public static final String TITLE = "Címzettek-vásárlók listája";
    public static final String HEADING = "CÍMZETTEK-VÁSÁRLÓK";
    public static final int LINES = 22;

    public CimzettNyomFormX() {
        super(NAME, TITLE, HEADING, LINES, PageFont.BODY,
                new Column("cimnev", "Név", 3.2),
                new Column("cimirszam", "Irsz.", 0.8),
                new Column("cimorszag", "Ország", 0.8),
                new Column("cimszekhely", "Székhely", 1.8),
                new Column("cimcim", "Cím", 2.6),
                new Column("cimTelefon", "Telefon / Fax", 2.4));
        pageText = LAPSZAM;
    }
}
