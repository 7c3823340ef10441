package kerova.core.form;

/** The argument of KeyPress: the key code, which a handler may change (0 cancels the key). */
public final class KeyArgs {
    public int KeyAscii;

    public KeyArgs(int keyAscii) {
        this.KeyAscii = keyAscii;
    }
}
