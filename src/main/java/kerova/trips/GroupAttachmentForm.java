package kerova.trips;

import kerova.core.form.Forms;
import kerova.core.vb.VbConst;

/**
 * Part 3.5: the passengers and the documents of one group of trips, "the same code in two forms".
 * Both are keyed by the group id of Part 3.1 ({@link TripGlobals#CurrentGroupID}), not by the trip;
 * rows of a group are never removed with the trips. On the group path both forms query the
 * passenger table: the documents form shows, and adds to, the passengers of the group (kept as
 * the Part says; see DECISIONS).
 */
public abstract class GroupAttachmentForm extends SmallMasterForm {
    /** The source on the group path, in both forms; the id is quoted with no escaping. */
    public static final String GROUP_SOURCE = "select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '";
    public static final String NO_GROUP_TEXT = "Csoportazonosító nélkül nem lehet személyt felvinni!";
    public static final String NO_GROUP_TITLE = "FIGYELEM! Kezelői hiba! Válasszon utat először!";

    protected GroupAttachmentForm(String name, String title, String source, String textCaption,
            String... gridColumns) {
        // Text1 is bound to the passenger's name in both forms
        super(name, title, source, textCaption, "SzállitottSzemélyNeve", true, gridColumns);
    }

    /**
     * Opening. 1. With a program-wide group id set and not empty, the source becomes the group's
     * passengers, refreshed; 2. with no rows then: add a row, update, move last, Label3 := the id,
     * focus Text1. 3. With no group id: the critical message, and the form is left.
     */
    @Override
    protected void Form_Activate() {
        String id = TripGlobals.CurrentGroupID;
        if (id == null || id.isEmpty()) {
            // 3
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(NO_GROUP_TEXT, VbConst.vbCritical, NO_GROUP_TITLE);
            Kilepes_Click();
            return;
        }
        Forms.hourglass();
        try {
            // 1
            VezetoData.setRecordSource(GROUP_SOURCE + id + "'");
            Frissites_Click();
            // 2
            if (count(VezetoData) < 1 && addRow()) {
                Label3.setCaption(id);
                DBGrid1.Refresh();
                focusText1();
            }
        } finally {
            Forms.arrow();
        }
    }

    /** New row: add, update, move last, Label3 := the group id; focus Text1. */
    @Override
    void UjAdat_Click() {
        Forms.hourglass();
        try {
            if (addRow()) {
                Label3.setCaption(TripGlobals.CurrentGroupID);
            }
            DBGrid1.Refresh();
            focusText1();
        } finally {
            Forms.arrow();
        }
    }
}
