package kerova.core.db.sql;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.util.ArrayList;
import java.util.List;
import java.util.Optional;
import java.util.stream.Stream;
import kerova.core.db.Catalog;
import kerova.core.db.DaoException;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

/**
 * Every SQL statement that the spec quotes, extracted by hand (statements that a handler finishes
 * with a value carry sample values), parses and binds to its table's columns in the catalogue.
 */
class SpecStatementsTest {

    static final String ARRIVAL = "SELECT *, format(dátum + timeserial(LEFT(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2),"
            + "  right(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2), 0), 'YYYY/MM/DD HH:NN:SS') From Utak ORDER BY"
            + " GkVezetöNeve, Dátum DESC, format(dátum + timeserial(LEFT(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2), "
            + " right(Format(ÉrkezésIdeje, '00.00;0;0;0'), 2), 0), 'YYYY/MM/DD HH:NN:SS') DESC";

    static List<String> statements() {
        List<String> s = new ArrayList<>();
        // Part 1.1 dialect table
        s.add("select * from jarmuvek where MuszakiVizsgaDatum <= #3/31/2013#");
        s.add("select * from Cikkszám where megnevezés LIKE 'ab*' order by megnevezés, cikkszám");
        s.add("select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség) as UzFt from Utak"
                + " where CsoportAzonositó = '2013031530600'");
        s.add("select str(dátum) as Nap, honnan, hova, megnevezés from Utak");
        s.add("select * from Utak where year(dátum) = 2013 and month(dátum) = 3");
        s.add(ARRIVAL);
        s.add("select TávolságKM as Kilométer, KezdöZáró, str(dátum) as Nap, honnan, hova, megnevezés,"
                + " FogyasztottLiter, Üzemanyagköltség from Utak");
        s.add("update cikkszám set BRUTTO = NETTO * (1 + (AFA / 100)) where AFA = 27");
        // Part 1.2
        s.add("select * from MennyisegiEgyseg where Állandó <> 0");
        s.add("select * from jarmuvek");
        s.add("select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
        // Part 2.1, 2.2, 2.3
        s.add("select * from Jarmuvek order by recordID");
        s.add("select BerNev, recordID from beraktar order by BerNev");
        s.add("select * from jarmuvek where MuszakiVizsgaDatum <= #11/5/2026#");
        s.add("select * from JarmuvekArchiv order by recordID");
        // Part 3.1, 3.2
        s.add("select * from Utak order by Dátum, IndulásIdeje");
        s.add(" select sum(TávolságKm) from Utak");
        s.add("select * from Utak order by Dátum Desc");
        s.add("select frsz,honnan,hova from utak");
        s.add("select * from Utak where CsoportAzonositó = '2013031530600' order by Dátum, IndulásIdeje");
        s.add("select * from Utak order by Dátum, ÉrkezésIdeje");
        s.add("select * from Utak where Dátum = #3/5/2013#");
        s.add("select str(dátum) as Nap, honnan, hova, megnevezés from Utak where CsoportAzonositó = '2013031530600'"
                + " order by Dátum, IndulásIdeje");
        s.add("select sum(TávolságKm) as tav from Utak where CsoportAzonositó = '2013031530600'");
        s.add("select sum(TávolságKm)as tav from Utak where CsoportAzonositó = '2013031530600'");
        // Part 3.4, 3.5, 3.6
        s.add("select * from Vezetok order by VezetöNeve");
        s.add("select * from Vezetok where Aktiv = False order by VezetöNeve");
        s.add("select * from MegnevezesTorzs order by Megnevezés");
        s.add("select * from UtakSzallitottSzemely");
        s.add("select * from UtakCsatoltOkmany");
        s.add("select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '2013031530600'");
        s.add("select * from UtakKilometerNyt order by Dátum");
        String km = "select * from UtakKilometerNyt where Dátum >= #3/1/2013# and Dátum <= #3/31/2013";
        s.add(km + "# and VezetöNeve = 'Kovács János' and GkFrsz = 'ABC-123'");
        s.add(km + "# and VezetöNeve = 'Kovács János'");
        s.add(km + "# and GkFrsz = 'ABC-123'");
        // Part 4.5
        s.add("select * from Címzett where NemAktiv = False and Alvállalkozó = True order by Cimnev");
        s.add("select * from Címzett order by CimNev");
        s.add("select * from Címzett where NemAktiv = False order by Cimnev");
        s.add("select * from Címzett where NemAktiv = True order by Cimnev");
        s.add("select * from Címzett order by Cimnev");
        s.add("select * from Címzett order by recordID");
        // Part 5.1
        s.add("select distinct FRSZ from Utak");
        s.add("select distinct GkVezetöNeve from Utak");
        s.add("select distinct FRSZ from Utak order by FRSZ");
        s.add("select distinct GkVezetöNeve from Utak order by GkVezetöNeve");
        s.add("select distinct CégNév from Utak order by CégNév");
        s.add("select * from Utak order by Dátum");
        s.add("select TávolságKM as Kilométer, str(dátum) as Nap, honnan, hova, megnevezés from Utak");
        String head = "select TávolságKM as KM, str(dátum) as Nap, honnan, hova, megnevezés, FogyasztottLiter,"
                + " Üzemanyagköltség from Utak where year(dátum) = ";
        s.add(head + "2013 order by Dátum");
        s.add(head + "2013 and month(dátum) = 3 order by Dátum");
        s.add(head + "2013 and month(dátum) = 3 and day(dátum) = 5 order by Dátum");
        s.add("select TávolságKM as Kilométer, str(dátum) as Nap, honnan, hova, megnevezés, FogyasztottLiter,"
                + " Üzemanyagköltség from Utak");
        s.add("select * from Utak where Dátum >= #3/1/2013# and Dátum <= #3/31/2013#");
        String right = "select * from Utak where Dátum <= #3/31/2013# and Dátum >= #3/1/2013";
        s.add(right + "# and FRSZ = 'ABC-123'");
        s.add(right + "# and FRSZ = 'ABC-123' and GkVezetöNeve = 'Kovács János'");
        s.add(right + "# and FRSZ = 'ABC-123' and GkVezetöNeve = 'Kovács János' and CégNév = 'Fűzfa Kft.'");
        s.add(right + "# and GkVezetöNeve = 'Kovács János' and CégNév = 'Fűzfa Kft.'");
        s.add(right + "# and CégNév = 'Fűzfa Kft.'");
        s.add(right + "# and GkVezetöNeve = 'Kovács János'");
        s.add("select TávolságKM as Kilométer, str(dátum) as Nap, honnan, hova, megnevezés, KezdöZáró as TénylegesKM,"
                + " FogyasztottLiter, Üzemanyagköltség from Utak");
        // Part 5.2
        s.add("select * from Utak where Napidijas = True and Dátum = #3/5/2013# order by GkVezetöNeve, Dátum");
        s.add("select distinct GkVezetöNeve from Utak where Dátum = #3/5/2013# and GkVezetöNeve = 'Kovács János'");
        s.add("select * from Utak where Napidijas = True and Dátum >= #3/1/2013# and Dátum <=  #3/31/2013#"
                + " order by GkVezetöNeve, Dátum");
        s.add("select distinct GkVezetöNeve from Utak where Dátum >= #3/1/2013# and Dátum <=  #3/31/2013#"
                + " and GkVezetöNeve = 'Kovács János'");
        s.add("select * from Utak where Napidijas = true and GkVezetöNeve = 'Kovács János' and Dátum = #3/5/2013#"
                + " order by GkVezetöNeve, Dátum");
        s.add("select * from Utak where Napidijas = true and GkVezetöNeve = 'Kovács János' and Dátum >= #3/1/2013#"
                + " and Dátum <=  #3/31/2013# order by GkVezetöNeve, Dátum");
        // Part 6.1, 6.3, 6.4
        s.add("select * from SzervizModul where JármüID = 12");
        s.add("select * from SzervizModulAlkatreszek where JármüID = 12 and recordID = '202615301'");
        s.add("select * from Cikkszám where Cikkszám = 'C1' and Megnevezés = 'abroncs'");
        s.add("select * from SzervizModulAlkatreszek where JármüID = 12");
        s.add("select * from KIVET order by KIDATUM");
        // Part 7.1, 7.2, 7.4
        s.add("select * from Cikkszám order by megnevezés");
        s.add("select * from cikkszám where cikkszám=\"0\"");
        s.add("select * from Vámtarifaszám order by vámtarifaszám");
        s.add("select * from Cikkszám where Aktiv = False order by megnevezés");
        for (String flag : List.of("BIZONYLA", "TARTOSAN", "KEROVA", "POLCRAKW", "FOGASTOR")) {
            s.add("select * from Cikkszám where " + flag + " = True order by megnevezés");
        }
        s.add("select * from Cikkszám where cikkszám = 'C1' order by megnevezés");
        s.add("select * from Cikkszám where megnevezés = 'abroncs' order by megnevezés");
        s.add("select * from Cikkszám where vámtarifaszám = '4011' order by VevoNeve, megnevezés");
        s.add("select * from Cikkszám where VevoNeve = 'Fűzfa Kft.' order by megnevezés");
        s.add("select * from Cikkszám where megnevezés LIKE 'ab*' order by megnevezés, cikkszám");
        s.add("select * from Cikkszám where cikkszám LIKE 'C*' order by cikkszám, megnevezés");
        s.add("select * from Cikkszám where SZJ LIKE '12*' order by SZJ, megnevezés");
        s.add("select * from Cikkszám where VevoNeve LIKE 'Fű*' order by VevoNeve, megnevezés");
        s.add("select * from cikkszám where AFA = 25");
        s.add("update cikkszám set AFA = 27 where AFA = 25");
        return s;
    }

    /** The Find filters of the spec, with sample texts. */
    static List<String[]> filters() {
        List<String[]> f = new ArrayList<>();
        f.add(new String[] {"Jarmuvek", "[GkFrsz] like \"AB*\""});
        f.add(new String[] {"Jarmuvek", "[GkFrsz] = \"ABC-123\""});
        f.add(new String[] {"Jarmuvek", "[GkFrsz] = 'ABC-123'"});
        f.add(new String[] {"Jarmuvek", "[recordID] = 12"});
        f.add(new String[] {"Jarmuvek", "[recordID] = '12'"});
        f.add(new String[] {"MegnevezesTorzs", "[Megnevezés] = 'Anyagbeszerzés'"});
        f.add(new String[] {"UtakTavolsag", "[Sorszám] = 3"});
        f.add(new String[] {"UtakTavolsag", "[Honnan] like \"Bud*\""});
        f.add(new String[] {"UtakTavolsag", "[Hova] like \"Győ*\""});
        f.add(new String[] {"Vezetok", "[VezetöNeve] like \"Kov*\""});
        f.add(new String[] {"Utak", "[FRSZ] like \"ABC*\""});
        f.add(new String[] {"Utak", "[GkVezetöNeve] like \"Kov*\""});
        f.add(new String[] {"Jarmuvek", "[GkTipus] like \"Ford*\""});
        f.add(new String[] {"Vezetok", "[PartnerID] = 4"});
        f.add(new String[] {"beraktar", "[BerNev] like \"Fű*\""});
        f.add(new String[] {"Orszagjel", "[Ország] like \"H*\""});
        f.add(new String[] {"beraktar", "[recordID] = 7"});
        f.add(new String[] {"SZAMLA", "[SZAMLASOR] = 1024"});
        f.add(new String[] {"Címzett", "[CimNev] like \"Fű*\""});
        f.add(new String[] {"Címzett", "[CimNev] = \"Fűzfa Kft.\""});
        f.add(new String[] {"Címzett", "[recordID] = 3"});
        f.add(new String[] {"SzervizModulSzerelok", "[SzerelöNeve] like \"Nagy*\""});
        f.add(new String[] {"SzervizModulSzerelok", "[SzerelöKódja] = \"N1\""});
        f.add(new String[] {"Cikkszám", "[Cikkszám] like \"C*\""});
        f.add(new String[] {"Cikkszám", "[megnevezés] like \"ab*\""});
        f.add(new String[] {"Vámtarifaszám", "[vámtarifaszám] like \"*4011\""});
        f.add(new String[] {"KIVET", "[MEGNEVEZES] like \"ab*\""});
        f.add(new String[] {"KIVET", "[ARUKOD] like \"12*\""});
        return f;
    }

    static Optional<Catalog.Table> table(String name) {
        for (Catalog.DbFile f : Catalog.allFiles()) {
            Optional<Catalog.Table> t = f.table(name);
            if (t.isPresent()) {
                return t;
            }
        }
        return Optional.empty();
    }

    @ParameterizedTest
    @MethodSource("statements")
    void parsesAndBindsToItsTable(String sql) {
        Statement st = Sql.parse(sql);
        Catalog.Table t = table(st.tableName()).orElseThrow(() -> new AssertionError("no table " + st.tableName()));
        List<String> cols = t.columnNames();
        if (st instanceof SelectStatement sel) {
            BoundSelect b = sel.bind(cols);
            assertThat(b.outputColumns()).isNotEmpty();
            Object[] empty = new Object[cols.size()];
            assertThat(b.matches(empty)).isIn(true, false); // runs over an all-Null row without error
            if (b.isSnapshot()) {
                assertThat(b.snapshot(List.<Object[]>of(empty))).isNotNull();
            } else {
                assertThat(b.extras(empty)).hasSize(b.outputColumns().size() - cols.size());
            }
        } else {
            BoundUpdate u = ((UpdateStatement) st).bind(cols);
            assertThat(u.matches(new Object[cols.size()])).isFalse();
        }
    }

    @ParameterizedTest
    @MethodSource("filters")
    void findFiltersParseAndBind(String tableName, String filter) {
        List<String> cols = table(tableName).orElseThrow().columnNames();
        BoundCondition c = Sql.parseCondition(filter).bind(cols);
        assertThat(c.neededColumns()).hasSize(1);
        assertThat(c.matches(new Object[cols.size()])).isFalse();
    }

    static Stream<String> reminderStatementsOnParameterColumns() {
        return Stream.of("TachográfHitelesNap", "TachográfOMHEngNap", "BiztosításZöldkNap")
                .map(c -> "select * from jarmuvek where " + c + " <= #3/31/2013#");
    }

    /** Part 1.2: three reminders name columns that Jarmuvek doesn't have; Jet asks for a parameter. */
    @ParameterizedTest
    @MethodSource("reminderStatementsOnParameterColumns")
    void remindersOnParameterColumnsFailAsJetDoes(String sql) {
        SelectStatement st = (SelectStatement) Sql.parse(sql);
        List<String> cols = table("Jarmuvek").orElseThrow().columnNames();
        assertThatThrownBy(() -> st.bind(cols)).isInstanceOfSatisfying(DaoException.class,
                e -> assertThat(e.getNumber()).isEqualTo(DaoException.TOO_FEW_PARAMETERS));
    }
}
