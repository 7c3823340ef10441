package kerova.core.db;

/** A field of the current record: {@code rs.Fields("Név").Value()}, {@code rs.Fields(3).setValue(x)}. */
public final class Field {
    private final Recordset rs;
    private final int index;

    Field(Recordset rs, int index) {
        this.rs = rs;
        this.index = index;
    }

    public Object Value() {
        return rs.value(index);
    }

    public void setValue(Object v) {
        rs.setValue(index, v);
    }

    public String Name() {
        return rs.columnNames().get(index);
    }

    public int ordinal() {
        return index;
    }
}
