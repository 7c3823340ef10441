package kerova.core.form;

import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Consumer;
import kerova.core.vb.VbConst;

/**
 * A Ui for tests: records every message (text, style, title), input box, beep, pointer change and
 * form shown; answers questions and input boxes from queues, and fails the test on a question or
 * an input box that nobody expected. A modal form runs the script queued for it, then (if it is
 * still open) its close box.
 */
public class ScriptedUi implements Ui {
    /** One message box as shown. */
    public record Message(String text, int style, String title) {
        @Override
        public String toString() {
            return "[" + style + "] " + title + " | " + text;
        }
    }

    public final List<Message> messages = new ArrayList<>();
    public final List<String> inputs = new ArrayList<>();
    /** Everything in order: "msg:...", "input:...", "beep", "pointer:11", "show:Name", "modal:Name", "hide:Name", "close:Name", "exit". */
    public final List<String> log = new ArrayList<>();
    public final List<Integer> pointers = new ArrayList<>();
    public int beeps;
    public boolean printerReady;
    public boolean exited;

    private final Deque<Integer> answers = new ArrayDeque<>();
    private final Deque<String> inputAnswers = new ArrayDeque<>();
    private final Map<String, Deque<Consumer<Form>>> scripts = new HashMap<>();

    /** Queues the answer of the next question (vbYes, vbNo, vbCancel). */
    public ScriptedUi answer(int vbAnswer) {
        answers.addLast(vbAnswer);
        return this;
    }

    /** Queues the text typed into the next input box ("" is cancel). */
    public ScriptedUi input(String text) {
        inputAnswers.addLast(text);
        return this;
    }

    private Consumer<Message> onMessage = m -> { };

    /** Runs for every message box as it opens (to look at the program's state at that moment). */
    public ScriptedUi whenMessage(Consumer<Message> look) {
        onMessage = look;
        return this;
    }

    /** Queues what the user does while a modal form of that name is open. */
    public ScriptedUi whenShown(String formName, Consumer<Form> script) {
        scripts.computeIfAbsent(formName, k -> new ArrayDeque<>()).addLast(script);
        return this;
    }

    public void clear() {
        messages.clear();
        inputs.clear();
        log.clear();
        pointers.clear();
        beeps = 0;
    }

    /** Whether every queued answer was used. */
    public boolean allAnswered() {
        return answers.isEmpty() && inputAnswers.isEmpty();
    }

    @Override
    public int MsgBox(String text, int style, String title) {
        messages.add(new Message(text, style, title));
        log.add("msg:" + text);
        onMessage.accept(messages.get(messages.size() - 1));
        int buttons = style & 7;
        if (buttons == VbConst.vbOKOnly) {
            return VbConst.vbOK;
        }
        if (answers.isEmpty()) {
            throw new AssertionError("unexpected question: " + new Message(text, style, title));
        }
        return answers.removeFirst();
    }

    @Override
    public String InputBox(String prompt, String title, String defaultText) {
        inputs.add(title + " | " + prompt);
        log.add("input:" + prompt);
        if (inputAnswers.isEmpty()) {
            throw new AssertionError("unexpected input box: " + title + " | " + prompt);
        }
        return inputAnswers.removeFirst();
    }

    @Override
    public void Beep() {
        beeps++;
        log.add("beep");
    }

    @Override
    public void MousePointer(int pointer) {
        pointers.add(pointer);
        log.add("pointer:" + pointer);
    }

    @Override
    public void showForm(Form form, boolean modal, Runnable onShown) {
        log.add((modal ? "modal:" : "show:") + form.getName());
        onShown.run();
        if (!modal) {
            return;
        }
        Deque<Consumer<Form>> q = scripts.get(form.getName());
        if (q != null && !q.isEmpty()) {
            q.removeFirst().accept(form);
        }
        if (form.isLoaded() && form.Visible()) {
            form.closeBox();
        }
    }

    @Override
    public void hideForm(Form form) {
        log.add("hide:" + form.getName());
    }

    @Override
    public void closeForm(Form form) {
        log.add("close:" + form.getName());
    }

    @Override
    public boolean printerReady() {
        return printerReady;
    }

    @Override
    public void exitProcess() {
        exited = true;
        log.add("exit");
        throw new Forms.ExitRequest();
    }

    /** The last pointer set (the hourglass must never be left on). */
    public int lastPointer() {
        return pointers.isEmpty() ? -1 : pointers.get(pointers.size() - 1);
    }
}
