package kerova.core.form;

import kerova.core.db.Binding;
import kerova.core.db.DataControl;

/** A control that may be bound to a Data control through DataSource and DataField. */
public abstract class BoundControl extends Control implements Binding {
    private DataControl dataSource;
    private String dataField = "";

    protected BoundControl(String name, int defaultBackColor) {
        super(name, defaultBackColor);
    }

    /** Sets DataSource and DataField, and registers the binding with the Data control. */
    public void bind(DataControl source, String field) {
        this.dataSource = source;
        this.dataField = field == null ? "" : field;
        source.bind(this);
    }

    public DataControl DataSource() {
        return dataSource;
    }

    @Override
    public String DataField() {
        return dataField;
    }
}
