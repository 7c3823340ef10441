package kerova.core.form;

import java.util.ArrayList;
import java.util.List;

/** A menu entry (top-level menu or item): Caption with "&amp;" for the mnemonic, Checked, Click. */
public class Menu extends CaptionedControl {
    private boolean checked;
    final List<Menu> items = new ArrayList<>();
    Menu parent;

    public Menu(String name, String caption) {
        super(name, caption);
    }

    public boolean Checked() {
        return checked;
    }

    public void setChecked(boolean c) {
        checked = c;
        changed("Checked");
    }

    /** Adds an entry under this menu and registers it with the form. */
    public Menu add(Menu item) {
        item.parent = this;
        items.add(item);
        if (form != null) {
            form.register(item);
        }
        return item;
    }

    public List<Menu> items() {
        return List.copyOf(items);
    }

    public Menu parent() {
        return parent;
    }
}
