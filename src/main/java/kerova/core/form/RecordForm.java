package kerova.core.form;

import java.time.LocalDateTime;
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbConst;
import kerova.core.vb.VbException;

/**
 * The behaviour common to all record forms (Part 1.3), written once: standard and quick search,
 * save by moving, new record with the computed key, delete with optional archive, the exit with its
 * mandatory check, header sort with the tenth-click reopen, selection from a second grid, the picker
 * hand-over, form start on the last record, focus colours, numeric key filters, the action log,
 * the print checks and help. Every path sets the pointer back to the arrow.
 */
public abstract class RecordForm extends Form {
    /** GotFocus colour of every typing field (BGR: a pale cyan). */
    public static final int FOCUS_COLOR = 0xFFFF80;
    /** LostFocus colour: the system window colour. */
    public static final int REST_COLOR = VbConst.vbWindowBackground;
    /** Resting colour of the trip form's quick-search fields (a pale blue). */
    public static final int QUICK_SEARCH_COLOR = 0xFFC0C0;

    public static final String NO_DATABASES_TEXT = "Ebben a könyvtárban nincsenek adatbázisok!";
    public static final String NO_DATABASES_TITLE = "FIGYELEM! SÚLYOS HIBA!";
    public static final String NOTHING_TO_PRINT = "Nincs nyomtatandó adat!";
    public static final String PRINTER_NOT_READY = "A nyomtató nincs készenlétben!";
    /** Style and title of the two print messages (the spec gives only the texts; ours). */
    public static final int PRINT_MESSAGE_STYLE = VbConst.vbExclamation;
    /** Part 1.4 step 3: the printer message is a plain box. */
    public static final int PRINTER_NOT_READY_STYLE = VbConst.vbOKOnly;
    public static final String PRINT_MESSAGE_TITLE = "FIGYELEM!";

    /** The quick search's last hit. */
    protected Object quickSearchBookmark;
    /** Header clicks since the last reopen (Part 1.3: the tenth reopens). */
    protected int headClickCount;

    protected RecordForm(String name, String caption) {
        super(name, caption);
    }

    // ---------------------------------------------------------------- helpers

    /** The open Recordset of a Data control; error 91 when it couldn't be opened (as VB's Nothing). */
    public static Recordset rs(DataControl dc) {
        Recordset r = dc.Recordset();
        if (r == null || r.isClosed()) {
            throw new VbException(91, "Object variable or With block variable not set");
        }
        return r;
    }

    /** The open Recordset, or null (the error cleared) when there is none: the handler then ends quietly. */
    static Recordset rsOrNull(DataControl dc) {
        Recordset r = Err.resume(() -> rs(dc), null);
        Err.Clear();
        return r;
    }

    /**
     * A new row stored at once: AddNew, the given columns (pairs of name and value), Update, MoveLast,
     * with errors resumed. False when it failed (the error cleared).
     */
    protected static boolean addRow(DataControl dc, Object... columnValues) {
        Err.Clear();
        Err.resume(() -> {
            Recordset r = rs(dc);
            r.AddNew();
            for (int i = 0; i < columnValues.length; i += 2) {
                r.Fields((String) columnValues[i]).setValue(columnValues[i + 1]);
            }
            r.Update();
            r.MoveLast();
        });
        boolean ok = Err.Number() == 0;
        Err.Clear();
        return ok;
    }

    /** RecordCount, with any failure counting as empty (the test "less than 1"). */
    protected static int count(DataControl dc) {
        Integer n = Err.resume(() -> rs(dc).RecordCount(), 0);
        return n == null ? 0 : n;
    }

    /** Whether the set has a current record. */
    protected static boolean onRecord(DataControl dc) {
        Boolean b = Err.resume(() -> rs(dc).AbsolutePosition() >= 0, false);
        return b != null && b;
    }

    // ---------------------------------------------------------------- focus colours and key filters

    /** Paints a typing field on entry and restores it on leaving; {@code onLeave} is a Part's extra step. */
    public static void focusColors(TextBox box, int restColor, Runnable onLeave) {
        box.GotFocus = () -> box.setBackColor(FOCUS_COLOR);
        box.LostFocus = () -> {
            box.setBackColor(restColor);
            if (onLeave != null) {
                onLeave.run();
            }
        };
    }

    /** Focus colours with the system window colour at rest, for several fields. */
    public static void focusColors(TextBox... boxes) {
        for (TextBox b : boxes) {
            focusColors(b, REST_COLOR, null);
        }
    }

    /** The LostFocus step "capitals": UCase of the text written back. */
    public static Runnable upperCase(TextBox box) {
        return () -> box.setText(box.Text().toUpperCase(java.util.Locale.ROOT));
    }

    /** The LostFocus step "0 into an empty numeric field". */
    public static Runnable zeroIfEmpty(TextBox box) {
        return () -> {
            if (box.Text().isEmpty()) {
                box.setText("0");
            }
        };
    }

    private static void filter(KeyArgs k, String extra) {
        int c = k.KeyAscii;
        if ((c >= '0' && c <= '9') || c == VbConst.vbKeyBack || extra.indexOf(c) >= 0) {
            return;
        }
        Forms.Beep();
        k.KeyAscii = 0;
    }

    /** Whole number: digits and backspace. */
    public static void wholeNumberKey(KeyArgs k) {
        filter(k, "");
    }

    /** Decimal: digits, backspace and ",". */
    public static void decimalKey(KeyArgs k) {
        filter(k, ",");
    }

    /** Signed decimal: digits, backspace, "," and "-". */
    public static void signedDecimalKey(KeyArgs k) {
        filter(k, ",-");
    }

    public static void wholeNumber(TextBox... boxes) {
        for (TextBox b : boxes) {
            b.KeyPress = RecordForm::wholeNumberKey;
        }
    }

    public static void decimal(TextBox... boxes) {
        for (TextBox b : boxes) {
            b.KeyPress = RecordForm::decimalKey;
        }
    }

    public static void signedDecimal(TextBox... boxes) {
        for (TextBox b : boxes) {
            b.KeyPress = RecordForm::signedDecimalKey;
        }
    }

    // ---------------------------------------------------------------- form start

    /**
     * Form_Activate steps 2 and 3: an empty table gets its first record with key 1; otherwise the
     * form opens on the last record. Errors are cleared and ignored.
     */
    protected void openOnLast(DataControl dc, String keyColumn, Control firstField) {
        try {
            if (count(dc) < 1) {
                Err.resume(() -> {
                    Recordset r = rs(dc);
                    r.AddNew();
                    r.Fields(keyColumn).setValue(1);
                    r.Update();
                    r.MoveLast();
                });
                if (firstField != null) {
                    Err.resume(firstField::SetFocus);
                }
            } else {
                Err.resume(() -> rs(dc).MoveLast());
            }
        } finally {
            Err.Clear();
        }
    }

    /**
     * The first count of a second table: a failure means the folder holds no databases; the message
     * of Part 1.3 shows and the form leaves through its exit handler. Returns false in that case.
     */
    protected boolean checkDatabases(DataControl dc) {
        Err.Clear();
        Err.resume(() -> rs(dc).RecordCount());
        if (Err.Number() != 0) {
            Err.Clear();
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(NO_DATABASES_TEXT, VbConst.vbCritical, NO_DATABASES_TITLE);
            exitHandler();
            return false;
        }
        return true;
    }

    // ---------------------------------------------------------------- search

    /** The standard search of Part 1.3 over one column. */
    protected void standardSearch(DataControl dc, String column, String prompt, String title, String notFoundText) {
        standardSearch(dc, column, prompt, title, notFoundText, title);
    }

    /** The standard search, where the failed search's message has a title of its own (Part 4.5). */
    protected void standardSearch(DataControl dc, String column, String prompt, String title, String notFoundText,
            String notFoundTitle) {
        try {
            if (count(dc) < 1) {
                return;
            }
            Forms.arrow();
            String answer = Forms.InputBox(prompt, title, "");
            String text = answer + "*";
            if (answer.isEmpty() || text.equals("*")) {
                return;
            }
            String filter = "[" + column + "] like \"" + text + "\"";
            Forms.hourglass();
            Recordset r = rs(dc);
            Err.resume(() -> r.FindNext(filter));
            if (r.NoMatch()) {
                Err.resume(() -> r.FindFirst(filter));
            }
            if (r.NoMatch()) {
                Forms.arrow();
                Forms.Beep();
                Forms.MsgBox(notFoundText, VbConst.vbExclamation, notFoundTitle);
                Err.resume(r::MoveFirst);
            }
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    /** The quick search field: at each change, FindFirst with the prefix; no match returns to the last hit. */
    protected void quickSearch(DataControl dc, String column, String typed) {
        quickSearch(dc, column, typed, null);
    }

    /**
     * The quick search with a second try (Part 6.2, {@code SzerelokFormX}): when no value of
     * {@code column} begins with the text, FindFirst with {@code [exactColumn] = "text"}; only when
     * that fails too does the record go back to the last hit. {@code exactColumn} null: one search.
     */
    protected void quickSearch(DataControl dc, String column, String typed, String exactColumn) {
        String text = typed + "*";
        if (typed.isEmpty() || text.equals("*")) {
            return;
        }
        Forms.hourglass();
        try {
            Recordset r = rsOrNull(dc);
            if (r == null) {
                return;
            }
            String filter = "[" + column + "] like \"" + text + "\"";
            Err.resume(() -> r.FindFirst(filter));
            if (r.NoMatch() && exactColumn != null) {
                String exact = "[" + exactColumn + "] = \"" + typed + "\"";
                Err.resume(() -> r.FindFirst(exact));
            }
            if (r.NoMatch()) {
                Err.resume(() -> r.setBookmark(quickSearchBookmark));
                Err.Clear();
            } else {
                Err.resume(() -> quickSearchBookmark = r.Bookmark());
                if (Err.Number() != 0) {
                    Forms.Beep();
                    Err.Clear();
                }
            }
        } finally {
            Forms.arrow();
        }
    }

    /** Selecting a row of a side grid: FindFirst on the main set with the exact-text filter. */
    protected void selectFromGrid(DataControl main, String column, Object key) {
        Forms.hourglass();
        try {
            Recordset r = rsOrNull(main);
            if (r == null) {
                Forms.Beep();
                return;
            }
            String k = key == null ? "" : Conv.CStr(key);
            String filter = "[" + column + "] = \"" + k + "\"";
            Err.resume(() -> r.FindFirst(filter));
            if (r.NoMatch()) {
                Forms.Beep();
            }
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- save, new, delete

    /** "OK-Mentés": save by moving, then back to the saved bookmark. */
    protected void save(DataControl dc, DBGrid grid) {
        Forms.hourglass();
        try {
            if (count(dc) < 1) {
                Forms.Beep();
                return;
            }
            Recordset r = rs(dc);
            Object mark = null;
            if (!r.EOF() && r.AbsolutePosition() >= 0) {
                mark = r.Bookmark();
            }
            Err.resume(r::MoveLast);
            Err.resume(r::MoveFirst);
            if (grid != null) {
                grid.Refresh();
            }
            Object m = mark;
            Err.resume(() -> r.setBookmark(m));
            if (Err.Number() != 0) {
                Forms.Beep();
                Err.Clear();
            }
        } finally {
            Forms.arrow();
        }
    }

    /**
     * "Új adat": the new key is the last record's key label plus 1 (an empty label is set to "0"),
     * or 1 in an empty set; AddNew, the key, Update; then MoveLast and focus to the first field.
     */
    protected void newRecord(DataControl dc, Label keyLabel, String keyColumn, Control firstField) {
        Forms.hourglass();
        try {
            Recordset r = rsOrNull(dc);
            if (r == null) {
                return;
            }
            double key;
            if (count(dc) > 0) {
                Err.resume(r::MoveLast);
                String caption = keyLabel.Caption();
                if (caption.trim().isEmpty()) {
                    keyLabel.setCaption("0");
                }
                Double last = Err.resume(() -> Funcs.nullToDouble(keyLabel.Caption()), 0.0);
                key = (last == null ? 0 : last) + 1;
            } else {
                key = 1;
            }
            Err.Clear();
            double k = key;
            Err.resume(() -> {
                r.AddNew();
                r.Fields(keyColumn).setValue(Funcs.NullToNum(k));
                r.Update();
            });
            if (Err.Number() != 0) {
                Err.Clear();
            } else {
                Err.resume(r::MoveLast);
                Err.Clear();
                if (firstField != null) {
                    Err.resume(firstField::SetFocus);
                }
            }
        } finally {
            Forms.arrow();
        }
    }

    /**
     * "Törlés": question (style 36); the lock test by Edit; the optional archive copy (every column by
     * ordinal); Delete, MoveNext, MoveLast at EOF; with no record left, {@code newRecordHandler} runs.
     * Returns true when the row was deleted.
     */
    protected boolean delete(DataControl dc, String text, String title, DataControl archive,
            String archiveFailText, int archiveFailStyle, String archiveFailTitle, Runnable newRecordHandler) {
        if (count(dc) < 1) {
            return false;
        }
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(text, VbConst.vbYesNo + VbConst.vbQuestion, title) != VbConst.vbYes) {
            return false;
        }
        Forms.hourglass();
        try {
            Recordset r = rs(dc);
            Err.Clear();
            Err.resume(r::Edit);
            if (Err.Number() != 0) {
                Err.Clear();
                return false;
            }
            if (archive != null) {
                Err.resume(() -> {
                    Recordset a = rs(archive);
                    a.AddNew();
                    for (int i = 0; i < r.FieldCount(); i++) {
                        a.Fields(i).setValue(r.Fields(i).Value());
                    }
                    a.Update();
                });
                if (Err.Number() != 0) {
                    Err.Clear();
                    Err.resume(r::CancelUpdate);
                    Err.Clear();
                    Forms.arrow();
                    Forms.Beep();
                    Forms.MsgBox(archiveFailText, archiveFailStyle, archiveFailTitle);
                    return false;
                }
                Err.resume(() -> rs(archive).MoveLast()); // Part 2.3 step 6: the archive's last row first
                Err.Clear();
            }
            Err.resume(r::Delete);
            Err.resume(r::MoveNext);
            if (Err.resume(r::EOF, true) && count(dc) > 0) {
                Err.resume(r::MoveLast);
            }
            Err.Clear();
            if (count(dc) < 1 && newRecordHandler != null) {
                newRecordHandler.run();
            }
            return true;
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- exit

    /**
     * The mandatory-field check of the exit: a record whose key field is empty is offered for
     * deletion (style 36); Yes deletes it (Edit, Delete, MoveNext), No keeps it.
     */
    protected void offerDeleteIfEmpty(DataControl dc, String fieldText, String text, String title) {
        if (!onRecord(dc) || (fieldText != null && !fieldText.trim().isEmpty())) {
            return;
        }
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(text, VbConst.vbYesNo + VbConst.vbQuestion, title) == VbConst.vbYes) {
            Err.resume(() -> {
                Recordset r = rs(dc);
                r.Edit();
                r.Delete();
                r.MoveNext();
            });
        }
    }

    /** "Kilépés": CloseGuard off, the form's checks, Close on every Recordset (errors cleared at the end), Unload. */
    protected void standardExit(Runnable checks, DataControl... sources) {
        CloseGuard = false;
        try {
            if (checks != null) {
                checks.run();
            }
        } finally {
            closeAll(sources);
            Forms.arrow();
            Unload();
        }
    }

    /** Close on each Recordset in turn; errors are cleared at the end, all at once. */
    protected static void closeAll(DataControl... sources) {
        for (DataControl d : sources) {
            Err.resume(() -> rs(d).Close());
        }
        Err.Clear();
    }

    // ---------------------------------------------------------------- header sort

    /**
     * A click on a column heading: the tenth click reopens the set from RecordSource (keeping the sort
     * it had, so the order still toggles); then key, or key DESC when the set is sorted by the key.
     */
    protected void headerSort(DataControl dc, DBGrid grid, int colIndex) {
        Forms.hourglass();
        try {
            headClickCount++;
            // errors resumed throughout (Part 1.3): a failing reopen or sort leaves the grid as it was
            Err.resume(() -> {
                if (headClickCount == 10) {
                    headClickCount = 0;
                    Recordset old = rs(dc);
                    String oldSort = old.Sort();
                    Err.resume(old::Close);
                    Recordset fresh = dc.Database().OpenRecordset(dc.RecordSource(), Recordset.dbOpenDynaset);
                    fresh.setSort(oldSort);
                    dc.setRecordset(fresh);
                }
                String key = grid.Columns(colIndex).DataField();
                Recordset r = rs(dc);
                String sort = key.equals(r.Sort()) ? key + " DESC" : key;
                r.setSort(sort);
                Recordset sorted = r.OpenRecordset();
                dc.setRecordset(sorted);
                sorted.setSort(sort);
            });
            Err.Clear();
            grid.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- picker

    /** A picking form's start: PickDone = 0. */
    protected static void pickStart() {
        Globals.PickDone = 0;
    }

    /** "Választ": with a current record PickDone = 1 and the values are handed over, else cleared; then exit. */
    protected void returnPick(DataControl dc, Runnable writePicked, Runnable clearPicked) {
        if (onRecord(dc)) {
            Globals.PickDone = 1;
            if (writePicked != null) {
                writePicked.run();
            }
        } else if (clearPicked != null) {
            clearPicked.run();
        }
        exitHandler();
    }

    /** Opens a picker modally after setting CurrentFormName; returns whether a row was picked. */
    public static boolean openPicker(String formName, String callerName) {
        Globals.CurrentFormName = callerName;
        Globals.PickDone = 0;
        Forms.get(formName).Show(true);
        return Globals.PickDone == 1;
    }

    // ---------------------------------------------------------------- action log, print, help

    /** LogAction: a row of Regisztrálás by ordinal; a failed write is silent. */
    protected void LogAction(DataControl regisztData, String action, Label idLabel) {
        Recordset r;
        try {
            r = rs(regisztData);
        } catch (VbException e) {
            Err.Clear();
            return;
        }
        LocalDateTime now = VbClock.now();
        Err.resume(r::AddNew);
        Err.resume(() -> r.Fields(0).setValue(""));
        Err.resume(() -> r.Fields(1).setValue(""));
        Err.resume(() -> r.Fields(2).setValue(VbClock.today()));
        Err.resume(() -> r.Fields(3).setValue(Conv.DATE_ZERO.with(now.toLocalTime().withNano(0))));
        Err.resume(() -> r.Fields(4).setValue(action));
        Err.resume(() -> r.Fields(5).setValue(AccessFile.workingFolder().toString()));
        Err.resume(() -> r.Fields(6).setValue(Globals.AccessLevel));
        Err.resume(() -> r.Fields(7).setValue(getName()));
        Err.resume(() -> r.Fields(8).setValue(Funcs.NullToNum(idLabel == null ? null : emptyAsNull(idLabel.Caption()))));
        Err.resume(() -> r.Fields(9).setValue("Kerova"));
        Err.Clear();
        Err.resume(r::Update);
        if (Err.Number() != 0) {
            Err.Clear();
        }
        Err.resume(r::MoveLast);
        Err.Clear();
    }

    private static Object emptyAsNull(String s) {
        return s == null || s.isEmpty() ? null : s;
    }

    /** The print entry's check: something to print, and a ready printer. */
    protected boolean printCheck(DataControl dc) {
        if (count(dc) < 1) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(NOTHING_TO_PRINT, PRINT_MESSAGE_STYLE, PRINT_MESSAGE_TITLE);
            return false;
        }
        return printerCheck();
    }

    /** "A nyomtató nincs készenlétben!" when no printer is ready. */
    protected static boolean printerCheck() {
        if (!Forms.ui().printerReady()) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(PRINTER_NOT_READY, PRINTER_NOT_READY_STYLE, PRINT_MESSAGE_TITLE);
            return false;
        }
        return true;
    }

    /** The help entry: HelpTopicName is the form's name, HelpFormX opens modally. */
    protected void help() {
        Globals.HelpTopicName = getName();
        Forms.get("HelpFormX").Show(true);
    }
}
