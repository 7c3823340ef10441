package kerova.core.form;

/**
 * The runtime's {@code ProgressBar}: {@code Min}, {@code Max} and {@code Value}. A value outside
 * Min..Max is error 380 in the runtime; here it is kept within the range.
 */
public class ProgressBar extends Control {
    private int min;
    private int max = 100;
    private int value;

    public ProgressBar(String name) {
        super(name);
    }

    public int Min() {
        return min;
    }

    public void setMin(int m) {
        min = m;
        setValue(value);
    }

    public int Max() {
        return max;
    }

    public void setMax(int m) {
        max = m;
        setValue(value);
    }

    public int Value() {
        return value;
    }

    public void setValue(int v) {
        value = Math.max(min, Math.min(max, v));
        changed("Value");
    }
}
