package kerova.ui.swing;

import java.awt.BorderLayout;
import java.awt.Color;
import java.awt.Dialog;
import java.awt.Dimension;
import java.awt.FlowLayout;
import java.awt.Graphics;
import java.awt.Graphics2D;
import java.awt.GraphicsEnvironment;
import java.awt.GridBagLayout;
import java.awt.Rectangle;
import java.awt.Window;
import java.awt.geom.AffineTransform;
import java.awt.geom.Rectangle2D;
import java.awt.print.PrinterException;
import java.awt.print.PrinterJob;
import java.nio.file.Path;
import java.util.HashMap;
import java.util.IdentityHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Function;
import javax.swing.BorderFactory;
import javax.swing.JButton;
import javax.swing.JComponent;
import javax.swing.JDialog;
import javax.swing.JFileChooser;
import javax.swing.JPanel;
import javax.swing.JScrollPane;
import javax.swing.SwingUtilities;
import javax.swing.WindowConstants;
import javax.swing.filechooser.FileNameExtensionFilter;
import kerova.core.form.CommandButton;
import kerova.core.form.Control;
import kerova.core.form.Form;
import kerova.core.form.FormObserver;
import kerova.core.form.Forms;
import kerova.core.print.Page;
import kerova.core.print.PageForm;
import kerova.core.vb.VbConst;

/**
 * The window of a page form (Part 1.4): a sheet of paper (white, with margins and a shadow, at the
 * page's proportions) on a grey desk, and the buttons "Tovább", "Nyomtat", "Mégse" and "PDF
 * mentés..." under it. The window and the buttons carry the spec's names. The paper follows the
 * form's labels; the buttons follow the models (hidden while printing).
 */
public final class PagePreview implements FormObserver {
    /** Text of the box when a PDF can't be written (ours). */
    public static final String PDF_FAILED = "A PDF állomány nem menthető!";
    public static final String PDF_DIALOG_TITLE = "PDF mentés";

    private static final Map<Form, PagePreview> OPEN = new IdentityHashMap<>();
    /** Where the last preview of a form stood, so that the next page comes in the same place. */
    private static final Map<String, Rectangle> LAST_BOUNDS = new HashMap<>();
    /** Asks where to save a PDF (null: cancelled). Tests replace it. */
    static Function<PageForm, Path> pdfTarget = PagePreview::choosePdfFile;

    private final PageForm form;
    private final JDialog dialog;
    private final Paper paper;
    private final Map<CommandButton, JButton> buttons = new IdentityHashMap<>();
    private Runnable pendingShown;

    private PagePreview(PageForm form, boolean modal) {
        this.form = form;
        dialog = new JDialog((Window) null, form.Caption(),
                modal ? Dialog.ModalityType.APPLICATION_MODAL : Dialog.ModalityType.MODELESS);
        dialog.setName(form.getName());
        dialog.setDefaultCloseOperation(WindowConstants.DO_NOTHING_ON_CLOSE);
        paper = new Paper(form);
        paper.setName(form.getName() + ".paper");
        JPanel desk = new JPanel(new GridBagLayout());
        desk.setName(form.getName() + ".desk");
        desk.setBackground(new Color(0x8a, 0x8f, 0x96));
        desk.add(paper);
        JScrollPane scroll = new JScrollPane(desk);
        scroll.setBorder(BorderFactory.createEmptyBorder());
        scroll.getVerticalScrollBar().setUnitIncrement(24);
        JPanel bar = new JPanel(new FlowLayout(FlowLayout.CENTER, 12, 8));
        bar.setName(form.getName() + ".buttons");
        for (CommandButton b : new CommandButton[] {form.Command1, form.Command2, form.Command3, form.PdfMentes}) {
            JButton jb = new JButton(b.Caption());
            jb.setName(b.getName());
            jb.setToolTipText(b.ToolTipText().isEmpty() ? null : b.ToolTipText());
            jb.setVisible(b.Visible());
            jb.setEnabled(b.Enabled());
            jb.setPreferredSize(new Dimension(Math.max(110, jb.getPreferredSize().width), jb.getPreferredSize().height + 6));
            if (b == form.PdfMentes) {
                jb.addActionListener(e -> savePdf());
            } else {
                jb.addActionListener(e -> b.fireClick());
            }
            buttons.put(b, jb);
            bar.add(jb);
        }
        JPanel content = new JPanel(new BorderLayout());
        content.setName(form.getName() + ".content");
        content.add(scroll, BorderLayout.CENTER);
        content.add(bar, BorderLayout.SOUTH);
        dialog.setContentPane(content);
        dialog.getRootPane().setDefaultButton(buttons.get(form.Command1));
        FormWindow.listen(dialog, form, this::runShown);
        dialog.pack();
        Rectangle screen = GraphicsEnvironment.getLocalGraphicsEnvironment().getMaximumWindowBounds();
        Dimension d = dialog.getSize();
        dialog.setSize(Math.min(d.width + 24, screen.width), Math.min(d.height, screen.height));
        Rectangle last = LAST_BOUNDS.get(form.getName());
        if (last != null) {
            dialog.setBounds(last);
        } else {
            dialog.setLocationRelativeTo(null);
        }
        form.setObserver(this);
    }

    // ---------------------------------------------------------------- SwingUi's hooks

    /** Shows a page form; a modal one blocks until the form is unloaded. */
    static void show(PageForm form, boolean modal, Runnable onShown) {
        PagePreview p = OPEN.get(form);
        if (p == null || p.dialog.isModal() != modal) {
            if (p != null) {
                p.dispose();
            }
            p = new PagePreview(form, modal);
            OPEN.put(form, p);
        }
        p.form.setObserver(p);
        p.paper.repaint();
        if (modal) {
            p.pendingShown = onShown;
            if (p.dialog.isVisible()) {
                p.runShown();
                return;
            }
            SwingUtilities.invokeLater(p::runShown);
            p.dialog.setVisible(true); // blocks until the form unloads
        } else {
            p.dialog.setVisible(true);
            onShown.run();
        }
    }

    /** Hides a page form's window; false when the form has none. */
    static boolean hide(Form form) {
        PagePreview p = OPEN.get(form);
        if (p == null) {
            return false;
        }
        p.dialog.setVisible(false);
        return true;
    }

    /** Closes a page form's window; false when the form has none. */
    static boolean close(Form form) {
        PagePreview p = OPEN.remove(form);
        if (p == null) {
            return false;
        }
        p.dispose();
        return true;
    }

    /** PrintForm of a page form: the page through the default printer. False: not ready. */
    static boolean print(PageForm form) {
        return printPage(form.page(), form.Caption());
    }

    /** Prints one page 1:1 on the default printer, without a dialog (as PrintForm did). */
    public static boolean printPage(Page page, String jobName) {
        try {
            javax.print.PrintService[] services = PrinterJob.lookupPrintServices();
            if (services.length == 0) {
                return false;
            }
            PrinterJob job = PrinterJob.getPrinterJob();
            if (job.getPrintService() == null) {
                job.setPrintService(services[0]);
            }
            job.setJobName(jobName == null || jobName.isEmpty() ? "Kerova" : jobName);
            job.setPrintable(PagePainter.printable(page), PagePainter.pageFormat(job, page));
            job.print();
            return true;
        } catch (PrinterException | RuntimeException e) {
            return false;
        }
    }

    /** The window of a form's preview, if open (tests). */
    static JDialog window(Form form) {
        PagePreview p = OPEN.get(form);
        return p == null ? null : p.dialog;
    }

    // ---------------------------------------------------------------- inside

    private void runShown() {
        Runnable r = pendingShown;
        pendingShown = null;
        if (r != null) {
            r.run();
        }
    }

    private void dispose() {
        pendingShown = null;
        if (dialog.isShowing()) {
            LAST_BOUNDS.put(form.getName(), dialog.getBounds());
        }
        dialog.setVisible(false);
        dialog.dispose();
        if (form.observer() == this) {
            form.setObserver(null);
        }
    }

    private void savePdf() {
        Path target = pdfTarget.apply(form);
        if (target == null) {
            return;
        }
        if (!target.getFileName().toString().toLowerCase().endsWith(".pdf")) {
            target = target.resolveSibling(target.getFileName() + ".pdf");
        }
        Forms.hourglass();
        try {
            PdfExport.write(List.of(form.page()), target);
            Forms.arrow();
        } catch (Exception e) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(PDF_FAILED + "\n" + target + "\n" + e.getMessage(), VbConst.vbExclamation,
                    PageForm.PRINTER_TITLE);
        }
    }

    private static Path choosePdfFile(PageForm form) {
        JFileChooser fc = new JFileChooser(kerova.core.db.AccessFile.workingFolder().toFile());
        fc.setName("PdfMentesDialog");
        fc.setDialogTitle(PDF_DIALOG_TITLE);
        fc.setFileFilter(new FileNameExtensionFilter("PDF (*.pdf)", "pdf"));
        fc.setSelectedFile(new java.io.File(form.getName() + ".pdf"));
        fc.setApproveButtonText("Mentés");
        PagePreview p = OPEN.get(form);
        int answer = fc.showSaveDialog(p == null ? null : p.dialog);
        return answer == JFileChooser.APPROVE_OPTION ? fc.getSelectedFile().toPath() : null;
    }

    // ---------------------------------------------------------------- FormObserver

    @Override
    public void changed(Control control, String property) {
        JButton b = control instanceof CommandButton cb ? buttons.get(cb) : null;
        if (b != null) {
            CommandButton cb = (CommandButton) control;
            switch (property) {
                case "Visible" -> b.setVisible(cb.Visible());
                case "Enabled" -> b.setEnabled(cb.Enabled());
                case "Caption" -> b.setText(cb.Caption());
                default -> {
                }
            }
            // a repaint now, so that a print that follows at once sees the buttons as the model has them
            b.getParent().validate();
            return;
        }
        paper.repaint();
    }

    @Override
    public void formChanged(String property) {
        if ("Caption".equals(property)) {
            dialog.setTitle(form.Caption());
        }
    }

    /** The sheet: white paper with a shadow, the page drawn at the screen's scale. */
    static final class Paper extends JComponent {
        private static final int GAP = 20;
        private static final int SHADOW = 5;
        private final PageForm form;
        private final double scale;

        Paper(PageForm form) {
            this.form = form;
            Rectangle screen = GraphicsEnvironment.getLocalGraphicsEnvironment().getMaximumWindowBounds();
            double natural = 96.0 / 72.0;
            double fit = (screen.height - 150.0 - 2 * GAP) / form.paperHeight();
            scale = Math.max(0.5, Math.min(natural, fit));
            setOpaque(false);
        }

        double scale() {
            return scale;
        }

        @Override
        public Dimension getPreferredSize() {
            return new Dimension((int) Math.ceil(form.paperWidth() * scale) + 2 * GAP + SHADOW,
                    (int) Math.ceil(form.paperHeight() * scale) + 2 * GAP + SHADOW);
        }

        @Override
        protected void paintComponent(Graphics g0) {
            Graphics2D g = (Graphics2D) g0.create();
            try {
                int w = (int) Math.round(form.paperWidth() * scale);
                int h = (int) Math.round(form.paperHeight() * scale);
                for (int i = SHADOW; i > 0; i--) {
                    g.setColor(new Color(0, 0, 0, 18 + 8 * (SHADOW - i)));
                    g.fillRect(GAP + i, GAP + i, w, h);
                }
                g.setColor(Color.WHITE);
                g.fillRect(GAP, GAP, w, h);
                g.setColor(new Color(0xb0, 0xb0, 0xb0));
                g.drawRect(GAP, GAP, w - 1, h - 1);
                g.translate(GAP, GAP);
                g.clip(new Rectangle2D.Double(0, 0, w, h));
                g.transform(AffineTransform.getScaleInstance(scale, scale));
                PagePainter.paint(g, form.page());
            } finally {
                g.dispose();
            }
        }
    }
}
