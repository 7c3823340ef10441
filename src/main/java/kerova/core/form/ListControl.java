package kerova.core.form;

import java.util.ArrayList;
import java.util.List;

/** The item list shared by ComboBox and ListBox: AddItem, Clear, List, ListCount, ListIndex. */
final class ListControl {
    final List<String> items = new ArrayList<>();
    int listIndex = -1;

    void add(String item, int index) {
        if (index < 0 || index > items.size()) {
            items.add(item);
        } else {
            items.add(index, item);
        }
    }

    void remove(int index) {
        items.remove(index);
        if (listIndex >= items.size()) {
            listIndex = items.size() - 1;
        }
    }
}
