package kerova.core.form;

import java.util.List;

/** VB's ListBox: items, ListIndex, Click and DblClick. */
public class ListBox extends Control {
    private final ListControl list = new ListControl(this::changed);

    public ListBox(String name) {
        super(name, kerova.core.vb.VbConst.vbWindowBackground);
    }

    public void AddItem(String item) {
        list.add(item, -1);
    }

    public void RemoveItem(int index) {
        list.remove(index);
    }

    public void Clear() {
        list.clear();
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

    public String Text() {
        return list.listIndex < 0 ? "" : list.get(list.listIndex);
    }

    public int ListIndex() {
        return list.listIndex;
    }

    public void setListIndex(int index) {
        list.checkIndex(index);
        if (list.listIndex != index) {
            list.listIndex = index;
            changed("ListIndex");
            fireClick();
        }
    }
}
