package kerova.core.form;

/** VB's MaskEdBox: a text box with a Mask ('#' a digit); the view restricts typing to the mask. */
public class MaskEdBox extends TextBox {
    private String mask = "";

    public MaskEdBox(String name) {
        super(name);
    }

    public String Mask() {
        return mask;
    }

    public void setMask(String m) {
        mask = m == null ? "" : m;
        changed("Mask");
    }

    /** Whether a key fits the mask at a position ('#' digits, '9' digit or blank, other mask chars literal). */
    public boolean fits(int position, char ch) {
        if (mask.isEmpty() || position >= mask.length()) {
            return mask.isEmpty();
        }
        char m = mask.charAt(position);
        switch (m) {
            case '#':
                return Character.isDigit(ch);
            case '9':
                return Character.isDigit(ch) || ch == ' ';
            case '?':
                return Character.isLetter(ch);
            case 'A':
            case 'a':
                return Character.isLetterOrDigit(ch);
            case '&':
            case 'C':
                return true;
            default:
                return ch == m;
        }
    }
}
