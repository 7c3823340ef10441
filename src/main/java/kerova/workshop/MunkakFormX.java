package kerova.workshop;

import java.util.List;
import kerova.core.Globals;
import kerova.core.form.Label;

/**
 * Part 6.2: the jobs of {@code SzervizModulMunkak}, opened by {@code Command2} of the service form
 * (Part 6.1). The design is {@link WorkshopMasterForm}'s; here stands this form's column of the Part's
 * table. A pick leaves {@code PickedJobName}.
 */
public class MunkakFormX extends WorkshopMasterForm {
    public static final String NAME = "MunkakFormX";

    static final Master MASTER = new Master(NAME, "Munkák törzs - Kerova", "SzervizModulMunkak",
            "MunkaMegnevezés", "MunkaKód", false, "Munka megnevezése:", "Munkakód:",
            List.of(new GridColumn("MunkaMegnevezés", "MunkaMegnevezés"), new GridColumn("MunkaKód", "MunkaKód")),
            "MunkaMegnevezés", null,
            // the Part quotes no opening or delete text for this form: its own name (docs/DECISIONS.md)
            NAME,
            "Munkatörzs új adat", "Munka kiválasztás", NAME,
            "MUNKÁK TÖRZS ", "MunkakNyomFormX",
            List.of(new PrintColumn("MunkaMegnevezés", "Munka megnevezése", 4), new PrintColumn("MunkaKód", "Munkakód", 1)));

    /** The job's code, a label bound to {@code MunkaKód}. */
    public final Label Label4 = (Label) secondField;

    public MunkakFormX() {
        super(MASTER);
    }

    /** The job's name of the current row. */
    @Override
    protected void handOver() {
        Globals.PickedJobName = current("MunkaMegnevezés");
    }
}
