package kerova.vehicles;

import static org.assertj.core.api.Assertions.assertThat;
import static kerova.vehicles.Part2_1Test.FUTURE;
import static kerova.vehicles.Part2_1Test.TODAY;
import static kerova.vehicles.Part2_1Test.msg;
import static kerova.vehicles.Part2_1Test.vehicle;

import java.util.List;
import kerova.core.Globals;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 2.3: the vehicle archive on GKTorzsFormX. */
class Part2_3Test extends FormTestBase {
    GKTorzsFormX form;

    GKTorzsFormX open() {
        Globals.CurrentFormName = GKTorzsFormX.NAME;
        form = Forms.put(new GKTorzsFormX());
        form.Show();
        return form;
    }

    static List<Object> live(String column) {
        return column("Kerova.dsb", "Jarmuvek", column);
    }

    static List<Object> archive(String column) {
        return column("Kerova.dsb", "JarmuvekArchiv", column);
    }

    @Test
    void deletingTheOnlyVehicleMovesItToTheArchiveAndStartsANewRow() {
        vehicle(7, "KŐB-112", "Rába H18", "GkVezetoNeve", "Győri Ödön", "KotelezoHaviDija", 12500.0,
                "Alvállalkozó", true, "TuzoltoDatum", TODAY.minusDays(3), "PartnerID", 4);
        Object[] before = rows("Kerova.dsb", "Jarmuvek").get(0);
        open();
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        assertThat(ui.messages).containsExactly(msg("Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"));
        // the copy runs by position: every column of the row, as it was stored when the delete began
        Object[] copied = rows("Kerova.dsb", "JarmuvekArchiv").get(0);
        assertThat(copied).hasSize(33);
        assertThat(copied[0]).isEqualTo("KŐB-112");
        assertThat(copied[12]).isEqualTo(7);
        for (int i = 0; i < before.length; i++) {
            assertThat(copied[i]).as("column " + i).isEqualTo(before[i]);
        }
        // a new empty row at once: key 1 (the table was empty)
        assertThat(live("recordID")).containsExactly(1);
        assertThat(live("GkFrsz")).containsOnlyNulls();
        assertThat(form.Label24.Caption()).isEqualTo("1");
        assertThat(form.ArchivData.Recordset().AbsolutePosition()).isZero();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void deletingAMiddleRowMovesToTheNextAndNoKeepsTheRow() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", "Fiat");
        vehicle(3, "CCC-333", "Volvo");
        open();
        form.DBGrid1.selectRow(1);
        ui.answer(VbConst.vbNo);
        form.GKTorol.fireClick();
        assertThat(live("GkFrsz")).containsExactly("AAA-111", "BBB-222", "CCC-333");
        assertThat(archive("GkFrsz")).isEmpty();
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        assertThat(live("GkFrsz")).containsExactly("AAA-111", "CCC-333");
        assertThat(archive("GkFrsz")).containsExactly("BBB-222");
        assertThat(form.Text1.Text()).isEqualTo("CCC-333");
    }

    @Test
    void aFailedArchiveWriteKeepsTheRow() {
        vehicle(1, "AAA-111", "Opel");
        open();
        form.ArchivData.Recordset().Close();
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"),
                msg("ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!", 0, "Kerova"));
        assertThat(live("GkFrsz")).containsExactly("AAA-111");
        assertThat(archive("GkFrsz")).isEmpty();
        assertThat(form.Text1.Text()).isEqualTo("AAA-111");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void openingAnEmptyArchiveShowsTheMessageAndTheLiveDataAsBefore() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", "Fiat");
        open();
        form.Command11.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincsenek archivált (törölt) adatok!", 64, "FIGYELEM!"));
        assertThat(form.JarmuvekData.RecordSource()).isEqualTo("select * from Jarmuvek order by recordID");
        assertThat(form.Command1.Visible()).isFalse();
        assertThat(form.VisszaEles.Visible()).isFalse();
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
        assertThat(form.Text1.Text()).isEqualTo("AAA-111");
    }

    @Test
    void theArchiveViewAndTheWayBack() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", "Fiat");
        vehicle(3, "CCC-333", "Volvo");
        open();
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        form.GKTorol.fireClick();
        assertThat(archive("GkFrsz")).containsExactly("CCC-333", "BBB-222");
        form.ArchivumA.fireClick();
        assertThat(form.JarmuvekData.RecordSource()).isEqualTo("select * from JarmuvekArchiv order by recordID");
        assertThat(form.Command1.Visible()).isTrue();
        assertThat(form.Command1.Default()).isTrue();
        assertThat(form.VisszaEles.Visible()).isTrue();
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
        // ordered by recordID, on the first row
        assertThat(form.Text1.Text()).isEqualTo("BBB-222");
        assertThat(form.Command1.Caption()).isEqualTo("Vissza az éles adatokra!");
        form.VisszaEles.fireClick();
        assertThat(form.JarmuvekData.RecordSource()).isEqualTo("select * from Jarmuvek order by recordID");
        assertThat(form.Command1.Visible()).isFalse();
        assertThat(form.VisszaEles.Visible()).isFalse();
        assertThat(form.Text1.Text()).isEqualTo("AAA-111");
        form.Command11.fireClick();
        form.Command1.fireClick();
        assertThat(form.DBGrid1.rowCount()).isEqualTo(1);
        assertThat(ui.messages).hasSize(2);
    }

    @Test
    void editsInTheArchiveViewLandInJarmuvekArchiv() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", "Fiat");
        open();
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        form.ArchivumA.fireClick();
        form.Text5.setText("Archív Ödön");
        form.Command1.fireClick();
        assertThat(archive("GkVezetoNeve")).containsExactly("Archív Ödön");
        assertThat(live("GkVezetoNeve")).containsExactly((Object) null);
    }

    @Test
    void aRowWithoutTypeAtLeavingTheArchiveIsDeletedWithoutACopy() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", null, "MuszakiVizsgaDatum", FUTURE);
        open();
        // BBB-222 (no type) goes to the archive by the standard delete
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        assertThat(archive("GkFrsz")).containsExactly("BBB-222");
        form.ArchivumA.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("BBB-222");
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"),
                msg("Nincs megadva típus! Az adat törölhető?", 36, "FIGYELEM! Aktuális adat törlése!"));
        // the archive's row is gone, with no further copy; the live table is untouched
        assertThat(archive("GkFrsz")).isEmpty();
        assertThat(live("GkFrsz")).containsExactly("AAA-111");
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.Data1.Recordset().isClosed()).isTrue();
        assertThat(form.ArchivData.Recordset().isClosed()).isTrue();
        assertThat(form.JarmuvekData.Recordset().isClosed()).isTrue();
    }

    @Test
    void theExitClosesData1ArchivDataAndJarmuvekDataInThisOrder() {
        vehicle(1, "AAA-111", "Opel");
        open();
        java.util.List<String> closed = new java.util.ArrayList<>();
        for (kerova.core.db.DataControl dc : java.util.List.of(form.JarmuvekData, form.ArchivData, form.Data1)) {
            dc.Recordset().addMoveListener(new kerova.core.db.Recordset.MoveListener() {
                @Override
                public void beforeMove(kerova.core.db.Recordset rs) {
                    closed.add(dc.getName()); // the exit moves nothing: each call here is a Close
                }

                @Override
                public void afterMove(kerova.core.db.Recordset rs) {
                }
            });
        }
        form.Kilepes.fireClick();
        assertThat(closed).containsExactly("Data1", "ArchivData", "JarmuvekData");
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void aDeleteMovesTheArchiveToItsLastRowBeforeTheLiveRowGoes() {
        vehicle(1, "AAA-111", "Opel");
        vehicle(2, "BBB-222", "Fiat");
        open();
        java.util.List<String> order = new java.util.ArrayList<>();
        form.ArchivData.Recordset().addMoveListener(new kerova.core.db.Recordset.MoveListener() {
            @Override
            public void beforeMove(kerova.core.db.Recordset rs) {
            }

            @Override
            public void afterMove(kerova.core.db.Recordset rs) {
                order.add("archive on its last row, live rows: " + live("GkFrsz").size());
            }
        });
        ui.answer(VbConst.vbYes);
        form.GKTorol.fireClick();
        assertThat(order).containsExactly("archive on its last row, live rows: 2");
        assertThat(live("GkFrsz")).containsExactly("AAA-111");
    }
}
