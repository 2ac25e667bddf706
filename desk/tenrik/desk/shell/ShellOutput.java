package tenrik.desk.shell;

import java.io.ByteArrayOutputStream;
import java.io.OutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.function.Consumer;

import tenrik.desk.core.Columns;
import tenrik.desk.core.Screen;

/**
 * What the shell prints, on any thread: whole lines of at most 80 columns, which do not destroy the
 * line that is being typed or a progress bar.
 */
final class ShellOutput {
    private static final int WIDTH = 80;
    private static final String INDENT = "    ";

    private final Consumer<String> target;
    private final Consumer<Runnable> guard;
    private final boolean terminal;
    private final Screen screen;
    /** The progress bar on the last line; empty when there is none. */
    private String progress = "";

    /**
     * @param target takes characters, line ends included
     * @param guard runs what writes to the target, one at a time
     * @param terminal whether the target shows colours and redraws lines
     */
    ShellOutput(Consumer<String> target, Consumer<Runnable> guard, boolean terminal) {
        this.target = target;
        this.guard = guard;
        this.terminal = terminal;
        screen = new Screen(new PrintStream(new Lines(), true, StandardCharsets.UTF_8), terminal);
    }

    /** A screen whose lines are printed here. */
    Screen screen() {
        return screen;
    }

    /** Prints what has failed. */
    void failed(String text) {
        write(wrap("  ! ", text), "33");
    }

    /**
     * Prints an event.
     *
     * @param mark the beginning of the line
     */
    void event(String mark, String text) {
        List<String> lines = new ArrayList<>();
        text.lines().forEach(line -> lines.addAll(wrap(lines.isEmpty() ? mark
                : " ".repeat(mark.length()), line)));
        write(lines, "36");
    }

    /** Prints a line of the trace. */
    void trace(String text) {
        write(wrap("| ", text), "2");
    }

    /** Prints an indented text, on several lines if it is long. */
    void paragraph(String text) {
        write(wrap(INDENT, text), "");
    }

    /** Prints lines without a change. */
    void lines(List<String> lines) {
        write(lines, "");
    }

    /** Ends a progress bar that is not complete: what follows is printed below it. */
    void leaveProgress() {
        guard.accept(() -> {
            if (!progress.isEmpty()) {
                progress = "";
                target.accept("\n");
            }
        });
    }

    private void write(List<String> lines, String style) {
        guard.accept(() -> {
            StringBuilder text = new StringBuilder(progress.isEmpty() ? "" : "\r\u001b[K");
            for (String line : lines) {
                text.append(terminal && !style.isEmpty() ? "\u001b[" + style + "m" + line
                        + "\u001b[0m" : line).append('\n');
            }
            target.accept(text + progress);
        });
    }

    /**
     * Divides a text into lines of the terminal's width, at blanks where there are any. Control
     * characters are replaced by question marks.
     *
     * @param first the beginning of the first line; the others are indented by two columns more
     */
    static List<String> wrap(String first, String text) {
        List<String> lines = new ArrayList<>();
        String start = first;
        String rest = text.replaceAll("\\p{Cntrl}", "?");
        while (true) {
            int fits = fitting(rest, WIDTH - start.length());
            if (fits == rest.length()) {
                lines.add((start + rest).stripTrailing());
                return lines;
            }
            int blank = rest.lastIndexOf(' ', fits);
            int end = blank > fits / 2 ? blank : fits;
            lines.add(start + rest.substring(0, end));
            rest = rest.substring(end).stripLeading();
            start = " ".repeat(first.length() + 2);
        }
    }

    /** How many UTF-16 units of a text fit in a number of columns. */
    private static int fitting(String text, int columns) {
        int used = 0;
        int place = 0;
        while (place < text.length()) {
            String character = Character.toString(text.codePointAt(place));
            used += Columns.width(character);
            if (used > columns) {
                break;
            }
            place += character.length();
        }
        return place;
    }

    /** Takes the output of the screen, line by line. */
    private final class Lines extends OutputStream {
        private final ByteArrayOutputStream line = new ByteArrayOutputStream();

        @Override
        public void write(int character) {
            if (character != '\n') {
                line.write(character);
                return;
            }
            String text = take();
            if (text.startsWith("\r")) {
                guard.accept(() -> {
                    progress = "";
                    target.accept(text + "\n");
                });
            } else {
                lines(List.of(text));
            }
        }

        /** A line without an end is a progress bar. */
        @Override
        public void flush() {
            if (line.size() == 0) {
                return;
            }
            String text = take();
            guard.accept(() -> {
                progress = text;
                target.accept(text);
            });
        }

        private String take() {
            String text = line.toString(StandardCharsets.UTF_8);
            line.reset();
            return text;
        }
    }
}
