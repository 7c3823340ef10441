package kerova.core.form;

import java.util.List;
import kerova.core.vb.VbConst;

/** VB's ComboBox: a text box with a list. Click fires when the user picks an item (or ListIndex is set). */
public class ComboBox extends TextBox {
    private final ListControl list = new ListControl();

    public ComboBox(String name) {
        super(name);
        setBackColor(VbConst.vbWindowBackground);
    }

    public void AddItem(String item) {
        list.add(item == null ? "" : item, -1);
        changed("List");
    }

    public void AddItem(String item, int index) {
        list.add(item == null ? "" : item, index);
        changed("List");
    }

    public void RemoveItem(int index) {
        list.remove(index);
        changed("List");
    }

    public void Clear() {
        list.items.clear();
        list.listIndex = -1;
        changed("List");
        setText("");
    }

    public int ListCount() {
        return list.items.size();
    }

    public String List(int index) {
        return list.items.get(index);
    }

    public List<String> items() {
        return List.copyOf(list.items);
    }

    public int ListIndex() {
        return list.listIndex;
    }

    /** Selects an item: its text becomes Text, then Click. -1 clears the selection. */
    public void setListIndex(int index) {
        if (index < -1 || index >= list.items.size()) {
            throw new kerova.core.vb.VbException(380, "Invalid property value");
        }
        list.listIndex = index;
        changed("ListIndex");
        if (index >= 0) {
            setText(list.items.get(index));
        }
        fireClick();
    }
}
