package kerova.partners;

import kerova.core.form.Label;

/**
 * The runtime's {@code ProgressBar} as far as Part 4.1 uses it: {@code Min}, {@code Max} and
 * {@code Value}. The forms runtime has no progress bar of its own, so it is a label, which the view
 * draws as text: the caption shows "value / max" while a check runs and nothing after a reset.
 */
public class ProgressBar extends Label {
    private int min;
    private int max = 100;
    private int value;

    public ProgressBar(String name) {
        super(name, "");
    }

    public int Min() {
        return min;
    }

    public void setMin(int m) {
        min = m;
        show();
    }

    public int Max() {
        return max;
    }

    public void setMax(int m) {
        max = m;
        show();
    }

    public int Value() {
        return value;
    }

    /** Value outside Min..Max is error 380 in the runtime; here it is kept within the range. */
    public void setValue(int v) {
        value = Math.max(min, Math.min(max, v));
        show();
    }

    private void show() {
        setCaption(value <= min ? "" : value + " / " + max);
    }
}
