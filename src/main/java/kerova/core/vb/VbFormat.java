package kerova.core.vb;

/** VB's Format(value, mask): numeric masks with sections ('00.00;0;0;0') and date masks ('YYYY/MM/DD HH:NN:SS'). */
public final class VbFormat {
    private VbFormat() {
    }

    public static String Format(Object value, String mask) {
        throw new UnsupportedOperationException("TODO");
    }
}
