package kerova.core.vb;

/** VB's intrinsic constants under their VB names (MsgBox, keys, mouse pointers, colours, strings). */
public final class VbConst {
    private VbConst() {
    }

    // MsgBox buttons
    public static final int vbOKOnly = 0;
    public static final int vbOKCancel = 1;
    public static final int vbAbortRetryIgnore = 2;
    public static final int vbYesNoCancel = 3;
    public static final int vbYesNo = 4;
    public static final int vbRetryCancel = 5;

    // MsgBox icons
    public static final int vbCritical = 16;
    public static final int vbQuestion = 32;
    public static final int vbExclamation = 48;
    public static final int vbInformation = 64;

    // MsgBox default button and modality
    public static final int vbDefaultButton1 = 0;
    public static final int vbDefaultButton2 = 256;
    public static final int vbDefaultButton3 = 512;
    public static final int vbApplicationModal = 0;
    public static final int vbSystemModal = 4096;

    // MsgBox answers
    public static final int vbOK = 1;
    public static final int vbCancel = 2;
    public static final int vbAbort = 3;
    public static final int vbRetry = 4;
    public static final int vbIgnore = 5;
    public static final int vbYes = 6;
    public static final int vbNo = 7;

    // Key codes
    public static final int vbKeyBack = 8;
    public static final int vbKeyTab = 9;
    public static final int vbKeyReturn = 13;
    public static final int vbKeyEscape = 27;
    public static final int vbKeyDelete = 46;
    public static final int vbKeyF1 = 112;

    // MousePointer
    public static final int vbDefault = 0;
    public static final int vbArrow = 1;
    public static final int vbHourglass = 11;

    // Colours (BGR, see VbColor)
    public static final int vbBlack = 0x000000;
    public static final int vbRed = 0x0000FF;
    public static final int vbGreen = 0x00FF00;
    public static final int vbYellow = 0x00FFFF;
    public static final int vbBlue = 0xFF0000;
    public static final int vbMagenta = 0xFF00FF;
    public static final int vbCyan = 0xFFFF00;
    public static final int vbWhite = 0xFFFFFF;

    // System colours (&H80000000 + index)
    public static final int vbWindowBackground = 0x80000005;
    public static final int vbWindowText = 0x80000008;
    public static final int vbHighlight = 0x8000000D;
    public static final int vbHighlightText = 0x8000000E;
    public static final int vbButtonFace = 0x8000000F;
    public static final int vbGrayText = 0x80000011;
    public static final int vbButtonText = 0x80000012;
    public static final int vbInfoText = 0x80000017;
    public static final int vbInfoBackground = 0x80000018;

    // Strings
    public static final String vbCr = "\r";
    public static final String vbLf = "\n";
    public static final String vbCrLf = "\r\n";
    public static final String vbTab = "\t";
}
