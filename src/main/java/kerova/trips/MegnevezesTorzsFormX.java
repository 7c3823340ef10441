package kerova.trips;

import kerova.core.form.Forms;
import kerova.core.vb.Err;

/**
 * Part 3.5: the trip purposes on {@code MegnevezesTorzs}, which fill the purpose combo of the trip
 * form (Part 3.1). Save, delete, refresh and leaving are the pattern of {@link SmallMasterForm}. The
 * trip form's reload of its combo, with its warning on an empty table, belongs to Part 3.1.
 */
public class MegnevezesTorzsFormX extends SmallMasterForm {
    public static final String NAME = "MegnevezesTorzsFormX";
    public static final String TITLE = "Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova";
    public static final String SOURCE = "select * from MegnevezesTorzs order by Megnevezés";

    public MegnevezesTorzsFormX() {
        super(NAME, TITLE, SOURCE, "Megnevezés:", "Megnevezés", false,
                "Megnevezés", "Megnevezés", "Sorszám", "Sorszám");
        DBGrid1.setCaption("Megnevezések");
    }

    /** Opening: an empty table gets a row at once (add, update, move last); otherwise move first. Focus Text1. */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            if (count(VezetoData) < 1) {
                addRow();
            } else {
                Err.resume(() -> rs(VezetoData).MoveFirst());
                Err.Clear();
            }
            DBGrid1.Refresh();
            focusText1();
        } finally {
            Forms.arrow();
        }
    }

    /** New row: add, update, move last, focus Text1. */
    @Override
    void UjAdat_Click() {
        Forms.hourglass();
        try {
            addRow();
            DBGrid1.Refresh();
            focusText1();
        } finally {
            Forms.arrow();
        }
    }
}
