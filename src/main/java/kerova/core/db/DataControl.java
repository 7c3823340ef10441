package kerova.core.db;

import java.util.ArrayList;
import java.util.List;

/**
 * The Data control of Part 1.1: {@code DatabaseName}, {@code RecordSource}, {@code Refresh}, the
 * current {@code Recordset}, its {@code Database}, and the controls bound to it. Bound controls
 * write on move: before the cursor leaves a record, the values the user changed are written (an
 * implicit Edit + Update); after it arrives, every bound control shows the new record.
 */
public final class DataControl implements Recordset.MoveListener {
    private final String name;
    private String connect = "Access 2000;";
    private String databaseName;
    private String recordSource;
    private Recordset recordset;
    private final List<Binding> bindings = new ArrayList<>();
    /** Told after every move and Recordset change (grids of the forms runtime redraw). */
    private final List<Runnable> listeners = new ArrayList<>();
    /** Set while a write-back runs, so that its own Edit/Update does not recurse. */
    private boolean writing;

    public DataControl(String name, String databaseName, String recordSource) {
        this.name = name;
        this.databaseName = databaseName;
        this.recordSource = recordSource;
    }

    public String getName() {
        return name;
    }

    public String Connect() {
        return connect;
    }

    public String DatabaseName() {
        return databaseName;
    }

    public void setDatabaseName(String databaseName) {
        this.databaseName = databaseName;
    }

    public String RecordSource() {
        return recordSource;
    }

    public void setRecordSource(String recordSource) {
        this.recordSource = recordSource;
    }

    public void bind(Binding b) {
        bindings.add(b);
    }

    public List<Binding> bindings() {
        return bindings;
    }

    /** A listener told after every move and every change of the Recordset (grids). */
    public void addListener(Runnable l) {
        listeners.add(l);
    }

    /**
     * Writes the bound changes, then opens RecordSource anew and closes the old Recordset. When the
     * new source fails to open, the error is raised and the previous Recordset stays (Part 1.2's
     * reminders that name missing columns "act on the previous set").
     */
    public void Refresh() {
        Recordset old = recordset;
        if (old != null && !old.isClosed()) {
            try {
                writeBound();
            } catch (DaoException ignored) {
                // a failed write-back on refresh is dropped, as the runtime did
            }
        }
        Recordset rs = Database().OpenRecordset(recordSource, Recordset.dbOpenDynaset);
        if (old != null && !old.isClosed()) {
            old.removeMoveListener(this);
            try {
                old.Close();
            } catch (DaoException ignored) {
                // already written above
            }
        }
        attach(rs);
    }

    /** The open Recordset, or null before the first Refresh. */
    public Recordset Recordset() {
        return recordset;
    }

    /** Assigns another Recordset; the bound controls are rebound to it. */
    public void setRecordset(Recordset rs) {
        if (recordset != null && recordset != rs) {
            recordset.removeMoveListener(this);
        }
        attach(rs);
    }

    private void attach(Recordset rs) {
        recordset = rs;
        if (rs != null) {
            rs.removeMoveListener(this);
            rs.addMoveListener(this);
            afterMove(rs);
        }
    }

    public Database Database() {
        return new Database(AccessFile.open(databaseName));
    }

    /** Writes the bound values that changed into the current record (save by moving). */
    public void writeBound() {
        Recordset rs = recordset;
        if (rs == null || rs.isClosed() || writing || rs.isEditing() || !rs.isUpdatable()) {
            return;
        }
        if (rs.AbsolutePosition() < 0) {
            return;
        }
        List<Binding> changed = new ArrayList<>();
        for (Binding b : bindings) {
            if (b.writesBack() && !b.DataField().isEmpty() && b.boundChanged()) {
                changed.add(b);
            }
        }
        if (changed.isEmpty()) {
            return;
        }
        writing = true;
        try {
            rs.Edit();
            for (Binding b : changed) {
                rs.Fields(b.DataField()).setValue(b.boundValue());
            }
            rs.Update();
        } finally {
            writing = false;
        }
    }

    @Override
    public void beforeMove(Recordset rs) {
        writeBound();
    }

    @Override
    public void afterMove(Recordset rs) {
        boolean onRecord = !rs.isClosed() && rs.AbsolutePosition() >= 0;
        for (Binding b : bindings) {
            if (b.DataField().isEmpty()) {
                continue;
            }
            Object v = null;
            if (onRecord) {
                try {
                    v = rs.Fields(b.DataField()).Value();
                } catch (DaoException e) {
                    v = null; // a missing column shows empty, as an unbound box would
                }
            }
            b.loadBound(v);
        }
        for (Runnable l : List.copyOf(listeners)) {
            l.run();
        }
    }
}
