package kerova.core.form;

import java.util.ArrayList;
import java.util.List;
import java.util.function.IntConsumer;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.vb.Conv;

/**
 * VB's DBGrid on a Data control: columns with Caption and DataField, the current row follows the
 * Recordset. Events: Click, DblClick, HeadClick(ColIndex), RowColChange.
 */
public class DBGrid extends Control {
    private DataControl dataSource;
    private String caption = "";
    private final List<Column> columns = new ArrayList<>();
    public boolean AllowUpdate;
    /** With AllowUpdate: the view shows an empty row after the last, and typing into it adds a record. */
    public boolean AllowAddNew;
    public IntConsumer HeadClick;
    public Runnable RowColChange;

    /** One grid column: Caption, DataField, Width (pixels, 0 = automatic), Visible. */
    public final class Column {
        private String caption;
        private String dataField;
        public int Width;
        public boolean Visible = true;

        Column(String caption, String dataField) {
            this.caption = caption;
            this.dataField = dataField;
        }

        public String Caption() {
            return caption;
        }

        public void setCaption(String c) {
            caption = c;
            changed("Columns");
        }

        public String DataField() {
            return dataField;
        }

        public void setDataField(String f) {
            dataField = f;
            changed("Columns");
        }

        /** The value of this column in the current row (null without one). */
        public Object Value() {
            Recordset rs = recordset();
            if (rs == null || rs.AbsolutePosition() < 0) {
                return null;
            }
            return rs.Fields(dataField).Value();
        }

        /** The current row's value as text. */
        public String Text() {
            Object v = Value();
            return v == null ? "" : Conv.CStr(v);
        }
    }

    /** The last row read for drawing (a row is read once for all its cells). */
    private int cachedRow = -1;
    private Object[] cachedValues;
    private Recordset cachedSet;

    public DBGrid(String name) {
        super(name, kerova.core.vb.VbConst.vbWindowBackground);
    }

    /** Sets DataSource; the grid redraws after every move of the Data control. */
    public void bind(DataControl source) {
        this.dataSource = source;
        source.addListener(() -> {
            cachedRow = -1;
            changed("Data");
        });
    }

    public DataControl DataSource() {
        return dataSource;
    }

    public String Caption() {
        return caption;
    }

    public void setCaption(String c) {
        caption = c == null ? "" : c;
        changed("Caption");
    }

    /** Adds a column whose caption is its DataField. */
    public Column addColumn(String dataField) {
        return addColumn(dataField, dataField);
    }

    public Column addColumn(String caption, String dataField) {
        Column c = new Column(caption, dataField);
        columns.add(c);
        changed("Columns");
        return c;
    }

    public Column Columns(int index) {
        return columns.get(index);
    }

    /** The declared columns; with none, one per column of the Recordset. */
    public List<Column> columns() {
        if (columns.isEmpty()) {
            List<Column> auto = new ArrayList<>();
            Recordset rs = recordset();
            if (rs != null) {
                for (String n : rs.columnNames()) {
                    auto.add(new Column(n, n));
                }
            }
            return auto;
        }
        return List.copyOf(columns);
    }

    /** Redraws from the Recordset (VB's Refresh). */
    public void Refresh() {
        cachedRow = -1;
        changed("Data");
    }

    /** The open Recordset of the Data control, or null. */
    public Recordset recordset() {
        if (dataSource == null) {
            return null;
        }
        Recordset rs = dataSource.Recordset();
        return rs == null || rs.isClosed() ? null : rs;
    }

    /** Number of rows shown. */
    public int rowCount() {
        Recordset rs = recordset();
        try {
            return rs == null ? 0 : rs.size2();
        } catch (RuntimeException e) {
            return 0;
        }
    }

    /** The current row (0 upwards), or -1. */
    public int Row() {
        Recordset rs = recordset();
        try {
            return rs == null ? -1 : rs.AbsolutePosition();
        } catch (RuntimeException e) {
            return -1;
        }
    }

    /** The value of a cell, null when empty or unreadable (a row deleted by another user). */
    public Object cell(int row, Column col) {
        Recordset rs = recordset();
        if (rs == null) {
            return null;
        }
        try {
            Object[] values;
            if (row == cachedRow && rs == cachedSet) {
                values = cachedValues;
            } else {
                values = rs.peek(row);
                cachedRow = row;
                cachedSet = rs;
                cachedValues = values;
            }
            List<String> names = rs.columnNames();
            for (int i = 0; i < names.size(); i++) {
                if (names.get(i).equalsIgnoreCase(col.DataField())) {
                    return values[i];
                }
            }
        } catch (RuntimeException e) {
            return null;
        }
        return null;
    }

    /** A cell as the grid shows it. */
    public String cellText(int row, Column col) {
        Object v = cell(row, col);
        if (v == null) {
            return "";
        }
        try {
            return Conv.CStr(v);
        } catch (RuntimeException e) {
            return String.valueOf(v);
        }
    }

    /** The user selected a row: the Recordset moves there (saving bound changes), then RowColChange. */
    public void selectRow(int row) {
        Recordset rs = recordset();
        if (rs == null || row == Row()) {
            return;
        }
        Forms.run(() -> rs.setAbsolutePosition(row));
        Forms.run(RowColChange);
    }

    /**
     * The user typed into a cell (only with AllowUpdate): the grid moves to that row (the bound changes
     * of the row it leaves are written), and the value is stored at once (Edit, the column, Update; an
     * empty text is Null); the bound controls then show the stored row. With AllowAddNew, the row after
     * the last adds a record (AddNew, the column, Update, MoveLast). A write that fails raises its error
     * (the runtime's box) and the row keeps its stored value.
     */
    public void editCell(int row, Column col, String text) {
        Recordset rs = recordset();
        if (rs == null || !AllowUpdate) {
            return;
        }
        Object v = text == null || text.isEmpty() ? null : text;
        Forms.run(() -> {
            try {
                if (AllowAddNew && row >= rowCount()) {
                    dataSource.writeBound();
                    rs.AddNew();
                    rs.Fields(col.DataField()).setValue(v);
                    rs.Update();
                    rs.MoveLast();
                } else {
                    if (row != Row()) {
                        rs.setAbsolutePosition(row);
                    }
                    dataSource.writeBound();
                    rs.Edit();
                    rs.Fields(col.DataField()).setValue(v);
                    rs.Update();
                    dataSource.afterMove(rs);
                }
            } catch (RuntimeException e) {
                if (rs.isEditing()) {
                    rs.CancelUpdate();
                }
                cachedRow = -1;
                changed("Data");
                throw e;
            }
        });
    }

    /** The user clicked a column heading. */
    public void fireHeadClick(int colIndex) {
        if (HeadClick != null) {
            Forms.run(() -> HeadClick.accept(colIndex));
        }
    }
}
