package tenrik.desk.shell;

import java.io.IOException;
import java.util.concurrent.locks.ReentrantLock;
import java.util.function.Supplier;

import org.jline.keymap.KeyMap;
import org.jline.reader.Binding;
import org.jline.reader.Candidate;
import org.jline.reader.impl.LineReaderImpl;
import org.jline.terminal.Terminal;
import org.jline.utils.AttributedStringBuilder;

/**
 * Edits a line, above which other threads may print. The thread that reads holds a lock, and
 * releases it while it waits for a key: then the line and its image on the terminal agree.
 */
final class LineEditor extends LineReaderImpl {
    private final ReentrantLock lock = new ReentrantLock();

    private final boolean colours;
    private final Supplier<String> prompt;

    /**
     * @param colours whether the terminal shows colours
     * @param prompt what is shown before the line; may change while the line is being typed
     */
    LineEditor(Terminal terminal, boolean colours, Supplier<String> prompt) throws IOException {
        super(terminal, "shell");
        this.colours = colours;
        this.prompt = prompt;
    }

    /** Reads a line. */
    @Override
    public String readLine() {
        return readLine(prompt.get());
    }

    /** Removes the line that is being typed, prints, and shows the line again. */
    void above(Runnable print) {
        lock.lock();
        try {
            if (reading) {
                clear();
            }
            print.run();
            if (reading) {
                setPrompt(prompt.get());
                redisplay(false);
            }
            terminal.flush();
        } finally {
            lock.unlock();
        }
    }

    @Override
    public String readLine(String prompt, String rightPrompt, Character mask, String buffer) {
        lock.lock();
        try {
            return super.readLine(prompt, rightPrompt, mask, buffer);
        } finally {
            lock.unlock();
        }
    }

    @Override
    public Binding readBinding(KeyMap<Binding> keys, KeyMap<Binding> local) {
        lock.unlock();
        try {
            return super.readBinding(keys, local);
        } finally {
            lock.lock();
        }
    }

    @Override
    public int readCharacter() {
        lock.unlock();
        try {
            return super.readCharacter();
        } finally {
            lock.lock();
        }
    }

    /** On a thread of its own: the terminal's size has changed, or the program continues. */
    @Override
    protected void handleSignal(Terminal.Signal signal) {
        lock.lock();
        try {
            super.handleSignal(signal);
        } finally {
            lock.unlock();
        }
    }

    /** Removes the colours of completion candidates where there are to be none. */
    @Override
    protected void toColumns(
            Object items, int width, int maxWidth, AttributedStringBuilder text,
            Candidate selection, String completed, int[] out) {
        if (colours) {
            super.toColumns(items, width, maxWidth, text, selection, completed, out);
            return;
        }
        AttributedStringBuilder coloured = new AttributedStringBuilder();
        super.toColumns(items, width, maxWidth, coloured, selection, completed, out);
        for (int place = 0; place < coloured.length(); place++) {
            text.append(coloured.subSequence(place, place + 1).toString(),
                    coloured.styleAt(place).foregroundDefault().backgroundDefault());
        }
    }
}
