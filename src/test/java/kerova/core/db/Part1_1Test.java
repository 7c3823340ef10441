package kerova.core.db;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Part 1.1: the record store on real Access 2000 files, and every "Edge cases worth testing" bullet. */
class Part1_1Test {
    @TempDir
    Path dir;

    @BeforeEach
    void setUp() throws Exception {
        TestDb.create(dir, "Kerova.dsb", TestDb.jarmu(), Catalog.table("Ures", Catalog.lng("recordID")));
        TestDb.addRows("Kerova.dsb", "Jarmuvek",
                r -> vehicle(r, 1, "ABC-123", "Opel Astra", 120000),
                r -> vehicle(r, 2, "KŐB-456", "Škoda Fabia", 80000),
                r -> vehicle(r, 3, "GYŐ-789", "Ford Focus", 45000),
                r -> vehicle(r, 4, "ABD-111", "Suzuki Swift", null));
        Err.Clear();
    }

    @AfterEach
    void tearDown() {
        AccessFile.closeAll();
        VbClock.reset();
    }

    private static void vehicle(Recordset r, int id, String plate, String type, Integer km) {
        r.set("recordID", id);
        r.set("GkFrsz", plate);
        r.set("Típus", type);
        r.set("Km", km);
    }

    private Recordset open(String source) {
        return Database.open("kerova.dsb").OpenRecordset(source, Recordset.dbOpenDynaset);
    }

    // --- Edge cases worth testing ---

    @Test
    void emptyTableHasRecordCountZeroAndMoveFirstFails() {
        Recordset rs = open("Ures");
        assertThat(rs.RecordCount()).isZero();
        assertThat(rs.EOF()).isTrue();
        assertThat(rs.BOF()).isTrue();
        assertThatThrownBy(rs::MoveFirst).isInstanceOf(DaoException.class)
                .extracting(e -> ((DaoException) e).getNumber()).isEqualTo(DaoException.NO_CURRENT_RECORD);
        Err.resume(rs::MoveFirst);
        assertThat(Err.Number()).isNotZero();
    }

    @Test
    void recordCountRightAfterOpeningIsAtLeastOneButNotTheTrueNumber() {
        Recordset rs = open("Jarmuvek");
        assertThat(rs.RecordCount()).isGreaterThanOrEqualTo(1).isLessThan(4);
        rs.MoveLast();
        rs.MoveFirst();
        assertThat(rs.RecordCount()).isEqualTo(4);
    }

    @Test
    void nullToDateOnANullDateColumnYieldsTodayAndSavingStoresToday() {
        VbClock.setFixed(LocalDateTime.of(2026, 11, 22, 10, 15));
        Recordset rs = open("Jarmuvek");
        assertThat(rs.get("MuszakiVizsgaDatum")).isNull();
        Object shown = Funcs.NullToDate(rs.get("MuszakiVizsgaDatum"));
        assertThat(shown).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
        rs.Edit();
        rs.set("MuszakiVizsgaDatum", shown);
        rs.Update();
        AccessFile.closeAll();
        Recordset again = open("Jarmuvek");
        assertThat(again.get("MuszakiVizsgaDatum")).isEqualTo(LocalDateTime.of(2026, 11, 22, 0, 0));
    }

    @Test
    void nullToNumOnANullNumberYieldsZero() {
        Recordset rs = open("select * from Jarmuvek where recordID = 4");
        assertThat(rs.get("Km")).isNull();
        assertThat(Funcs.NullToNum(rs.get("Km"))).isEqualTo(0);
    }

    @Test
    void findWithNoMatchKeepsTheCurrentRecordAndSetsNoMatch() {
        Recordset rs = open("Jarmuvek");
        rs.MoveNext();
        Object before = rs.Bookmark();
        rs.FindFirst("[GkFrsz] like \"XYZ*\"");
        assertThat(rs.NoMatch()).isTrue();
        assertThat(rs.Bookmark()).isEqualTo(before);
        assertThat(rs.get("GkFrsz")).isEqualTo("KŐB-456");
    }

    @Test
    void searchTextWithAQuoteYieldsNoFindAndOnlyTheNoMatchPath() {
        Recordset rs = open("Jarmuvek");
        rs.MoveLast();
        Object before = rs.Bookmark();
        String userText = "AB\"C";
        Err.resume(() -> rs.FindFirst("[GkFrsz] like \"" + userText + "*\""));
        assertThat(Err.Number()).isNotZero();
        Err.Clear();
        assertThat(rs.NoMatch()).isTrue();
        assertThat(rs.Bookmark()).isEqualTo(before);
    }

    @Test
    void aFolderWithoutDatabasesFailsWithADaoErrorAndNoCrash(@TempDir Path empty) {
        AccessFile.setWorkingFolder(empty);
        assertThatThrownBy(() -> Database.open("Torzsek.dsb").OpenRecordset("Bettorzs"))
                .isInstanceOf(DaoException.class);
        Err.resume(() -> Database.open("Torzsek.dsb"));
        assertThat(Err.Number()).isEqualTo(DaoException.FILE_NOT_FOUND);
    }

    // --- the operations of Part 1.1's table ---

    @Test
    void findFirstNextPreviousWithTheFilterSyntax() {
        Recordset rs = open("select * from Jarmuvek order by recordID");
        rs.FindFirst("[GkFrsz] like \"AB*\"");
        assertThat(rs.NoMatch()).isFalse();
        assertThat(rs.get("recordID")).isEqualTo(1);
        rs.FindNext("[GkFrsz] like \"ab*\"");
        assertThat(rs.get("recordID")).isEqualTo(4);
        rs.FindNext("[GkFrsz] like \"AB*\"");
        assertThat(rs.NoMatch()).isTrue();
        assertThat(rs.get("recordID")).isEqualTo(4);
        rs.FindPrevious("[GkFrsz] like \"AB*\"");
        assertThat(rs.get("recordID")).isEqualTo(1);
        rs.FindFirst("[Típus] = 'Ford Focus'");
        assertThat(rs.get("GkFrsz")).isEqualTo("GYŐ-789");
        rs.FindFirst("[recordID] = 2");
        assertThat(rs.get("GkFrsz")).isEqualTo("KŐB-456");
        rs.FindFirst("[GkFrsz] = \"kőb-456\"");
        assertThat(rs.NoMatch()).isFalse();
    }

    @Test
    void bookmarksReturnToARecordAndSurviveEdits() {
        Recordset rs = open("Jarmuvek");
        rs.MoveNext();
        rs.MoveNext();
        Object mark = rs.Bookmark();
        rs.Edit();
        rs.set("Típus", "Ford Focus Kombi, hosszú típusnév: ő ű ő ű ő");
        rs.Update();
        rs.MoveFirst();
        rs.setBookmark(mark);
        assertThat(rs.get("GkFrsz")).isEqualTo("GYŐ-789");
        assertThat(rs.get("Típus")).asString().startsWith("Ford Focus Kombi");
    }

    @Test
    void addNewAndUpdateLeaveTheCurrentRecordWhereItWasAndMoveLastFindsTheNewOne() {
        Recordset rs = open("Jarmuvek");
        rs.MoveNext();
        rs.AddNew();
        rs.set("recordID", 5);
        rs.set("GkFrsz", "ÚJ-555");
        rs.Update();
        assertThat(rs.get("recordID")).isEqualTo(2);
        rs.MoveLast();
        assertThat(rs.get("GkFrsz")).isEqualTo("ÚJ-555");
        assertThat(rs.get("Sorszám")).isEqualTo(5); // AutoNumber
        rs.MoveFirst();
        assertThat(rs.RecordCount()).isEqualTo(5);
    }

    @Test
    void deleteLeavesTheRecordCurrentButInvalidUntilAMove() {
        Recordset rs = open("select * from Jarmuvek order by recordID");
        rs.MoveNext();
        rs.Delete();
        assertThatThrownBy(() -> rs.get("GkFrsz")).isInstanceOf(DaoException.class);
        rs.MoveNext();
        assertThat(rs.get("recordID")).isEqualTo(3);
        rs.MoveLast();
        rs.MoveFirst();
        assertThat(rs.RecordCount()).isEqualTo(3);
        Recordset again = open("Jarmuvek");
        again.FindFirst("[recordID] = 2");
        assertThat(again.NoMatch()).isTrue();
    }

    @Test
    void deletingTheLastRowLeavesEofAfterMoveNext() {
        Recordset rs = open("select * from Jarmuvek order by recordID");
        rs.MoveLast();
        rs.Delete();
        rs.MoveNext();
        assertThat(rs.EOF()).isTrue();
    }

    @Test
    void closingAClosedRecordsetIsAnError() {
        Recordset rs = open("Jarmuvek");
        rs.Close();
        assertThatThrownBy(rs::Close).isInstanceOf(DaoException.class);
        Err.resume(rs::Close);
        assertThat(Err.Number()).isNotZero();
    }

    @Test
    void fieldsByNameAndByOrdinal() {
        Recordset rs = open("Jarmuvek");
        assertThat(rs.Fields(1).Value()).isEqualTo("ABC-123");
        assertThat(rs.Fields("gkfrsz").Value()).isEqualTo("ABC-123");
        assertThat(rs.Fields(1).Name()).isEqualTo("GkFrsz");
        assertThatThrownBy(() -> rs.Fields("Nincs")).isInstanceOf(DaoException.class);
    }

    @Test
    void sortTakesEffectOnTheNextOpenRecordset() {
        Recordset rs = open("Jarmuvek");
        rs.setSort("GkFrsz DESC");
        assertThat(rs.get("recordID")).isEqualTo(1); // this set is unchanged
        Recordset sorted = rs.OpenRecordset();
        List<Object> plates = new ArrayList<>();
        while (!sorted.EOF()) {
            plates.add(sorted.get("GkFrsz"));
            sorted.MoveNext();
        }
        assertThat(plates).containsExactly("KŐB-456", "GYŐ-789", "ABD-111", "ABC-123");
    }

    @Test
    void requeryRunsTheQueryAgainAndTheFirstRecordBecomesCurrent() {
        Recordset rs = open("select * from Jarmuvek where Km > 50000 order by Km");
        rs.MoveLast();
        Database.open("Kerova.dsb").Execute("update Jarmuvek set Km = 50001 where recordID = 3");
        rs.Requery();
        assertThat(rs.get("recordID")).isEqualTo(3);
        rs.MoveLast();
        assertThat(rs.RecordCount()).isEqualTo(3);
    }

    @Test
    void valuesAreReadFreshWhenARowBecomesCurrent() {
        Recordset a = open("Jarmuvek");
        Recordset b = open("Jarmuvek");
        b.Edit();
        b.set("Típus", "Átírva");
        b.Update();
        a.MoveNext();
        a.MovePrevious();
        assertThat(a.get("Típus")).isEqualTo("Átírva");
    }

    @Test
    void aUniqueRecordIdCollidesOnUpdate() {
        Recordset rs = open("Jarmuvek");
        rs.AddNew();
        rs.set("recordID", 2);
        assertThatThrownBy(rs::Update).isInstanceOf(DaoException.class)
                .extracting(e -> ((DaoException) e).getNumber()).isEqualTo(DaoException.DUPLICATE_KEY);
        rs.MoveLast();
        rs.MoveFirst();
        assertThat(rs.RecordCount()).isEqualTo(4);
    }

    @Test
    void editWithoutEditOrAddNewIsAnError() {
        Recordset rs = open("Jarmuvek");
        assertThatThrownBy(() -> rs.set("Km", 1)).isInstanceOf(DaoException.class);
    }

    @Test
    void snapshotsAreReadOnly() {
        Recordset rs = open("select distinct Típus from Jarmuvek");
        assertThat(rs.isSnapshot()).isTrue();
        assertThatThrownBy(rs::Edit).isInstanceOf(DaoException.class);
    }

    @Test
    void unknownTableAndMissingFileGiveNumberedErrors() {
        assertThatThrownBy(() -> open("Nincsilyen")).isInstanceOf(DaoException.class)
                .extracting(e -> ((DaoException) e).getNumber()).isEqualTo(DaoException.UNKNOWN_TABLE);
        assertThatThrownBy(() -> open("select * from Jarmuvek where Nincs = 1")).isInstanceOf(DaoException.class);
        assertThatThrownBy(() -> open("select * fro Jarmuvek")).isInstanceOf(DaoException.class);
    }

    @Test
    void textConvertsIntoNumberColumnsWithTheDecimalComma() {
        Recordset rs = open("Jarmuvek");
        rs.Edit();
        rs.set("Km", "7,5");
        rs.Update();
        assertThat(rs.get("Km")).isEqualTo(7.5);
        rs.Edit();
        assertThatThrownBy(() -> rs.set("Km", "abc")).isInstanceOf(DaoException.class);
        rs.CancelUpdate();
    }

    @Test
    void aBatchWritesUnsyncedAndOpenRecordsetsGoOnAfterIt() {
        Recordset before = open("Jarmuvek");
        AccessFile file = AccessFile.open("Kerova.dsb");
        int generation = file.generation();
        file.batch(() -> {
            Recordset rs = open("Jarmuvek");
            for (int i = 10; i < 1010; i++) {
                rs.AddNew();
                rs.set("recordID", i);
                rs.set("GkFrsz", "B-" + i);
                rs.Update();
            }
            rs.Close();
        });
        assertThat(file.generation()).isGreaterThan(generation); // reopened unsynced and back
        before.MoveNext();
        assertThat(before.get("GkFrsz")).isEqualTo("KŐB-456");
        before.Edit();
        before.set("Típus", "a batch után");
        before.Update();
        AccessFile.closeAll();
        Recordset again = open("select * from Jarmuvek where GkFrsz like 'B-*'");
        again.MoveLast();
        assertThat(again.RecordCount()).isEqualTo(1000);
        again.FindFirst("[recordID] = 2");
        assertThat(again.NoMatch()).isTrue();
        Recordset edited = open("select * from Jarmuvek where recordID = 2");
        assertThat(edited.get("Típus")).isEqualTo("a batch után");
    }

    @Test
    void boundControlsWriteOnMoveAndLoadTheNewRecord() {
        DataControl data = new DataControl("JarmuvekData", "Kerova.dsb", "select * from Jarmuvek order by recordID");
        FakeBox box = new FakeBox("Típus");
        data.bind(box);
        data.Refresh();
        assertThat(box.shown).isEqualTo("Opel Astra");
        box.type("Opel Astra Caravan");
        data.Recordset().MoveNext();
        assertThat(box.shown).isEqualTo("Škoda Fabia");
        data.Recordset().MoveFirst();
        assertThat(box.shown).isEqualTo("Opel Astra Caravan");
        box.type("Változott");
        data.Refresh(); // Refresh writes too
        assertThat(box.shown).isEqualTo("Változott");
    }

    /** A text box as the forms runtime binds it. */
    static final class FakeBox implements Binding {
        final String field;
        Object shown;
        boolean changed;

        FakeBox(String field) {
            this.field = field;
        }

        void type(String text) {
            shown = text;
            changed = true;
        }

        @Override
        public String DataField() {
            return field;
        }

        @Override
        public void loadBound(Object value) {
            shown = value;
            changed = false;
        }

        @Override
        public boolean boundChanged() {
            return changed;
        }

        @Override
        public Object boundValue() {
            return shown;
        }
    }
}
