package kerova.core.form;

import java.util.ArrayList;
import java.util.List;
import java.util.function.Consumer;

/**
 * The item list shared by ComboBox and ListBox: AddItem, RemoveItem, Clear, List, ListCount, ListIndex.
 * Every change of the items is told to the owning control as the property "List".
 */
final class ListControl {
    private final List<String> items = new ArrayList<>();
    private final Consumer<String> changed;
    int listIndex = -1;

    /** {@code changed}: the owner's {@link Control#changed}. */
    ListControl(Consumer<String> changed) {
        this.changed = changed;
    }

    /** AddItem: at {@code index}, or at the end where it is out of range; null as "". */
    void add(String item, int index) {
        String v = item == null ? "" : item;
        if (index < 0 || index > items.size()) {
            items.add(v);
        } else {
            items.add(index, v);
        }
        changed.accept("List");
    }

    void remove(int index) {
        items.remove(index);
        if (listIndex >= items.size()) {
            listIndex = items.size() - 1;
        }
        changed.accept("List");
    }

    void clear() {
        items.clear();
        listIndex = -1;
        changed.accept("List");
    }

    int count() {
        return items.size();
    }

    String get(int index) {
        return items.get(index);
    }

    List<String> copy() {
        return List.copyOf(items);
    }

    /** VB's error 380 unless {@code index} is -1 (no selection) or an item's. */
    void checkIndex(int index) {
        if (index < -1 || index >= items.size()) {
            throw new kerova.core.vb.VbException(380, "Invalid property value");
        }
    }
}
