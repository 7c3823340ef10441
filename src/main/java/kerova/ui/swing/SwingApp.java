package kerova.ui.swing;

import com.formdev.flatlaf.FlatLaf;
import com.formdev.flatlaf.FlatLightLaf;
import java.awt.Font;
import java.awt.GraphicsEnvironment;
import java.nio.file.Path;
import java.util.Arrays;
import javax.swing.SwingUtilities;
import javax.swing.UIManager;
import kerova.core.db.AccessFile;
import kerova.core.form.Forms;

/** Starts the program's windows on a company folder: FlatLaf light, a font with ő and ű, KerovaX. */
public final class SwingApp {
    /** The font family used everywhere when installed (it shows every Hungarian letter). */
    public static final String FONT_FAMILY = "DejaVu Sans";

    private static SwingUi ui;

    private SwingApp() {
    }

    /** Called by kerova.cli.Main: shows KerovaX in the folder; the windows keep the process alive. */
    public static void start(Path folder) {
        start(folder, null);
    }

    /** As {@link #start(Path)}, with a replacement of the process end (tests). Returns the Ui. */
    public static SwingUi start(Path folder, Runnable exitHook) {
        AccessFile.setWorkingFolder(folder);
        try {
            SwingUtilities.invokeAndWait(() -> {
                setUpLookAndFeel();
                ui = new SwingUi();
                if (exitHook != null) {
                    ui.setExitHook(exitHook);
                }
                Forms.reset();
                Forms.setUi(ui);
            });
        } catch (Exception e) {
            throw new IllegalStateException("the windows can't start", e);
        }
        SwingUtilities.invokeLater(() -> Forms.get("KerovaX").Show());
        return ui;
    }

    public static SwingUi ui() {
        return ui;
    }

    /** FlatLaf light with DejaVu Sans (when installed) as the font of every component. */
    public static void setUpLookAndFeel() {
        boolean dejavu = Arrays.asList(GraphicsEnvironment.getLocalGraphicsEnvironment().getAvailableFontFamilyNames())
                .contains(FONT_FAMILY);
        if (dejavu) {
            FlatLaf.setPreferredFontFamily(FONT_FAMILY);
        }
        FlatLightLaf.setup();
        if (dejavu) {
            Font f = new Font(FONT_FAMILY, Font.PLAIN, 13);
            UIManager.put("defaultFont", new javax.swing.plaf.FontUIResource(f));
        }
        UIManager.put("OptionPane.okButtonText", SwingUi.OK);
        UIManager.put("OptionPane.yesButtonText", SwingUi.YES);
        UIManager.put("OptionPane.noButtonText", SwingUi.NO);
        UIManager.put("OptionPane.cancelButtonText", SwingUi.CANCEL);
    }
}
