package kerova.core.print;

/** Horizontal alignment of a text within its box on the paper. */
public enum Align {
    LEFT, CENTER, RIGHT
}
