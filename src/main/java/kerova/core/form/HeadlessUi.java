package kerova.core.form;

import kerova.core.vb.VbConst;

/** The Ui before a view is installed: answers OK/Yes/"" and shows nothing. */
public class HeadlessUi implements Ui {
    @Override
    public int MsgBox(String text, int style, String title) {
        int buttons = style & 7;
        return buttons == VbConst.vbYesNo || buttons == VbConst.vbYesNoCancel ? VbConst.vbYes : VbConst.vbOK;
    }

    @Override
    public String InputBox(String prompt, String title, String defaultText) {
        return "";
    }

    @Override
    public void Beep() {
    }

    @Override
    public void MousePointer(int pointer) {
    }

    @Override
    public void showForm(Form form, boolean modal, Runnable onShown) {
        onShown.run();
    }

    @Override
    public void hideForm(Form form) {
    }

    @Override
    public void closeForm(Form form) {
    }
}
