package kerova.core.vb;

/**
 * VB colours. VB keeps a colour as a Long in BGR order (&amp;H00BBGGRR): red is &amp;HFF, blue is
 * &amp;HFF0000. A value with the high bit set (&amp;H80000000 + n) is the Windows system colour n.
 */
public final class VbColor {
    private VbColor() {
    }

    /**
     * The classic Windows defaults of the system colours 0..24 (COLOR_SCROLLBAR .. COLOR_INFOBK), as
     * 0xRRGGBB, used where a form's design names a system colour.
     */
    private static final int[] SYSTEM_RGB = {
        0xD4D0C8, // 0 scroll bars
        0x3A6EA5, // 1 desktop
        0x0A246A, // 2 active title bar
        0x808080, // 3 inactive title bar
        0xD4D0C8, // 4 menu bar
        0xFFFFFF, // 5 window background
        0x000000, // 6 window frame
        0x000000, // 7 menu text
        0x000000, // 8 window text
        0xFFFFFF, // 9 active title bar text
        0xD4D0C8, // 10 active border
        0xD4D0C8, // 11 inactive border
        0x808080, // 12 application workspace
        0x0A246A, // 13 highlight
        0xFFFFFF, // 14 highlight text
        0xD4D0C8, // 15 button face
        0x808080, // 16 button shadow
        0x808080, // 17 grey text
        0x000000, // 18 button text
        0xD4D0C8, // 19 inactive title bar text
        0xFFFFFF, // 20 button highlight
        0x404040, // 21 3D dark shadow
        0xD4D0C8, // 22 3D light
        0x000000, // 23 tooltip text
        0xFFFFE1, // 24 tooltip background
    };

    /** A VB colour (BGR) as 0xRRGGBB: &amp;HFFFF80 is RGB 128,255,255. System colours give their default. */
    public static int toRgb(int bgr) {
        if (isSystemColor(bgr)) {
            int index = bgr & 0xFF;
            return index < SYSTEM_RGB.length ? SYSTEM_RGB[index] : 0;
        }
        int r = bgr & 0xFF;
        int g = (bgr >> 8) & 0xFF;
        int b = (bgr >> 16) & 0xFF;
        return (r << 16) | (g << 8) | b;
    }

    /** A colour 0xRRGGBB as a VB colour (BGR). */
    public static int fromRgb(int rgb) {
        int r = (rgb >> 16) & 0xFF;
        int g = (rgb >> 8) & 0xFF;
        int b = rgb & 0xFF;
        return (b << 16) | (g << 8) | r;
    }

    /** VB's RGB(r, g, b): the BGR colour; a part above 255 counts as 255 (VB's rule), below 0 as 0. */
    public static int RGB(int red, int green, int blue) {
        return (clamp(blue) << 16) | (clamp(green) << 8) | clamp(red);
    }

    /** Whether a VB colour is a system colour (&amp;H80000000 + index). */
    public static boolean isSystemColor(int bgr) {
        return (bgr & 0xFF000000) == 0x80000000;
    }

    private static int clamp(int part) {
        return part < 0 ? 0 : Math.min(part, 255);
    }
}
