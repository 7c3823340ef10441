package kerova.core.form;

import java.util.List;

/** VB's ListBox: items, ListIndex, Click and DblClick. */
public class ListBox extends Control {
    private final ListControl list = new ListControl();

    public ListBox(String name) {
        super(name, kerova.core.vb.VbConst.vbWindowBackground);
    }

    public void AddItem(String item) {
        list.add(item == null ? "" : item, -1);
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

    public String Text() {
        return list.listIndex < 0 ? "" : list.items.get(list.listIndex);
    }

    public int ListIndex() {
        return list.listIndex;
    }

    public void setListIndex(int index) {
        if (index < -1 || index >= list.items.size()) {
            throw new kerova.core.vb.VbException(380, "Invalid property value");
        }
        if (list.listIndex != index) {
            list.listIndex = index;
            changed("ListIndex");
            fireClick();
        }
    }
}
