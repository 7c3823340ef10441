package kerova.core.form;

import java.util.List;
import kerova.core.vb.VbConst;

/** VB's ComboBox: a text box with a list. Click fires when the user picks an item (or ListIndex is set). */
public class ComboBox extends TextBox {
    private final ListControl list = new ListControl(this::changed);

    public ComboBox(String name) {
        super(name);
        setBackColor(VbConst.vbWindowBackground);
    }

    public void AddItem(String item) {
        list.add(item, -1);
    }

    public void AddItem(String item, int index) {
        list.add(item, index);
    }

    public void RemoveItem(int index) {
        list.remove(index);
    }

    public void Clear() {
        list.clear();
        setText("");
    }

    public int ListCount() {
        return list.count();
    }

    public String List(int index) {
        return list.get(index);
    }

    public List<String> items() {
        return list.copy();
    }

    public int ListIndex() {
        return list.listIndex;
    }

    /** Selects an item: its text becomes Text, then Click. -1 clears the selection. */
    public void setListIndex(int index) {
        list.checkIndex(index);
        list.listIndex = index;
        changed("ListIndex");
        if (index >= 0) {
            setText(list.get(index));
        }
        fireClick();
    }
}
