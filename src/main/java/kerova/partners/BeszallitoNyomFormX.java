package kerova.partners;

import kerova.core.db.DataControl;
import kerova.core.form.Forms;
import kerova.core.print.ListPageForm;
import kerova.core.print.PageFont;
import kerova.core.print.PagedList;

/**
 * Part 4.2: the page form of the partner list (a page frame of Part 1.4), a sheet of 22 line slots
 * of 6 labels ({@code BerNev(n)}, {@code BerIrszam(n)}, {@code BerOrszag(n)}, {@code BerSzekhely(n)},
 * {@code BerCim(n)}, {@code BerTelefonFax(n)}), the heading label {@code Cim}, the issue date
 * {@code Kiadva} and the page number {@code Oldal} ("Lapszám: " and the number); the buttons
 * "Tovább", "Nyomtat", "Mégse". The list routine that fills it is {@link #printList}, run by the
 * menu entry {@code BeszNyom} of {@link BeraktarozokFormX}.
 */
public class BeszallitoNyomFormX extends ListPageForm {
    public static final String NAME = "BeszallitoNyomFormX";
    /** The preview window's title (ours: the Part names none). */
    public static final String CAPTION = "Beszállítók, partnerek nyomtatása";
    /** The heading of the first page. */
    public static final String FIRST_HEADING = "BESZÁLLÍTÓK-PARTNEREK";
    /** The heading of every later page: the first page's differs, as settled (Part 4.2, step 4). */
    public static final String NEXT_HEADING = "BESZÁLLÍTÓK-BERAKTÁROZÓK";
    public static final int ROWS = 22;
    /** Between the phone and the fax in the sixth slot. */
    public static final String PHONE_FAX_SEPARATOR = " / ";

    public BeszallitoNyomFormX() {
        // six columns on A4 portrait: the smaller body font; the column heads are ours
        super(NAME, CAPTION, FIRST_HEADING, ROWS, PageFont.SMALL,
                new Column("BerNev", "NÉV:", 4.6),
                new Column("BerIrszam", "IRSZ.:", 1.4),
                new Column("BerOrszag", "ORSZ.:", 1.5),
                new Column("BerSzekhely", "SZÉKHELY:", 2.7),
                new Column("BerCim", "CÍM:", 4),
                new Column("BerTelefonFax", "TELEFON / FAX:", 5));
        heading = n -> n == 1 ? FIRST_HEADING : NEXT_HEADING;
        pageText = LAPSZAM;
    }

    /** The heading label of the page shown. */
    public String headingText() {
        return Cim.Caption();
    }

    /** The page label of the page shown ("Lapszám: 1"). */
    public String pageLabel() {
        return Oldal.Caption();
    }

    /**
     * The partner list (Part 4.2, steps 1 to 5), over the rows of {@code Beraktarozok} in its own
     * order: no filter, no choice of columns, no order of its own.
     *
     * <ol>
     * <li>Hourglass. No rows: beep, "Nincs nyomtatandó adat!" under "FIGYELEM!", OK only; the
     * cursor isn't moved.</li>
     * <li>The first row; the page form loaded; page 1 with the heading "BESZÁLLÍTÓK-PARTNEREK",
     * "Kiadva: " and today, "Lapszám: 1", every slot emptied.</li>
     * <li>One line per row: name, post code, country mark, town, address, phone + " / " + fax, a
     * null as empty text.</li>
     * <li>A full page (22 lines) with rows left: the arrow, the page shown modally; the next page
     * headed "BESZÁLLÍTÓK-BERAKTÁROZÓK", page number + 1, slots emptied. "Mégse" ends the run
     * (Part 1.4, our reading of what the Part leaves open).</li>
     * <li>The last page shown the same way; then {@code Beraktarozok} moves to its last row.</li>
     * </ol>
     */
    public static PagedList.Outcome printList(DataControl Beraktarozok) {
        BeszallitoNyomFormX page = (BeszallitoNyomFormX) Forms.get(NAME);
        return PagedList.list(page, Beraktarozok.Recordset(), r -> new Object[] {
            PagedList.str(r.get("BerNev")),
            PagedList.str(r.get("BerIrszam")),
            PagedList.str(r.get("BerOrszag")),
            PagedList.str(r.get("BerSzekhely")),
            PagedList.str(r.get("BerCim")),
            PagedList.str(r.get("BerTelefon")) + PHONE_FAX_SEPARATOR + PagedList.str(r.get("BerFax"))})
                .beepWhenEmpty()
                .endAt(PagedList.End.LAST)
                .run();
    }
}
