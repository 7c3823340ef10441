package kerova.core.print;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import kerova.core.form.CommandButton;
import kerova.core.form.Form;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.RecordForm;
import kerova.core.vb.Conv;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbConst;

/**
 * The page form of Part 1.4: a sheet of fixed labels laid out like the paper, shown modally as a
 * preview, with the buttons "Tovább" ({@code Command1}), "Nyomtat" ({@code Command2}) and "Mégse"
 * ({@code Command3}), and our "PDF mentés..." ({@code PdfMentes}, handled by the view). Each label
 * has a place on the paper; {@link #page()} turns the labels into a {@link Page} that the view
 * draws on the screen, the printer and a PDF file alike, so the print is the page as it looks.
 *
 * <p>Subclasses add their labels with {@link #label}; {@link ListPageForm} and {@link SheetPageForm}
 * are the two shapes the spec's lists use. The routine that fills and shows the pages is
 * {@link PagedList}.
 */
public class PageForm extends Form {
    /** Part 1.4: the public short that "Mégse" sets to 1; Form_Load sets it to 0. */
    public static short PrintCancelled;

    public static final String TOVABB = "Tovább";
    public static final String NYOMTAT = "Nyomtat";
    public static final String MEGSE = "Mégse";
    public static final String PDF_MENTES = "PDF mentés...";
    /** Title of the printer message: "FIGYELEM!", a plain box (Part 1.4, step 3). */
    public static final String PRINTER_TITLE = RecordForm.PRINT_MESSAGE_TITLE;
    public static final int PRINTER_STYLE = RecordForm.PRINTER_NOT_READY_STYLE;

    /** Paper margins of the layouts in core.print, in points (about 17.6 mm). */
    public static final double MARGIN = 50;

    public final CommandButton Command1 = add(new CommandButton("Command1", TOVABB));
    public final CommandButton Command2 = add(new CommandButton("Command2", NYOMTAT));
    public final CommandButton Command3 = add(new CommandButton("Command3", MEGSE));
    /** Ours: saves the page shown as a PDF file (the view's file dialog and kerova.ui.swing.PdfExport). */
    public final CommandButton PdfMentes = add(new CommandButton("PdfMentes", PDF_MENTES));

    /** Where a label stands on the paper. */
    public record Placement(double x, double y, double width, PageFont font, Align align) {
    }

    private final Map<Label, Placement> placements = new LinkedHashMap<>();
    private final List<PageItem> fixed = new ArrayList<>();
    private final double paperWidth;
    private final double paperHeight;
    /** How many times the page was sent to the printer successfully (for callers and tests). */
    private int printed;

    public PageForm(String name, String caption) {
        this(name, caption, Page.A4_WIDTH, Page.A4_HEIGHT);
    }

    public PageForm(String name, String caption, double paperWidth, double paperHeight) {
        super(name, caption);
        this.paperWidth = paperWidth;
        this.paperHeight = paperHeight;
        Command1.Click = this::Command1_Click;
        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        Command1.setToolTipText("Következő oldal nyomtatás nélkül");
        Command2.setToolTipText("Ennek az oldalnak a nyomtatása");
        Command3.setToolTipText("A nyomtatás befejezése");
        PdfMentes.setToolTipText("Az oldal mentése PDF állományba");
        layoutConstraints = "wrap 4, insets 10";
    }

    // ---------------------------------------------------------------- building the sheet

    /** A label of the sheet at its place on the paper (points from the paper's top left corner). */
    protected Label label(String labelName, String caption, double x, double y, double width, PageFont font,
            Align align) {
        Label l = add(new Label(labelName, caption));
        placements.put(l, new Placement(x, y, width, font, align));
        return l;
    }

    /** A fixed line of the sheet (a rule under the heading, a frame). */
    protected void rule(double x1, double y1, double x2, double y2, double stroke, double gray) {
        fixed.add(new PageItem.Line(x1, y1, x2, y2, stroke, gray));
    }

    public Placement placement(Label l) {
        return placements.get(l);
    }

    /** The labels of the sheet, in the order they were added. */
    public List<Label> sheetLabels() {
        return List.copyOf(placements.keySet());
    }

    public double paperWidth() {
        return paperWidth;
    }

    public double paperHeight() {
        return paperHeight;
    }

    /** The page as it stands now: the fixed lines, then every visible label with a caption. */
    public Page page() {
        List<PageItem> items = new ArrayList<>(fixed);
        for (Map.Entry<Label, Placement> e : placements.entrySet()) {
            Label l = e.getKey();
            if (!l.Visible() || l.Caption().isEmpty()) {
                continue;
            }
            Placement p = e.getValue();
            items.add(new PageItem.Text(p.x(), p.y(), p.width(), l.Caption(), p.font(), p.align()));
        }
        return new Page(paperWidth, paperHeight, items);
    }

    /**
     * Called by {@link PagedList} before the rows of a page are filled: empties the row labels and
     * sets the page's heading, page number and date. The default does nothing.
     */
    public void startPage(int pageNumber) {
    }

    /** Today as the page's "Kiadva: " text. */
    public static String issuedText() {
        return "Kiadva: " + Conv.dateText(VbClock.today());
    }

    public int printedCount() {
        return printed;
    }

    // ---------------------------------------------------------------- the three buttons

    /** Form_Load: PrintCancelled := 0 and the arrow pointer. */
    @Override
    protected void Form_Load() {
        PrintCancelled = 0;
        Forms.arrow();
    }

    /** "Tovább": the page form unloads, the caller goes on with the next page. */
    protected void Command1_Click() {
        Unload();
    }

    /**
     * "Nyomtat": hourglass, the buttons hidden, the page sent to the printer (PrintForm). On failure:
     * arrow, beep, "A nyomtató nincs készenlétben!" under "FIGYELEM!" in a plain box, buttons back.
     * Otherwise the buttons come back and the arrow.
     */
    protected void Command2_Click() {
        Forms.hourglass();
        setButtonsVisible(false);
        // the one Printer setting of step 2 is the paper: A4 portrait at 1:1 (the view's PageFormat)
        boolean ok;
        try {
            ok = Forms.ui().printForm(this);
        } catch (RuntimeException e) {
            ok = false;
        }
        if (!ok) {
            Forms.arrow();
            kerova.core.vb.Err.Clear();
            Forms.Beep();
            Forms.MsgBox(RecordForm.PRINTER_NOT_READY, PRINTER_STYLE, PRINTER_TITLE);
            setButtonsVisible(true);
            return;
        }
        printed++;
        setButtonsVisible(true);
        Forms.arrow();
    }

    /** "Mégse": PrintCancelled := 1 and the page form unloads. */
    protected void Command3_Click() {
        PrintCancelled = 1;
        Unload();
    }

    private void setButtonsVisible(boolean v) {
        Command1.setVisible(v);
        Command2.setVisible(v);
        Command3.setVisible(v);
        PdfMentes.setVisible(v);
    }
}
