package kerova.ui.swing;

import java.awt.Color;
import java.awt.Component;
import java.awt.Dialog;
import java.awt.Window;
import java.awt.event.WindowAdapter;
import java.awt.event.WindowEvent;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JMenuBar;
import javax.swing.JPanel;
import javax.swing.RootPaneContainer;
import javax.swing.WindowConstants;
import kerova.core.form.Control;
import kerova.core.form.Form;
import kerova.core.form.FormObserver;
import net.miginfocom.swing.MigLayout;

/**
 * The window of one form: a JFrame for a form shown modeless, a modal JDialog for a form shown
 * modally. The close box goes to the form's Form_QueryUnload (CloseGuard). Named as the form.
 */
public final class FormWindow implements FormObserver {
    private final Form form;
    private final boolean modal;
    private final Window window;
    private final Renderer renderer;
    private Runnable pendingShown;

    FormWindow(SwingUi ui, Form form, boolean modal) {
        this.form = form;
        this.modal = modal;
        this.renderer = new Renderer(form);
        if (modal) {
            JDialog d = new JDialog((Window) null, form.Caption(), Dialog.ModalityType.APPLICATION_MODAL);
            d.setDefaultCloseOperation(WindowConstants.DO_NOTHING_ON_CLOSE);
            window = d;
        } else {
            JFrame f = new JFrame(form.Caption());
            f.setDefaultCloseOperation(WindowConstants.DO_NOTHING_ON_CLOSE);
            window = f;
        }
        window.setName(form.getName());
        JPanel content = new FittingPanel(new MigLayout(form.layoutConstraints, form.columnConstraints));
        content.setName(form.getName() + ".content");
        renderer.fill(content, form.layoutRoots());
        RootPaneContainer rpc = (RootPaneContainer) window;
        // scroll bars only where the screen is smaller than the form
        javax.swing.JScrollPane scroll = new javax.swing.JScrollPane(content);
        scroll.setBorder(null);
        scroll.setName(form.getName() + ".scroll");
        rpc.setContentPane(scroll);
        if (!form.menus().isEmpty()) {
            JMenuBar bar = renderer.menuBar();
            if (window instanceof JFrame f) {
                f.setJMenuBar(bar);
            } else {
                ((JDialog) window).setJMenuBar(bar);
            }
        }
        listen(window, form, this::runShown);
        window.addComponentListener(new java.awt.event.ComponentAdapter() {
            @Override
            public void componentResized(java.awt.event.ComponentEvent e) {
                form.Width = window.getWidth();
                form.Height = window.getHeight();
                form.resized();
            }
        });
        window.pack();
        if (form.Width > 0 && form.Height > 0) {
            // the form's size, but never smaller than its content, and never larger than the screen
            java.awt.Rectangle screen = java.awt.GraphicsEnvironment.getLocalGraphicsEnvironment()
                    .getMaximumWindowBounds();
            int w = Math.min(Math.max(form.Width, window.getWidth()), screen.width);
            int h = Math.min(Math.max(form.Height, window.getHeight()), screen.height);
            window.setSize(w, h);
        }
        window.setLocationRelativeTo(null);
        form.setObserver(this);
        window.setEnabled(form.Enabled());
    }

    public Window window() {
        return window;
    }

    public Form form() {
        return form;
    }

    boolean isModal() {
        return modal;
    }

    /** The close box to the form's closeBox (Form_QueryUnload), and {@code shown} once the window opens. */
    static void listen(Window window, Form form, Runnable shown) {
        window.addWindowListener(new WindowAdapter() {
            @Override
            public void windowClosing(WindowEvent e) {
                form.closeBox();
            }

            @Override
            public void windowOpened(WindowEvent e) {
                shown.run();
            }
        });
    }

    private void runShown() {
        Runnable r = pendingShown;
        pendingShown = null;
        if (r != null) {
            r.run();
        }
    }

    /** Shows the window; a modal one blocks here until it is disposed or hidden. */
    void show(Runnable onShown) {
        form.setObserver(this);
        renderer.refreshAll();
        if (modal) {
            pendingShown = onShown;
            if (window.isVisible()) {
                runShown();
                return;
            }
            // onShown runs once inside the modal loop: at windowOpened or at the first queued event
            javax.swing.SwingUtilities.invokeLater(this::runShown);
            window.setVisible(true); // blocks until the form is closed
        } else {
            window.setVisible(true);
            window.toFront();
            onShown.run();
        }
    }

    void hide() {
        window.setVisible(false);
    }

    void dispose() {
        pendingShown = null;
        window.setVisible(false);
        window.dispose();
        if (form.observer() == this) {
            form.setObserver(null);
        }
    }

    // ---- FormObserver ----

    @Override
    public void changed(Control control, String property) {
        renderer.update(control, property);
    }

    @Override
    public void focus(Control control) {
        Component c = renderer.component(control);
        if (c != null) {
            c.requestFocusInWindow();
        }
    }

    @Override
    public void formChanged(String property) {
        if ("Caption".equals(property)) {
            if (window instanceof JFrame f) {
                f.setTitle(form.Caption());
            } else {
                ((JDialog) window).setTitle(form.Caption());
            }
        } else if ("Enabled".equals(property)) {
            window.setEnabled(form.Enabled());
        }
    }

    static Color color(int bgr) {
        return new Color(kerova.core.vb.VbColor.toRgb(bgr));
    }

    /** A form's panel in its scroll pane: it fills the window, and scrolls only below its preferred size. */
    private static final class FittingPanel extends JPanel implements javax.swing.Scrollable {
        FittingPanel(java.awt.LayoutManager layout) {
            super(layout);
        }

        @Override
        public java.awt.Dimension getPreferredScrollableViewportSize() {
            return getPreferredSize();
        }

        @Override
        public int getScrollableUnitIncrement(java.awt.Rectangle visible, int orientation, int direction) {
            return 16;
        }

        @Override
        public int getScrollableBlockIncrement(java.awt.Rectangle visible, int orientation, int direction) {
            return orientation == javax.swing.SwingConstants.VERTICAL ? visible.height : visible.width;
        }

        @Override
        public boolean getScrollableTracksViewportWidth() {
            return getParent() != null && getParent().getWidth() >= getPreferredSize().width;
        }

        @Override
        public boolean getScrollableTracksViewportHeight() {
            return getParent() != null && getParent().getHeight() >= getPreferredSize().height;
        }
    }
}
