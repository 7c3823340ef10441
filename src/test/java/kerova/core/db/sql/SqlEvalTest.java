package kerova.core.db.sql;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.math.BigDecimal;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;
import java.util.Map;
import kerova.core.db.DaoException;
import org.junit.jupiter.api.Test;

/** Evaluation of the dialect over in-memory rows of a trip table shaped like Utak. */
class SqlEvalTest {

    static final List<String> UTAK = List.of("FRSZ", "GkVezetöNeve", "Dátum", "Honnan", "Hova", "TávolságKm",
            "IndulásIdeje", "ÉrkezésIdeje", "CsoportAzonositó", "Megnevezés", "FogyasztottLiter", "Üzemanyagköltség",
            "Napidijas", "CégNév", "KezdöZáró");

    static LocalDateTime day(int y, int m, int d) {
        return LocalDateTime.of(y, m, d, 0, 0);
    }

    static Object[] trip(String plate, String driver, LocalDateTime date, String from, String to, Object km,
                         Object dep, Object arr, String group, Object litres, Object cost) {
        return new Object[] {plate, driver, date, from, to, km, dep, arr, group, "Anyagbeszerzés", litres, cost,
            Boolean.TRUE, "Fűzfa Kft.", null};
    }

    static List<Object[]> trips() {
        List<Object[]> rows = new ArrayList<>();
        rows.add(trip("ABC-123", "Kovács János", day(2013, 3, 5), "Budapest", "Győr", 120.0, 8.30, 10.15, "G1", 8.4,
                new BigDecimal("5208")));
        rows.add(trip("ABC-123", "Kovács János", day(2013, 3, 5), "Győr", "Budapest", 121.0, 15.00, 16.45, "G1", 8.5,
                new BigDecimal("5270")));
        rows.add(trip("KŐB-456", "Szőke Ödön", day(2013, 3, 6), "Pécs", "Szeged", 190.0, 7.05, 9.50, "G2", 13.3,
                new BigDecimal("8246")));
        rows.add(trip("kőb-456", "Szőke Ödön", day(2013, 3, 6), "Szeged", "Pécs", 190.0, 14.00, 16.59, "G2", 13.3,
                new BigDecimal("8246")));
        rows.add(trip("ABC-123", "Kovács János", day(2013, 4, 2), "Budapest", "Eger", 140.0, 6.00, 8.05, "G3", 9.8,
                new BigDecimal("6076")));
        rows.add(trip("GYŐ-789", "Czakó Béla", null, "Eger", "Vác", null, null, null, "G4", null, null));
        return rows;
    }

    static BoundSelect select(String sql) {
        return ((SelectStatement) Sql.parse(sql)).bind(UTAK);
    }

    /** Runs a select as the record store does: a snapshot, or filter + sort of a dynaset. */
    static List<Object[]> run(String sql) {
        BoundSelect b = select(sql);
        if (b.isSnapshot()) {
            return b.snapshot(trips());
        }
        List<Object[]> out = new ArrayList<>();
        for (Object[] r : trips()) {
            if (b.matches(r)) {
                out.add(r);
            }
        }
        Comparator<Object[]> order = b.ordering();
        if (order != null) {
            out.sort(order);
        }
        return out;
    }

    static List<Object> column(List<Object[]> rows, int index) {
        List<Object> out = new ArrayList<>();
        for (Object[] r : rows) {
            out.add(r[index]);
        }
        return out;
    }

    static int col(String name) {
        return UTAK.indexOf(name);
    }

    static int errorOf(Runnable r) {
        try {
            r.run();
        } catch (DaoException e) {
            return e.getNumber();
        }
        throw new AssertionError("no DaoException");
    }

    // ---- aggregates ----

    @Test
    void theSumAliasesOfAGroup() {
        BoundSelect b = select("select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség)"
                + " as UzFt from Utak where CsoportAzonositó = 'G1'");
        assertThat(b.isSnapshot()).isTrue();
        assertThat(b.outputColumns()).containsExactly("tav", "FoL", "UzFt");
        List<Object[]> rows = b.snapshot(trips());
        assertThat(rows).hasSize(1);
        assertThat(rows.get(0)[0]).isEqualTo(241.0);
        assertThat((Double) rows.get(0)[1]).isCloseTo(16.9, org.assertj.core.data.Offset.offset(1e-9));
        assertThat(rows.get(0)[2]).isEqualTo(new BigDecimal("10478")); // Currency sums stay exact
    }

    @Test
    void aSumOfNoRowsIsNull() {
        List<Object[]> rows = run("select sum(TávolságKm)as tav from Utak where CsoportAzonositó = 'nincs'");
        assertThat(rows).hasSize(1);
        assertThat(rows.get(0)[0]).isNull();
        assertThat(run("select sum(TávolságKm) as tav from Utak where CsoportAzonositó = 'G4'").get(0)[0]).isNull();
    }

    @Test
    void otherAggregatesAndJetNames() {
        BoundSelect b = select(" select sum(TávolságKm), count(*), count(TávolságKm), min(Dátum), max(Dátum),"
                + " avg(TávolságKm), max(Honnan) from Utak");
        assertThat(b.outputColumns()).containsExactly("Expr1000", "Expr1001", "Expr1002", "Expr1003", "Expr1004",
                "Expr1005", "Expr1006");
        Object[] r = b.snapshot(trips()).get(0);
        assertThat(r).containsExactly(761.0, 6, 5, day(2013, 3, 5), day(2013, 4, 2), 152.2, "Szeged");
        assertThat(run("select count(*) as n from Utak where 1 = 0").get(0)[0]).isEqualTo(0);
        assertThat(run("select sum(TávolságKm) * 2 + 1 as x from Utak").get(0)[0]).isEqualTo(1523.0);
    }

    @Test
    void aBareColumnBesideAnAggregateIsJetError3122() {
        assertThat(errorOf(() -> select("select FRSZ, sum(TávolságKm) from Utak")))
                .isEqualTo(Sql.NOT_PART_OF_AGGREGATE);
        assertThat(errorOf(() -> select("select * from Utak where sum(TávolságKm) > 1")))
                .isEqualTo(Sql.AGGREGATE_NOT_ALLOWED);
    }

    // ---- distinct ----

    @Test
    void selectDistinctIgnoresCaseAndComesSorted() {
        BoundSelect b = select("select distinct FRSZ from Utak");
        assertThat(b.isSnapshot()).isTrue();
        assertThat(b.outputColumns()).containsExactly("FRSZ");
        assertThat(column(b.snapshot(trips()), 0)).containsExactly("ABC-123", "GYŐ-789", "KŐB-456");
        assertThat(column(run("select distinct FRSZ from Utak order by FRSZ desc"), 0))
                .containsExactly("KŐB-456", "GYŐ-789", "ABC-123");
        assertThat(column(run("select distinct GkVezetöNeve from Utak order by GkVezetöNeve"), 0))
                .containsExactly("Czakó Béla", "Kovács János", "Szőke Ödön");
        assertThat(column(run("select distinct GkVezetöNeve from Utak where Dátum >= #3/1/2013# and Dátum <=  "
                + "#3/31/2013# and GkVezetöNeve = 'Kovács János'"), 0)).containsExactly("Kovács János");
    }

    @Test
    void distinctOrderedByAColumnOutsideTheListIsJetError3093() {
        assertThat(errorOf(() -> select("select distinct FRSZ from Utak order by Dátum")))
                .isEqualTo(Sql.ORDER_BY_CONFLICTS_WITH_DISTINCT);
    }

    // ---- dates ----

    @Test
    void yearMonthDayFilters() {
        assertThat(run("select * from Utak where year(dátum) = 2013 and month(dátum) = 3")).hasSize(4);
        assertThat(run("select * from Utak where year(dátum) = 2013 and month(dátum) = 3 and day(dátum) = 6"))
                .hasSize(2);
        assertThat(run("select * from Utak where day(dátum) = 2")).hasSize(1);
        List<Object[]> rows = run("select TávolságKM as KM, str(dátum) as Nap, honnan, hova, megnevezés,"
                + " FogyasztottLiter, Üzemanyagköltség from Utak where year(dátum) = 2013 and month(dátum) = 3"
                + " and day(dátum) = 5 order by Dátum");
        assertThat(column(rows, 1)).containsExactly("2013.03.05.", "2013.03.05.");
    }

    @Test
    void dateLiteralsAreMonthDayYear() {
        assertThat(run("select * from Utak where Dátum = #3/6/2013#")).hasSize(2);
        assertThat(run("select * from Utak where Dátum <= #3/5/2013#")).hasSize(2);
        assertThat(run("select * from Utak where Dátum >= #4/1/2013#")).hasSize(1);
        assertThat(run("select * from Utak where Dátum >= #3/1/2013# and Dátum <= #3/31/2013#")).hasSize(4);
        assertThat(run("select * from Utak where Dátum = #2013-04-02#")).hasSize(1);
        assertThat(run("select * from Utak where Dátum = #6/3/2013#")).isEmpty(); // June, not March
        assertThat(run("select * from Utak where Dátum < #3/5/2013 12:00#")).hasSize(2);
        assertThat(run("select * from Utak where Dátum < #3/5/13#")).isEmpty(); // 13 is 2013
        assertThat(Lexer.parseDate("13/3/2013")).isEqualTo(day(2013, 3, 13)); // Jet reads an impossible month as a day
        assertThat(Lexer.parseDate("8:30 PM")).isEqualTo(LocalDateTime.of(1899, 12, 30, 20, 30));
        assertThat(Lexer.parseDate("2/30/2013")).isNull();
    }

    @Test
    void dateArithmetic() {
        Object[] r = trips().get(0);
        assertThat(eval("Dátum + 1", r)).isEqualTo(day(2013, 3, 6));
        assertThat(eval("Dátum + 0.5", r)).isEqualTo(LocalDateTime.of(2013, 3, 5, 12, 0));
        assertThat(eval("Dátum - 1", r)).isEqualTo(day(2013, 3, 4));
        assertThat(eval("Dátum - #3/1/2013#", r)).isEqualTo(4.0);
        assertThat(eval("dátum + timeserial(8, 30, 0)", r)).isEqualTo(LocalDateTime.of(2013, 3, 5, 8, 30));
        assertThat(eval("timeserial(25, 0, 0)", r)).isEqualTo(LocalDateTime.of(1899, 12, 31, 1, 0));
        assertThat(eval("timeserial('08', '30', 0)", r)).isEqualTo(LocalDateTime.of(1899, 12, 30, 8, 30));
        assertThat(eval("dateserial(2013, 13, 1)", r)).isEqualTo(day(2014, 1, 1));
    }

    // ---- the arrival-time order of Part 3.2 step 9 and Part 8.1 ----

    @Test
    void theArrivalOrderingRunsByDriverThenNewestFirst() {
        BoundSelect b = select(SpecStatementsTest.ARRIVAL);
        assertThat(b.isSnapshot()).isFalse();
        assertThat(b.outputColumns()).hasSize(UTAK.size() + 1).endsWith("Expr1001");
        assertThat(b.neededColumns()).containsExactly(col("GkVezetöNeve"), col("Dátum"), col("ÉrkezésIdeje"));
        assertThat(b.extras(trips().get(0))).containsExactly("2013.03.05 10:15:00");
        assertThat(b.extras(trips().get(2))).containsExactly("2013.03.06 09:50:00");
        assertThat(b.extras(trips().get(5))).containsExactly(""); // a Null date gives Null, formatted as ""

        // the store scans only the needed columns
        List<Object[]> partial = new ArrayList<>();
        List<Object[]> all = trips();
        for (Object[] full : all) {
            Object[] r = new Object[UTAK.size()];
            for (int c : b.neededColumns()) {
                r[c] = full[c];
            }
            r[col("Honnan")] = full[col("Honnan")]; // to tell the rows apart in the assertion
            partial.add(r);
        }
        partial.sort(b.ordering());
        List<String> seen = new ArrayList<>();
        for (Object[] r : partial) {
            seen.add(r[col("GkVezetöNeve")] + " " + r[col("Honnan")] + " " + r[col("ÉrkezésIdeje")]);
        }
        assertThat(seen).containsExactly(
                "Czakó Béla Eger null",
                "Kovács János Budapest 8.05",
                "Kovács János Győr 16.45",
                "Kovács János Budapest 10.15",
                "Szőke Ödön Szeged 16.59",
                "Szőke Ödön Pécs 9.5");
    }

    @Test
    void theArrivalTextSortsByTimeWithinADay() {
        BoundSelect b = select(SpecStatementsTest.ARRIVAL);
        Object[] early = trip("X", "A", day(2013, 3, 5), "", "", 1.0, 0.0, 9.59, "", 0.0, null);
        Object[] late = trip("X", "A", day(2013, 3, 5), "", "", 1.0, 0.0, 10.0, "", 0.0, null);
        Object[] midnight = trip("X", "A", day(2013, 3, 5), "", "", 1.0, 0.0, 0.0, "", 0.0, null);
        assertThat(b.extras(early)).containsExactly("2013.03.05 09:59:00");
        assertThat(b.extras(late)).containsExactly("2013.03.05 10:00:00");
        assertThat(b.extras(midnight)).containsExactly("2013.03.05 00:00:00");
        List<Object[]> rows = new ArrayList<>(List.of(early, midnight, late));
        rows.sort(b.ordering());
        assertThat(rows).containsExactly(late, early, midnight);
    }

    // ---- LIKE ----

    @Test
    void likeWithWildcards() {
        assertThat(column(run("select * from Utak where Honnan LIKE 'bu*' order by Dátum"), col("Hova")))
                .containsExactly("Győr", "Eger");
        assertThat(run("select * from Utak where Honnan like 'P?cs'")).hasSize(1);
        assertThat(run("select * from Utak where Honnan like 'p?cs'")).hasSize(1);
        assertThat(run("select * from Utak where Honnan like 'Pecs'")).isEmpty(); // accents count
        assertThat(run("select * from Utak where FRSZ like '???-###'")).hasSize(6);
        assertThat(run("select * from Utak where FRSZ like '[a-c]*'")).hasSize(3);
        assertThat(run("select * from Utak where FRSZ like '[!a]*'")).hasSize(3);
        assertThat(run("select * from Utak where Hova like '*e*'")).hasSize(3); // not Pécs: accents count
        assertThat(run("select * from Utak where Hova not like '*e*'")).hasSize(3);
        assertThat(run("select * from Utak where TávolságKm like '12*'")).hasSize(2);
        assertThat(run("select * from Utak where Megnevezés like '*'")).hasSize(6);
        assertThat(LikePattern.compile("a*b*c").matches("aXbYbZc")).isTrue();
        assertThat(LikePattern.compile("a*b*c").matches("aXbYbZ")).isFalse();
        assertThat(LikePattern.compile("[*]*").matches("*x")).isTrue();
        assertThat(LikePattern.compile("ŐZ*").matches("őze")).isTrue();
    }

    // ---- comparison ----

    @Test
    void textComparesWithoutRegardToCaseUnderTheHungarianCollation() {
        assertThat(run("select * from Utak where FRSZ = 'kőb-456'")).hasSize(2);
        assertThat(run("select * from Utak where GkVezetöNeve = 'kovács jános'")).hasSize(3);
        assertThat(run("select * from Utak where Honnan = 'Gyor'")).isEmpty();
        assertThat(run("select * from Utak where GkVezetöNeve < 'Cs'")).hasSize(1); // Cz before Cs in Hungarian
        assertThat(column(run("select * from Utak order by GkVezetöNeve desc, Honnan"), col("Honnan")))
                .containsExactly("Pécs", "Szeged", "Budapest", "Budapest", "Győr", "Eger");
    }

    @Test
    void numbersCompareAcrossTypesAndBooleansAreMinusOne() {
        List<String> cols = List.of("Állandó", "N");
        BoundCondition c = Sql.parseCondition("Állandó <> 0").bind(cols);
        assertThat(c.matches(new Object[] {Boolean.TRUE, null})).isTrue();
        assertThat(c.matches(new Object[] {Boolean.FALSE, null})).isFalse();
        assertThat(Sql.parseCondition("Állandó = True").bind(cols).matches(new Object[] {(short) -1, null}))
                .isTrue();
        assertThat(Sql.parseCondition("Állandó = -1").bind(cols).matches(new Object[] {Boolean.TRUE, null}))
                .isTrue();
        BoundCondition n = Sql.parseCondition("N = 27").bind(cols);
        assertThat(n.matches(new Object[] {null, (short) 27})).isTrue();
        assertThat(n.matches(new Object[] {null, 27.0})).isTrue();
        assertThat(n.matches(new Object[] {null, new BigDecimal("27.0000")})).isTrue();
        assertThat(n.matches(new Object[] {null, 27L})).isTrue();
        assertThat(n.matches(new Object[] {null, (byte) 27})).isTrue();
        assertThat(n.matches(new Object[] {null, 27.5f})).isFalse();
        assertThat(Sql.parseCondition("N = '27'").bind(cols).matches(new Object[] {null, 27})).isTrue();
        assertThat(Sql.parseCondition("N > 2.5").bind(cols).matches(new Object[] {null, 3})).isTrue();
    }

    @Test
    void nullNeverMatchesAndIsNullDoes() {
        assertThat(run("select * from Utak where TávolságKm <> 120")).hasSize(4);
        assertThat(run("select * from Utak where TávolságKm is null")).hasSize(1);
        assertThat(run("select * from Utak where TávolságKm is not null")).hasSize(5);
        assertThat(run("select * from Utak where not (TávolságKm = 120)")).hasSize(4);
        assertThat(run("select * from Utak where TávolságKm = 120 or Dátum is null")).hasSize(2);
        assertThat(run("select * from Utak where TávolságKm > 150 or Honnan = 'Eger'")).hasSize(3);
        assertThat(run("select * from Utak where (TávolságKm = 120 or TávolságKm = 121) and Honnan = 'Győr'"))
                .hasSize(1);
        assertThat(run("select * from Utak where TávolságKm between 120 and 140")).hasSize(3);
        assertThat(run("select * from Utak where Hova in ('Győr', 'eger')")).hasSize(2);
        assertThat(run("select * from Utak where Napidijas = True and Dátum = #3/5/2013# order by GkVezetöNeve,"
                + " Dátum")).hasSize(2);
    }

    // ---- arithmetic and functions ----

    static Object eval(String expr, Object[] row) {
        return select("select " + expr + " as x from Utak").snapshot(List.<Object[]>of(row)).get(0)[0];
    }

    @Test
    void arithmeticFollowsJet() {
        Object[] r = trips().get(0);
        assertThat(eval("Honnan + '-' + Hova", r)).isEqualTo("Budapest-Győr");
        assertThat(eval("Honnan & ' ' & TávolságKm", r)).isEqualTo("Budapest 120");
        assertThat(eval("FogyasztottLiter & ''", r)).isEqualTo("8,4");
        assertThat(eval("Honnan & Null", r)).isEqualTo("Budapest");
        assertThat(eval("Honnan + Null", r)).isNull();
        assertThat(eval("1 + 2", r)).isEqualTo(3);
        assertThat(eval("7 / 2", r)).isEqualTo(3.5);
        assertThat(eval("7 \\ 2", r)).isEqualTo(3);
        assertThat(eval("7 mod 4", r)).isEqualTo(3);
        assertThat(eval("2 ^ 10", r)).isEqualTo(1024.0);
        assertThat(eval("-2 ^ 2", r)).isEqualTo(-4.0);
        assertThat(eval("1 + 2 * 3", r)).isEqualTo(7);
        assertThat(eval("'2' + 3", r)).isEqualTo(5.0);
        assertThat(eval("Üzemanyagköltség * 2", r)).isEqualTo(new BigDecimal("10416"));
        assertThat(eval("True + 0", r)).isEqualTo(-1);
        assertThat(eval("2147483647 + 1", r)).isEqualTo(2147483648L);
        assertThat(errorOf(() -> eval("Honnan + 1", r))).isEqualTo(DaoException.DATA_TYPE_MISMATCH);
        assertThat(errorOf(() -> eval("1 / 0", r))).isEqualTo(Sql.DIVISION_BY_ZERO);
    }

    @Test
    void functions() {
        Object[] r = trips().get(0);
        assertThat(eval("str(dátum)", r)).isEqualTo("2013.03.05.");
        assertThat(eval("str(TávolságKm)", r)).isEqualTo(" 120");
        assertThat(eval("str(-1.5)", r)).isEqualTo("-1.5");
        assertThat(eval("str(Null)", r)).isNull();
        assertThat(eval("format(ÉrkezésIdeje, '00.00;0;0;0')", r)).isEqualTo("10,15");
        assertThat(eval("format(Dátum, 'yyyy/mm/dd')", r)).isEqualTo("2013.03.05");
        assertThat(eval("format(FogyasztottLiter)", r)).isEqualTo("8,4");
        assertThat(eval("left(Honnan, 3)", r)).isEqualTo("Bud");
        assertThat(eval("LEFT(Honnan, 30)", r)).isEqualTo("Budapest");
        assertThat(eval("right(Honnan, 4)", r)).isEqualTo("pest");
        assertThat(eval("mid(Honnan, 2, 3)", r)).isEqualTo("uda");
        assertThat(eval("mid(Honnan, 5)", r)).isEqualTo("pest");
        assertThat(eval("len(Honnan)", r)).isEqualTo(8);
        assertThat(eval("trim('  a  ')", r)).isEqualTo("a");
        assertThat(eval("ucase(Hova)", r)).isEqualTo("GYŐR");
        assertThat(eval("lcase(FRSZ)", r)).isEqualTo("abc-123");
        assertThat(eval("val('7.5 km')", r)).isEqualTo(7.5);
        assertThat(eval("cdbl('7,5')", r)).isEqualTo(7.5);
        assertThat(eval("iif(TávolságKm > 100, 'hosszú', 'rövid')", r)).isEqualTo("hosszú");
        assertThat(eval("nz(KezdöZáró, 0)", r)).isEqualTo(0);
        assertThat(eval("nz(TávolságKm, 0)", r)).isEqualTo(120.0);
        assertThat(eval("abs(-3)", r)).isEqualTo(3);
        assertThat(eval("int(-8.4)", r)).isEqualTo(-9.0);
        assertThat(eval("fix(-8.4)", r)).isEqualTo(-8.0);
        assertThat(eval("round(2.5)", r)).isEqualTo(2.0);
        assertThat(eval("round(8.345, 2)", r)).isEqualTo(8.34);
        assertThat(eval("year(Dátum) * 100 + month(Dátum)", r)).isEqualTo(201303);
        assertThat(eval("isnull(KezdöZáró)", r)).isEqualTo(true);
        assertThat(eval("instr(Honnan, 'PEST')", r)).isEqualTo(5);
    }

    // ---- ORDER BY ----

    @Test
    void orderByPutsNullsFirstAscendingAndLastDescending() {
        assertThat(column(run("select * from Utak order by Dátum, IndulásIdeje"), col("Honnan")))
                .containsExactly("Eger", "Budapest", "Győr", "Pécs", "Szeged", "Budapest");
        assertThat(column(run("select * from Utak order by Dátum Desc"), col("Honnan")))
                .containsExactly("Budapest", "Pécs", "Szeged", "Budapest", "Győr", "Eger");
        assertThat(column(run("select * from Utak order by TávolságKm * -1, Honnan"), col("Honnan")))
                .containsExactly("Eger", "Pécs", "Szeged", "Budapest", "Győr", "Budapest");
    }

    @Test
    void sortGivesTheOrderOfTheComparator() {
        BoundSelect b = select(SpecStatementsTest.ARRIVAL);
        List<Object[]> byComparator = trips();
        byComparator.sort(b.ordering());
        List<Object[]> bySort = new ArrayList<>(byComparator);
        java.util.Collections.reverse(bySort);
        b.sort(bySort);
        for (int i = 0; i < bySort.size(); i++) {
            assertThat(bySort.get(i)).containsExactly(byComparator.get(i));
        }
        List<Object[]> unordered = trips();
        select("select * from Utak").sort(unordered); // no ORDER BY: nothing moves
        assertThat(unordered.get(5)[col("GkVezetöNeve")]).isEqualTo("Czakó Béla");
    }

    /** The cheap sort key of digit-and-punctuation texts orders exactly as the hu-HU collator. */
    @Test
    void fastTextKeysOrderAsTheCollator() {
        List<String> texts = new ArrayList<>();
        texts.add("");
        for (char a : Values.FAST_CHARS.toCharArray()) {
            texts.add(String.valueOf(a));
            for (char b : Values.FAST_CHARS.toCharArray()) {
                texts.add("" + a + b);
            }
        }
        java.util.Random r = new java.util.Random(7);
        for (int i = 0; i < 300; i++) {
            texts.add(String.format("%04d.%02d.%02d %02d:%02d:00", 2000 + r.nextInt(30), 1 + r.nextInt(12),
                    1 + r.nextInt(28), r.nextInt(24), r.nextInt(60)));
        }
        for (int i = 0; i < 600; i++) {
            StringBuilder sb = new StringBuilder();
            for (int k = r.nextInt(6); k > 0; k--) {
                sb.append(Values.FAST_CHARS.charAt(r.nextInt(Values.FAST_CHARS.length())));
            }
            texts.add(sb.toString());
        }
        texts.addAll(List.of("Kovács", "kovács", "2013.03.05 a", "12a", "Ő", "-1", "(1)", "1-2", "12", "1 2"));
        java.text.Collator coll = Values.collator();
        for (String x : texts) {
            Values.TextKey kx = new Values.TextKey(x);
            for (String y : texts) {
                int expected = Integer.signum(coll.compare(x, y));
                assertThat(Integer.signum(kx.compareTo(new Values.TextKey(y)))).as("%s vs %s", x, y)
                        .isEqualTo(expected);
            }
        }
    }

    @Test
    void textEqualityAgreesWithTheCollator() {
        List<String> texts = List.of("abc", "ABC", "ábc", "Ábc", "ab", "abc ", "æ", "ae", "AE", "Ő", "ő", "Ö", "o",
                "ABC-123", "abc-123", "abc123", "a\u0001b", "ab", "Czakó", "Csaba", "ß", "ss");
        java.text.Collator coll = Values.collator();
        for (String x : texts) {
            for (String y : texts) {
                assertThat(Values.textEquals(x, y)).as("%s = %s", x, y)
                        .isEqualTo(x.equalsIgnoreCase(y) || coll.compare(x, y) == 0);
            }
        }
    }

    @Test
    void aSnapshotIsOrderedByColumnsOutsideItsList() {
        BoundSelect b = select("select str(dátum) as Nap, honnan, hova, megnevezés from Utak where CsoportAzonositó"
                + " = 'G1' order by Dátum, IndulásIdeje desc");
        assertThat(b.outputColumns()).containsExactly("Nap", "Honnan", "Hova", "Megnevezés");
        List<Object[]> rows = b.snapshot(trips());
        assertThat(column(rows, 1)).containsExactly("Győr", "Budapest");
        assertThat(column(run("select TávolságKM as Kilométer, honnan from Utak order by Kilométer desc"), 1))
                .containsExactly("Pécs", "Szeged", "Budapest", "Győr", "Budapest", "Eger");
    }

    @Test
    void aDynasetReadsOnlyWhatItsWhereAndOrderNeed() {
        BoundSelect b = select("select * from Utak where Napidijas = True and Dátum >= #3/1/2013# order by"
                + " GkVezetöNeve, Dátum");
        assertThat(b.isSnapshot()).isFalse();
        assertThat(b.outputColumns()).isEqualTo(UTAK);
        assertThat(b.neededColumns()).containsExactly(col("GkVezetöNeve"), col("Dátum"), col("Napidijas"));
        assertThat(b.extras(trips().get(0))).isEmpty();
        assertThat(select("select * from Utak").ordering()).isNull();
        assertThat(select("select * from Utak").neededColumns()).isEmpty();
    }

    @Test
    void snapshotOutputNames() {
        assertThat(select("select frsz,honnan,hova from utak").outputColumns()).containsExactly("FRSZ", "Honnan", "Hova");
        assertThat(select("select TávolságKM as Kilométer, KezdöZáró, str(dátum) as Nap, honnan, hova, megnevezés,"
                + " FogyasztottLiter, Üzemanyagköltség from Utak").outputColumns())
                .containsExactly("Kilométer", "KezdöZáró", "Nap", "Honnan", "Hova", "Megnevezés", "FogyasztottLiter",
                        "Üzemanyagköltség");
        assertThat(select("select FRSZ, TávolságKm * 2 from Utak").outputColumns()).containsExactly("FRSZ", "Expr1001");
        assertThat(select("select * , TávolságKm * 2 as dupla from Utak").outputColumns()).endsWith("dupla");
        assertThat(select("select * , TávolságKm * 2 as dupla from Utak order by dupla").ordering()).isNotNull();
    }

    // ---- names ----

    @Test
    void namesIgnoreCaseAcceptBracketsAndQualifiersButKeepAccents() {
        assertThat(run("select * from Utak where [frsz] = 'ABC-123'")).hasSize(3);
        assertThat(run("select * from Utak where utak.FRSZ = 'ABC-123'")).hasSize(3);
        assertThat(run("select * from Utak u where u.[gkvezetöneve] = 'Kovács János'")).hasSize(3);
        assertThat(run("select * from [Utak] where DÁTUM = #3/5/2013#")).hasSize(2);
        assertThat(errorOf(() -> select("select * from Utak where Datum = #3/5/2013#")))
                .isEqualTo(DaoException.TOO_FEW_PARAMETERS);
        assertThat(Sql.parse("select * from [Cikkszám] where cikkszám=\"0\"").tableName()).isEqualTo("Cikkszám");
    }

    // ---- UPDATE ----

    @Test
    void theUpdateStatementsOfPart7_2() {
        List<String> cols = List.of("Cikkszám", "Megnevezés", "AFA", "NETTO", "BRUTTO");
        List<Object[]> rows = new ArrayList<>();
        rows.add(new Object[] {"C1", "abroncs", (short) 25, new BigDecimal("1000.0000"), null});
        rows.add(new Object[] {"C2", "Ablaktörlő", (short) 27, new BigDecimal("2000.0000"), null});
        rows.add(new Object[] {"C3", "olajszűrő", (short) 5, new BigDecimal("3000.0000"), null});
        BoundUpdate first = ((UpdateStatement) Sql.parse("update cikkszám set AFA = 27 where AFA = 25")).bind(cols);
        BoundUpdate second = ((UpdateStatement) Sql.parse(
                "update cikkszám set BRUTTO = NETTO * (1 + (AFA / 100)) where AFA = 27")).bind(cols);
        int changed = 0;
        for (Object[] r : rows) {
            if (first.matches(r)) {
                for (Map.Entry<Integer, Object> e : first.assignments(r).entrySet()) {
                    r[e.getKey()] = ((Number) e.getValue()).shortValue();
                }
                changed++;
            }
        }
        assertThat(changed).isEqualTo(1);
        List<Object> brutto = new ArrayList<>();
        for (Object[] r : rows) {
            if (second.matches(r)) {
                Map<Integer, Object> a = second.assignments(r);
                assertThat(a).containsOnlyKeys(4);
                r[4] = a.get(4);
            }
            brutto.add(r[4] == null ? null : Math.round(((Number) r[4]).doubleValue() * 100) / 100.0);
        }
        assertThat(brutto).containsExactly(1270.0, 2540.0, null);
    }

    @Test
    void updateAssignmentsReadTheOldRow() {
        List<String> cols = List.of("A", "B");
        BoundUpdate u = ((UpdateStatement) Sql.parse("UPDATE t SET [a] = b, B = a;")).bind(cols);
        assertThat(u.matches(new Object[] {1, 2})).isTrue();
        assertThat(u.assignments(new Object[] {1, 2})).containsEntry(0, 2).containsEntry(1, 1);
        assertThat(errorOf(() -> ((UpdateStatement) Sql.parse("update t set C = 1")).bind(cols)))
                .isEqualTo(DaoException.TOO_FEW_PARAMETERS);
        assertThat(errorOf(() -> ((UpdateStatement) Sql.parse("update t set A = C where D = 1")).bind(cols)))
                .isEqualTo(DaoException.TOO_FEW_PARAMETERS);
    }

    // ---- Find filters ----

    @Test
    void findFilters() {
        List<String> cols = List.of("recordID", "GkFrsz", "Megnevezés");
        Object[] row = {12, "ABC-123", "Anyag'beszerzés"};
        assertThat(Sql.parseCondition("[GkFrsz] like \"ab*\"").bind(cols).matches(row)).isTrue();
        assertThat(Sql.parseCondition("[GkFrsz] like \"*\"").bind(cols).matches(row)).isTrue();
        assertThat(Sql.parseCondition("[GkFrsz] = \"abc-123\"").bind(cols).matches(row)).isTrue();
        assertThat(Sql.parseCondition("[recordID] = 12").bind(cols).matches(row)).isTrue();
        assertThat(Sql.parseCondition("[recordID] = 13").bind(cols).matches(row)).isFalse();
        assertThat(Sql.parseCondition("[Megnevezés] = 'Anyag''beszerzés'").bind(cols).matches(row)).isTrue();
        BoundCondition c = Sql.parseCondition("[GkFrsz] like \"AB*\"").bind(cols);
        assertThat(c.neededColumns()).containsExactly(1);
        assertThat(c.matches(new Object[3])).isFalse();
    }

    // ---- errors ----

    @Test
    void badInputGivesJetErrors() {
        assertThat(errorOf(() -> Sql.parseCondition("[GkFrsz] like \"AB\"C*\""))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parseCondition("[Megnevezés] = 'O'Brien'"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parseCondition("[SZAMLASOR] = "))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parseCondition(""))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parseCondition("[GkFrsz like \"a*\""))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parseCondition("[SZAMLASOR] = abc").bind(List.of("SZAMLASOR"))))
                .isEqualTo(Sql.UNKNOWN_NAME);
        assertThat(errorOf(() -> Sql.parse("select * from Utak where CsoportAzonositó = 'a'b'")))
                .isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * from Utak where Dátum = #13/45/2013#")))
                .isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * from Utak where"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * from Utak where a = = 1"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * from Utak where (a = 1"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select a b from Utak"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * Utak"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select *"))).isEqualTo(Sql.SELECT_SYNTAX);
        assertThat(errorOf(() -> Sql.parse("select * from"))).isEqualTo(DaoException.SYNTAX_ERROR_FROM);
        assertThat(errorOf(() -> Sql.parse("select * from Utak order Dátum"))).isEqualTo(Sql.ORDER_BY_SYNTAX);
        assertThat(errorOf(() -> Sql.parse("select * from Utak order by"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select * from Utak group by FRSZ"))).isEqualTo(DaoException.SYNTAX_ERROR_FROM);
        assertThat(errorOf(() -> Sql.parse("select * from Utak; delete from Utak")))
                .isEqualTo(Sql.CHARACTERS_AFTER_END);
        assertThat(errorOf(() -> Sql.parse("update cikkszám set AFA = 27 where AFA = 25; drop table Cikkszám")))
                .isEqualTo(Sql.CHARACTERS_AFTER_END);
        assertThat(errorOf(() -> Sql.parse("delete from Utak"))).isEqualTo(Sql.INVALID_STATEMENT);
        assertThat(errorOf(() -> Sql.parse(""))).isEqualTo(Sql.INVALID_STATEMENT);
        assertThat(errorOf(() -> Sql.parse("update cikkszám AFA = 27"))).isEqualTo(Sql.UPDATE_SYNTAX);
        assertThat(errorOf(() -> Sql.parse("select nincsilyen(FRSZ) from Utak"))).isEqualTo(Sql.UNDEFINED_FUNCTION);
        assertThat(errorOf(() -> Sql.parse("select left(FRSZ) from Utak"))).isEqualTo(DaoException.SYNTAX_ERROR);
        assertThat(errorOf(() -> Sql.parse("select FRSZ, * from Utak"))).isEqualTo(Sql.SELECT_SYNTAX);
        assertThat(Sql.parse("select * from Utak;")).isInstanceOf(SelectStatement.class);
    }

    @Test
    void unknownColumnsAreCountedAsJetParameters() {
        assertThatThrownBy(() -> select("select Nincs, Sincs from Utak where Nincs = 1"))
                .isInstanceOfSatisfying(DaoException.class, e -> {
                    assertThat(e.getNumber()).isEqualTo(DaoException.TOO_FEW_PARAMETERS);
                    assertThat(e.getMessage()).isEqualTo("Too few parameters. Expected 2.");
                });
        assertThat(errorOf(() -> select("select * from Utak order by Nincs"))).isEqualTo(DaoException.TOO_FEW_PARAMETERS);
        assertThat(errorOf(() -> select("select * from Utak where masik.FRSZ = 'x'")))
                .isEqualTo(DaoException.TOO_FEW_PARAMETERS);
    }

    @Test
    void aTypeMismatchMetWhileEvaluatingIsJetError3464() {
        BoundSelect b = select("select * from Utak where Honnan = 5");
        assertThat(errorOf(() -> b.matches(trips().get(0)))).isEqualTo(DaoException.DATA_TYPE_MISMATCH);
        Object[] noPlace = trips().get(0).clone();
        noPlace[col("Honnan")] = null;
        assertThat(b.matches(noPlace)).isFalse(); // Null compares to Null, not a mismatch
    }
}
