package kerova.cli;

import static org.assertj.core.api.Assertions.assertThat;

import java.nio.file.Path;
import java.util.List;
import kerova.core.KerovaX;
import kerova.core.db.AccessFile;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import org.junit.jupiter.api.Test;

/** The demo company starts with at least two of the four reminders firing and the warned grid filled. */
class DemoStartTest extends FormTestBase {
    @Test
    void theDemoFiresAtLeastTwoRemindersAndFillsTheWarnedGrid() {
        Path demo = dir.resolve("demo");
        DemoCompany.createIfAbsent(demo);
        AccessFile.setWorkingFolder(demo);
        KerovaX main = Forms.put(new KerovaX());
        main.Show();
        List<String> reminders = List.of(KerovaX.INSPECTION_TEXT, KerovaX.TACHO_CALIBRATION_TEXT,
                KerovaX.TACHO_PERMIT_TEXT, KerovaX.INSURANCE_CARD_TEXT);
        List<ScriptedUi.Message> fired = ui.messages.stream().filter(m -> reminders.contains(m.text())).toList();
        assertThat(fired).hasSizeGreaterThanOrEqualTo(2)
                .allSatisfy(m -> {
                    assertThat(m.style()).isEqualTo(48);
                    assertThat(m.title()).isEqualTo("FIGYELEM!");
                });
        assertThat(fired.get(0).text()).isEqualTo("Van olyan jármű, aminek a műszaki vizsgája aktuális!");
        assertThat(main.DBGrid1.Visible()).isTrue();
        assertThat(main.DBGrid1.rowCount()).isGreaterThanOrEqualTo(2);
    }
}
