package kerova.core.form;

import java.time.LocalDate;
import java.time.LocalDateTime;
import kerova.core.vb.Conv;
import kerova.core.vb.VbConst;

/** The date picker DTPicker: Value (a date), Year, Month, Day; Change when the value changes. */
public class DTPicker extends BoundControl {
    private LocalDateTime value = kerova.core.vb.VbClock.today();
    private LocalDateTime loaded;

    public DTPicker(String name) {
        super(name, VbConst.vbWindowBackground);
    }

    public LocalDateTime Value() {
        return value;
    }

    /** Sets the value: a date, or anything CDate takes. The time of day is kept as given. */
    public void setValue(Object v) {
        LocalDateTime d = v instanceof LocalDate ld ? ld.atStartOfDay() : Conv.CDate(v);
        if (!d.equals(value)) {
            value = d;
            changed("Value");
            fireChange();
        }
    }

    public int Year() {
        return value.getYear();
    }

    public int Month() {
        return value.getMonthValue();
    }

    public int Day() {
        return value.getDayOfMonth();
    }

    @Override
    public void loadBound(Object v) {
        if (v != null) {
            setValue(v);
        }
        loaded = value;
    }

    @Override
    public boolean boundChanged() {
        return loaded != null && !loaded.equals(value);
    }

    @Override
    public Object boundValue() {
        return value;
    }
}
