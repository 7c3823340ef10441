package kerova.ui.swing;

import java.awt.Color;
import java.awt.Component;
import java.awt.Container;
import java.awt.event.FocusAdapter;
import java.awt.event.FocusEvent;
import java.awt.event.KeyAdapter;
import java.awt.event.KeyEvent;
import java.awt.event.MouseAdapter;
import java.awt.event.MouseEvent;
import java.time.LocalDateTime;
import java.time.ZoneId;
import java.util.Date;
import java.util.IdentityHashMap;
import java.util.List;
import java.util.Map;
import javax.swing.AbstractButton;
import javax.swing.BorderFactory;
import javax.swing.DefaultListModel;
import javax.swing.JButton;
import javax.swing.JCheckBox;
import javax.swing.JComboBox;
import javax.swing.JComponent;
import javax.swing.JLabel;
import javax.swing.JList;
import javax.swing.JMenu;
import javax.swing.JMenuBar;
import javax.swing.JMenuItem;
import javax.swing.JPanel;
import javax.swing.JScrollPane;
import javax.swing.JSpinner;
import javax.swing.JTable;
import javax.swing.JTextArea;
import javax.swing.JTextField;
import javax.swing.ListSelectionModel;
import javax.swing.SpinnerDateModel;
import javax.swing.UIManager;
import javax.swing.event.DocumentEvent;
import javax.swing.event.DocumentListener;
import javax.swing.table.AbstractTableModel;
import javax.swing.text.JTextComponent;
import kerova.core.form.CheckBox;
import kerova.core.form.ComboBox;
import kerova.core.form.CommandButton;
import kerova.core.form.Control;
import kerova.core.form.DBGrid;
import kerova.core.form.DTPicker;
import kerova.core.form.Form;
import kerova.core.form.Frame;
import kerova.core.form.Label;
import kerova.core.form.ListBox;
import kerova.core.form.MaskEdBox;
import kerova.core.form.Menu;
import kerova.core.form.TextBox;
import kerova.core.vb.VbColor;
import net.miginfocom.swing.MigLayout;

/**
 * Turns a form's control models into Swing components and keeps both in step: a model change
 * updates the component; a user's action updates the model and raises its event. Every
 * component carries the spec name of its control ({@code setName}).
 */
final class Renderer {
    private final Form form;
    private final Map<Control, JComponent> components = new IdentityHashMap<>();
    /** The outer component of a control (a grid's scroll pane), for Visible. */
    private final Map<Control, JComponent> outers = new IdentityHashMap<>();
    /** Set while the model pushes a value into a component, so that the component's listener keeps quiet. */
    private boolean pushing;

    Renderer(Form form) {
        this.form = form;
    }

    JComponent component(Control c) {
        return components.get(c);
    }

    void fill(Container panel, List<Control> controls) {
        for (Control c : controls) {
            JComponent outer = build(c);
            if (outer != null) {
                panel.add(outer, c.layout);
            }
        }
    }

    private JComponent build(Control c) {
        JComponent comp;
        JComponent outer;
        if (c instanceof DBGrid g) {
            JTable t = gridTable(g);
            comp = t;
            JScrollPane sp = new JScrollPane(t);
            sp.setName(c.getName() + ".scroll");
            sp.setBorder(BorderFactory.createTitledBorder(g.Caption()));
            outer = sp;
        } else if (c instanceof Frame f) {
            JPanel p = new JPanel(new MigLayout(f.contentLayout));
            p.setBorder(BorderFactory.createTitledBorder(f.Caption()));
            fill(p, f.children());
            comp = p;
            outer = p;
        } else if (c instanceof ComboBox cb) {
            comp = combo(cb);
            outer = comp;
        } else if (c instanceof TextBox tb) {
            comp = text(tb);
            outer = tb.MultiLine ? new JScrollPane(comp) : comp;
        } else if (c instanceof kerova.core.form.ProgressBar p) {
            javax.swing.JProgressBar bar = new javax.swing.JProgressBar(p.Min(), p.Max());
            bar.setValue(p.Value());
            comp = bar;
            outer = bar;
        } else if (c instanceof Label l) {
            JLabel lab = new JLabel(l.Caption());
            clickable(lab, c);
            comp = lab;
            outer = lab;
        } else if (c instanceof CommandButton b) {
            JButton btn = new JButton();
            btn.setMargin(new java.awt.Insets(2, 4, 2, 4));
            caption(btn, b.Caption());
            btn.addActionListener(e -> b.fireClick());
            focusable(btn, c);
            comp = btn;
            outer = btn;
        } else if (c instanceof CheckBox cb) {
            JCheckBox box = new JCheckBox();
            caption(box, cb.Caption());
            box.setSelected(cb.Value() == 1);
            box.addActionListener(e -> {
                if (!pushing) {
                    cb.setValue(box.isSelected() ? 1 : 0);
                }
            });
            focusable(box, c);
            comp = box;
            outer = box;
        } else if (c instanceof ListBox lb) {
            comp = list(lb);
            outer = new JScrollPane(comp);
        } else if (c instanceof DTPicker dp) {
            comp = picker(dp);
            outer = comp;
        } else {
            return null;
        }
        comp.setName(c.getName());
        components.put(c, comp);
        outers.put(c, outer);
        applyCommon(c);
        return outer;
    }

    // ---------------------------------------------------------------- kinds

    private JComponent text(TextBox tb) {
        JTextComponent t = tb.MultiLine ? new JTextArea(4, 30) : new JTextField(12);
        t.setText(tb.Text());
        t.setEditable(!tb.Locked());
        t.getDocument().addDocumentListener(new DocumentListener() {
            private void typed() {
                if (!pushing) {
                    pushing = true;
                    try {
                        tb.setText(t.getText());
                    } finally {
                        pushing = false;
                    }
                }
            }

            @Override
            public void insertUpdate(DocumentEvent e) {
                typed();
            }

            @Override
            public void removeUpdate(DocumentEvent e) {
                typed();
            }

            @Override
            public void changedUpdate(DocumentEvent e) {
                typed();
            }
        });
        t.addKeyListener(new KeyAdapter() {
            @Override
            public void keyTyped(KeyEvent e) {
                char ch = e.getKeyChar();
                if (ch == KeyEvent.CHAR_UNDEFINED || (ch < 32 && ch != 8)) {
                    return;
                }
                if (tb instanceof MaskEdBox m && ch != 8 && !m.Mask().isEmpty() && !m.fits(t.getCaretPosition(), ch)) {
                    e.consume();
                    return;
                }
                int code = tb.fireKeyPress(ch);
                if (code == 0) {
                    e.consume();
                } else if (code != ch) {
                    e.setKeyChar((char) code);
                }
            }
        });
        t.addMouseListener(new MouseAdapter() {
            @Override
            public void mouseClicked(MouseEvent e) {
                if (e.getClickCount() == 2) {
                    tb.fireDblClick();
                } else {
                    tb.fireClick();
                }
            }
        });
        t.addCaretListener(e -> {
            if (!pushing) {
                int a = Math.min(e.getDot(), e.getMark());
                int b = Math.max(e.getDot(), e.getMark());
                pushing = true;
                try {
                    tb.setSelStart(a);
                    tb.setSelLength(b - a);
                } finally {
                    pushing = false;
                }
            }
        });
        focusable(t, tb);
        return t;
    }

    private JComponent combo(ComboBox cb) {
        JComboBox<String> box = new JComboBox<>(cb.items().toArray(new String[0]));
        box.setEditable(true);
        box.setSelectedItem(cb.Text());
        box.addActionListener(e -> {
            if (pushing) {
                return;
            }
            int i = box.getSelectedIndex();
            pushing = true;
            try {
                if (i >= 0 && i != cb.ListIndex()) {
                    pushing = false;
                    cb.setListIndex(i);
                } else if (i < 0) {
                    Object v = box.getEditor().getItem();
                    cb.setText(v == null ? "" : v.toString());
                }
            } finally {
                pushing = false;
            }
        });
        focusable(box, cb);
        Component editor = box.getEditor().getEditorComponent();
        editor.addFocusListener(focusListener(cb));
        return box;
    }

    private JComponent list(ListBox lb) {
        DefaultListModel<String> m = new DefaultListModel<>();
        lb.items().forEach(m::addElement);
        JList<String> list = new JList<>(m);
        list.setSelectionMode(ListSelectionModel.SINGLE_SELECTION);
        list.addListSelectionListener(e -> {
            if (!pushing && !e.getValueIsAdjusting()) {
                lb.setListIndex(list.getSelectedIndex());
            }
        });
        list.addMouseListener(new MouseAdapter() {
            @Override
            public void mouseClicked(MouseEvent e) {
                if (e.getClickCount() == 2) {
                    lb.fireDblClick();
                }
            }
        });
        focusable(list, lb);
        return list;
    }

    private JComponent picker(DTPicker dp) {
        SpinnerDateModel model = new SpinnerDateModel(toDate(dp.Value()), null, null, java.util.Calendar.DAY_OF_MONTH);
        JSpinner sp = new JSpinner(model);
        sp.setEditor(new JSpinner.DateEditor(sp, "yyyy.MM.dd."));
        sp.addChangeListener(e -> {
            if (!pushing) {
                dp.setValue(LocalDateTime.ofInstant(((Date) sp.getValue()).toInstant(), ZoneId.systemDefault()));
            }
        });
        focusable(sp, dp);
        return sp;
    }

    private static Date toDate(LocalDateTime d) {
        return Date.from(d.atZone(ZoneId.systemDefault()).toInstant());
    }

    private JTable gridTable(DBGrid g) {
        AbstractTableModel model = new AbstractTableModel() {
            @Override
            public int getRowCount() {
                return g.rowCount() + (g.AllowUpdate && g.AllowAddNew ? 1 : 0);
            }

            @Override
            public boolean isCellEditable(int row, int col) {
                return g.AllowUpdate;
            }

            @Override
            public void setValueAt(Object value, int row, int col) {
                g.editCell(row, g.columns().get(col), value == null ? "" : value.toString());
            }

            @Override
            public int getColumnCount() {
                return g.columns().size();
            }

            @Override
            public String getColumnName(int col) {
                return g.columns().get(col).Caption();
            }

            @Override
            public Object getValueAt(int row, int col) {
                if (row >= g.rowCount()) {
                    return "";
                }
                return g.cellText(row, g.columns().get(col));
            }
        };
        JTable t = new JTable(model);
        t.setSelectionMode(ListSelectionModel.SINGLE_SELECTION);
        t.setAutoResizeMode(JTable.AUTO_RESIZE_OFF);
        t.getTableHeader().setReorderingAllowed(false);
        t.getTableHeader().setName(g.getName() + ".header");
        t.getSelectionModel().addListSelectionListener(e -> {
            if (!pushing && !e.getValueIsAdjusting()) {
                int r = t.getSelectedRow();
                if (r >= 0 && r < g.rowCount()) {
                    g.selectRow(r);
                }
            }
        });
        t.getTableHeader().addMouseListener(new MouseAdapter() {
            @Override
            public void mouseClicked(MouseEvent e) {
                int col = t.columnAtPoint(e.getPoint());
                if (col >= 0) {
                    g.fireHeadClick(t.convertColumnIndexToModel(col));
                }
            }
        });
        t.addMouseListener(new MouseAdapter() {
            @Override
            public void mouseClicked(MouseEvent e) {
                if (e.getClickCount() == 2) {
                    g.fireDblClick();
                } else {
                    g.fireClick();
                }
            }
        });
        focusable(t, g);
        sizeColumns(t, g);
        return t;
    }

    private static void sizeColumns(JTable t, DBGrid g) {
        List<DBGrid.Column> cols = g.columns();
        for (int i = 0; i < cols.size() && i < t.getColumnModel().getColumnCount(); i++) {
            int w = cols.get(i).Width;
            if (w <= 0) {
                w = Math.max(70, t.getFontMetrics(t.getFont()).stringWidth(cols.get(i).Caption()) + 24);
            }
            t.getColumnModel().getColumn(i).setPreferredWidth(w);
        }
    }

    // ---------------------------------------------------------------- common

    private static void caption(AbstractButton b, String caption) {
        int amp = caption.indexOf('&');
        if (amp >= 0 && amp + 1 < caption.length()) {
            b.setText(caption.substring(0, amp) + caption.substring(amp + 1));
            b.setMnemonic(Character.toUpperCase(caption.charAt(amp + 1)));
            b.setDisplayedMnemonicIndex(amp);
        } else {
            b.setText(caption);
        }
    }

    private FocusAdapter focusListener(Control c) {
        return new FocusAdapter() {
            @Override
            public void focusGained(FocusEvent e) {
                if (!e.isTemporary()) {
                    form.moveFocus(c, false);
                }
            }
        };
    }

    private void focusable(JComponent comp, Control c) {
        comp.addFocusListener(focusListener(c));
        if (c.Validate != null) {
            comp.setInputVerifier(new javax.swing.InputVerifier() {
                @Override
                public boolean verify(JComponent input) {
                    return true;
                }

                @Override
                public boolean shouldYieldFocus(JComponent source, JComponent target) {
                    return c.fireValidate();
                }
            });
        }
    }

    private void clickable(JComponent comp, Control c) {
        comp.addMouseListener(new MouseAdapter() {
            @Override
            public void mouseClicked(MouseEvent e) {
                if (e.getClickCount() == 2) {
                    c.fireDblClick();
                } else {
                    c.fireClick();
                }
            }
        });
    }

    private void applyCommon(Control c) {
        JComponent comp = components.get(c);
        JComponent outer = outers.get(c);
        outer.setVisible(c.Visible());
        comp.setEnabled(c.Enabled());
        comp.setToolTipText(c.ToolTipText().isEmpty() ? null : c.ToolTipText());
        applyColor(c, comp);
        if (c.Height() > 0 && outer.getPreferredSize().height != c.Height()) {
            outer.setPreferredSize(new java.awt.Dimension(outer.getPreferredSize().width, c.Height()));
        }
    }

    private static void applyColor(Control c, JComponent comp) {
        int bgr = c.BackColor();
        if (VbColor.isSystemColor(bgr)) {
            // the toolkit's own tint of the same system colour
            Color def = null;
            if (comp instanceof JTextComponent) {
                def = UIManager.getColor("TextField.background");
            }
            if (def != null) {
                comp.setBackground(def);
            }
        } else {
            comp.setBackground(FormWindow.color(bgr));
            comp.setOpaque(true);
        }
    }

    /** Re-reads every property (a form shown again). */
    void refreshAll() {
        for (Control c : components.keySet()) {
            update(c, "*");
        }
    }

    /** A model property changed: update the component. */
    void update(Control c, String property) {
        if (c instanceof Menu m) {
            updateMenu(m);
            return;
        }
        JComponent comp = components.get(c);
        if (comp == null) {
            return;
        }
        boolean was = pushing;
        pushing = true;
        try {
            applyCommon(c);
            if (c instanceof DBGrid g) {
                JTable t = (JTable) comp;
                AbstractTableModel m = (AbstractTableModel) t.getModel();
                if ("Columns".equals(property) || "*".equals(property)) {
                    m.fireTableStructureChanged();
                    sizeColumns(t, g);
                } else {
                    m.fireTableDataChanged();
                }
                ((javax.swing.border.TitledBorder) ((JScrollPane) outers.get(c)).getBorder()).setTitle(g.Caption());
                int row = g.Row();
                if (row >= 0 && row < t.getRowCount()) {
                    t.setRowSelectionInterval(row, row);
                    t.scrollRectToVisible(t.getCellRect(row, 0, true));
                } else {
                    t.clearSelection();
                }
            } else if (c instanceof ComboBox cb) {
                @SuppressWarnings("unchecked")
                JComboBox<String> box = (JComboBox<String>) comp;
                if ("List".equals(property) || "*".equals(property)) {
                    box.removeAllItems();
                    cb.items().forEach(box::addItem);
                }
                box.setSelectedItem(cb.Text());
            } else if (c instanceof TextBox tb) {
                JTextComponent t = (JTextComponent) comp;
                if (!t.getText().equals(tb.Text())) {
                    t.setText(tb.Text());
                }
                t.setEditable(!tb.Locked());
                if ("Sel".equals(property) && !was) {
                    int len = t.getDocument().getLength();
                    int a = Math.min(tb.SelStart(), len);
                    t.select(a, Math.min(a + tb.SelLength(), len));
                }
            } else if (c instanceof kerova.core.form.ProgressBar p) {
                javax.swing.JProgressBar bar = (javax.swing.JProgressBar) comp;
                bar.setMinimum(p.Min());
                bar.setMaximum(p.Max());
                bar.setValue(p.Value());
            } else if (c instanceof Label l) {
                ((JLabel) comp).setText(l.Caption());
            } else if (c instanceof CommandButton b) {
                JButton btn = (JButton) comp;
                caption(btn, b.Caption());
                javax.swing.JRootPane root = javax.swing.SwingUtilities.getRootPane(btn);
                if (root != null && "Default".equals(property)) {
                    root.setDefaultButton(b.Default() ? btn : root.getDefaultButton() == btn ? null : root.getDefaultButton());
                }
            } else if (c instanceof CheckBox cb) {
                JCheckBox box = (JCheckBox) comp;
                caption(box, cb.Caption());
                box.setSelected(cb.Value() == 1);
            } else if (c instanceof ListBox lb) {
                @SuppressWarnings("unchecked")
                JList<String> list = (JList<String>) comp;
                DefaultListModel<String> m = (DefaultListModel<String>) list.getModel();
                if ("List".equals(property) || "*".equals(property)) {
                    m.clear();
                    lb.items().forEach(m::addElement);
                }
                if (lb.ListIndex() >= 0) {
                    list.setSelectedIndex(lb.ListIndex());
                } else {
                    list.clearSelection();
                }
            } else if (c instanceof DTPicker dp) {
                ((JSpinner) comp).setValue(toDate(dp.Value()));
            } else if (c instanceof Frame f) {
                ((javax.swing.border.TitledBorder) comp.getBorder()).setTitle(f.Caption());
            }
            Container parent = outers.get(c).getParent();
            if (parent != null && ("Visible".equals(property) || "Height".equals(property))) {
                parent.revalidate();
                parent.repaint();
            }
        } finally {
            pushing = was;
        }
    }

    // ---------------------------------------------------------------- menus

    private final Map<Menu, JMenuItem> menuItems = new IdentityHashMap<>();

    JMenuBar menuBar() {
        JMenuBar bar = new JMenuBar();
        bar.setName(form.getName() + ".menu");
        for (Menu m : form.menus()) {
            bar.add(menuItem(m));
        }
        return bar;
    }

    private JMenuItem menuItem(Menu m) {
        JMenuItem item;
        if (m.items().isEmpty()) {
            item = new JMenuItem();
            item.addActionListener(e -> m.fireClick());
            if (m.parent() == null) {
                // a top-level entry without sub-entries acts at once, as the runtime's menu bar did
                item.setMaximumSize(item.getPreferredSize());
            }
        } else {
            JMenu menu = new JMenu();
            for (Menu child : m.items()) {
                menu.add(menuItem(child));
            }
            menu.addMenuListener(new javax.swing.event.MenuListener() {
                @Override
                public void menuSelected(javax.swing.event.MenuEvent e) {
                    m.fireClick();
                }

                @Override
                public void menuDeselected(javax.swing.event.MenuEvent e) {
                }

                @Override
                public void menuCanceled(javax.swing.event.MenuEvent e) {
                }
            });
            item = menu;
        }
        item.setName(m.getName());
        caption(item, m.Caption());
        menuItems.put(m, item);
        updateMenu(m);
        return item;
    }

    private void updateMenu(Menu m) {
        JMenuItem item = menuItems.get(m);
        if (item == null) {
            return;
        }
        caption(item, m.Caption());
        item.setVisible(m.Visible());
        item.setEnabled(m.Enabled());
        if (m.parent() != null && m.items().isEmpty()) {
            item.setIcon(m.Checked() ? CHECK_MARK : null); // the runtime's ticked menu entry
        }
        if (m.parent() == null && m.items().isEmpty()) {
            item.setMaximumSize(item.getPreferredSize());
        }
    }

    /** The tick of a checked menu entry. */
    private static final javax.swing.Icon CHECK_MARK = new javax.swing.Icon() {
        @Override
        public void paintIcon(java.awt.Component c, java.awt.Graphics g, int x, int y) {
            java.awt.Graphics2D g2 = (java.awt.Graphics2D) g.create();
            g2.setRenderingHint(java.awt.RenderingHints.KEY_ANTIALIASING, java.awt.RenderingHints.VALUE_ANTIALIAS_ON);
            g2.setStroke(new java.awt.BasicStroke(2f));
            g2.setColor(c.getForeground());
            g2.drawPolyline(new int[] {x + 2, x + 5, x + 11}, new int[] {y + 7, y + 10, y + 3}, 3);
            g2.dispose();
        }

        @Override
        public int getIconWidth() {
            return 13;
        }

        @Override
        public int getIconHeight() {
            return 13;
        }
    };
}
