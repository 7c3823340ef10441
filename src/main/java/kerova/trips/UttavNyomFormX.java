package kerova.trips;

import kerova.core.print.Align;
import kerova.core.print.ListPageForm;
import kerova.core.vb.Conv;
import kerova.core.vb.VbClock;

/**
 * The page form of the route list (Parts 3.3 and 1.4): the title "T Á V O L S Á G O K", three
 * column heads, 21 row lines of the labels {@code Honnan(n)}, {@code Hova(n)}, {@code TávolságKm(n)},
 * and the line "Oldal, Dátum" ({@code Oldal}) holding the page number + ". oldal          " and the
 * date; the buttons "Tovább", "Nyomtat", "Mégse". Filled by
 * {@link GkUtakTavolsagaTorzsFormX#GTNyom_Click}.
 */
public class UttavNyomFormX extends ListPageForm {
    public static final String NAME = "UttavNyomFormX";
    /** The preview window's title (ours: the Part names none). */
    public static final String CAPTION = "Távolságok nyomtatása";
    public static final String HEADING = "T Á V O L S Á G O K";
    public static final int ROWS = 21;

    public UttavNyomFormX() {
        super(NAME, CAPTION, HEADING, ROWS,
                new Column("Honnan", "HONNAN:", 4),
                new Column("Hova", "HOVÁ:", 4),
                new Column("TávolságKm", "TÁVOLSÁG (KM):", 2, Align.RIGHT));
        // one line holds the page and the date; the separate issue label stays empty
        pageText = n -> OLDAL.apply(n) + Conv.dateText(VbClock.today());
        dateText = () -> "";
    }

    /** The line "Oldal, Dátum" of the page shown. */
    public String pageLine() {
        return Oldal.Caption();
    }
}
