package kerova.workshop;

import java.util.ArrayList;
import java.util.List;
import kerova.core.Globals;
import kerova.core.form.Label;

/**
 * Part 6.2: the parts' own master, a direct view of {@code SzervizModulAlkatreszek}. No operation of the
 * system opens it (the main menu's parts entry goes to Part 7.1); it stands complete. A near copy of
 * {@link MunkakFormX}: its {@code Label5} is bound to {@code MunkaMegnevezés}, which the table lacks,
 * its print title is that of the jobs, and a pick leaves {@code PickedJobName}: all as they stand.
 */
public class AlkatreszekFormX extends WorkshopMasterForm {
    public static final String NAME = "AlkatreszekFormX";

    /** The columns of the parts grid of Part 6.1 (positions 0 to 55). */
    static final List<String> PART_COLUMNS = List.of(
            "cikkszám", "megnevezés", "vámtarifaszám", "mennyiségi egység", "hiba", "tarifális megnevezés",
            "flag", "NettoSuly", "ErzekenyAru", "ARUCSOPORT", "NETTO", "AFA", "MENNYISEG", "BRUTTO", "GYARISZAM",
            "GARANCIALE", "JOVEDEKADO", "FOGYASZTOA", "GONGYOLEG", "SZJ", "PENZNEM", "TAM", "BESZNETTO",
            "ARRESSZAZA", "MEGJEGYZES", "ARUKOD", "BruttoSuly", "KulonosMennyiseg", "KulonosMertekegys",
            "GaranciaKezd", "Származó", "KulonosMertekegyseg", "Tárhely1", "Tárhely2", "Tárhely3",
            "GarancialevélSzáma", "FotoPath", "VevoNeve", "VevoRecordID", "EgységnyiSúly", "TermékdíjTétel",
            "TermékdíjKód", "KedvezménySzázalék", "KVTDMentesség", "MentességMértékeSzázalék", "Azonosító",
            "TermékCsoportAdónemkód", "TermékdijasSuly", "AdómértékMennyEgys", "AdómértékFt", "Vonalkód",
            "FolyamatosTelj", "KVTDAdónemKód", "KVTDKedvezmény", "DarabszámCsomagban", "JármüID");

    /** The list: all the columns of Part 6.1 except {@code AFA}, {@code SZJ}, {@code TAM}. */
    static List<GridColumn> listColumns() {
        List<GridColumn> out = new ArrayList<>();
        for (String c : PART_COLUMNS) {
            if (!List.of("AFA", "SZJ", "TAM").contains(c)) {
                out.add(new GridColumn(c, c));
            }
        }
        return out;
    }

    static final Master MASTER = new Master(NAME, "Alkatrészek saját törzs - Kerova", "SzervizModulAlkatreszek",
            "megnevezés", "cikkszám", false, "Megnevezés:", "Cikkszám:", listColumns(),
            "Cikkszám", null,
            // the Part quotes no opening or delete text for this form: its own name (docs/DECISIONS.md)
            NAME,
            "Alkatrész új adat", "Alkatrésztörzs kiválasztás", NAME,
            // the print title of the jobs, kept
            "MUNKÁK TÖRZS ", "AlkatreszekNyomFormX",
            List.of(new PrintColumn("cikkszám", "Cikkszám", 2), new PrintColumn("megnevezés", "Megnevezés", 4),
                    new PrintColumn("mennyiségi egység", "Me. egység", 1), new PrintColumn("NETTO", "Nettó", 1),
                    new PrintColumn("PENZNEM", "Pénznem", 1)));

    /** The part's article number, a label bound to {@code cikkszám}. */
    public final Label Label4 = (Label) secondField;
    /** Bound to {@code MunkaMegnevezés}, which {@code SzervizModulAlkatreszek} lacks: it stays empty. */
    public Label Label5;

    public AlkatreszekFormX() {
        super(MASTER);
    }

    @Override
    protected void addExtraControls() {
        Label5 = add(new Label("Label5"));
        Label5.layout = "skip, wrap";
        Label5.bind(NyelvData, "MunkaMegnevezés");
    }

    /** The part's name goes to the jobs' slot, as the Part's table says. */
    @Override
    protected void handOver() {
        Globals.PickedJobName = current("megnevezés");
    }
}
