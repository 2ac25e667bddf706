package tenrik.desk.core;

import java.io.PrintStream;
import java.util.List;

/** Shows commands, answers and events as text. Lines are at most 80 columns wide. */
public final class Screen {
    private static final int WIDTH = 80;
    private static final int BAR = 40;
    private static final String INDENT = "    ";

    private final PrintStream out;
    private final boolean terminal;
    private boolean differs;

    /**
     * A screen.
     *
     * @param out where the lines go; encodes UTF-8
     * @param terminal whether it is a terminal that shows colours and redraws lines
     */
    public Screen(PrintStream out, boolean terminal) {
        this.out = out;
        this.terminal = terminal;
    }

    /**
     * Shows a line of its own.
     *
     * @param text the line
     */
    public void line(String text) {
        out.println(Columns.clip(text, WIDTH));
    }

    /**
     * Shows a heading.
     *
     * @param text the name of what follows
     */
    public void title(String text) {
        differs = false;
        out.println();
        out.println(painted("1;36", Columns.clip("== " + text, WIDTH)));
    }

    /**
     * Shows a command.
     *
     * @param text what is asked of the service
     */
    public void asked(String text) {
        differs = false;
        out.println(painted("1", Columns.clip("> " + text, WIDTH)));
    }

    /**
     * Shows the answer to a command.
     *
     * @param text what the service has done
     */
    public void answered(String text) {
        if (differs) {
            return;
        }
        out.println(painted("32", Columns.clip("  < " + text, WIDTH)));
    }

    /**
     * Shows what came in the place of an answer. Until the next command no answer is shown.
     *
     * @param text what came
     */
    public void differed(String text) {
        out.println(painted("31", Columns.clip("  ! " + text, WIDTH)));
        differs = true;
    }

    /**
     * Shows a command that was expected to be refused.
     *
     * @param what the command
     * @param how the refusal
     */
    public void refused(String what, String how) {
        differs = false;
        out.println(painted("1", Columns.clip("> " + what, WIDTH)));
        out.println(painted("33", Columns.clip("  ! refused: " + how, WIDTH)));
    }

    /**
     * Shows what belongs to the command or heading above, indented.
     *
     * @param text may be of several lines
     */
    public void reported(String text) {
        text.lines().forEach(line -> out.println(Columns.clip(INDENT + line, WIDTH)));
    }

    /**
     * Shows a progress bar: redrawn in place on a terminal, elsewhere shown when it is complete.
     *
     * @param done how much is done; more than {@code total} is shown as complete
     * @param total how much there is, more than 0
     * @param text what is shown after the bar
     */
    public void progress(int done, int total, String text) {
        if (!terminal && done < total) {
            return;
        }
        int filled = BAR * Math.min(done, total) / total;
        String bar = "[" + "#".repeat(filled) + ".".repeat(BAR - filled) + "] ";
        String line = Columns.fit(INDENT + bar + text, WIDTH - 1);
        if (terminal) {
            out.print("\r" + line + (done < total ? "" : "\n"));
            out.flush();
        } else {
            out.println(line.stripTrailing());
        }
    }

    /**
     * Shows short texts in two columns, to be read downwards.
     *
     * @param texts the texts; too long ones are cut
     */
    public void table(List<String> texts) {
        int column = (WIDTH - INDENT.length()) / 2;
        int rows = (texts.size() + 1) / 2;
        for (int row = 0; row < rows; row++) {
            String left = texts.get(row);
            if (row + rows < texts.size()) {
                left = Columns.fit(left, column - 1) + " "
                        + Columns.clip(texts.get(row + rows), column);
            } else {
                left = Columns.clip(left, column - 1);
            }
            out.println(INDENT + left);
        }
    }

    /**
     * Shows the final result.
     *
     * @param success how it is coloured
     * @param text the result
     */
    public void ended(boolean success, String text) {
        out.println();
        out.println(painted(success ? "1;32" : "1;31", Columns.clip(text, WIDTH)));
    }

    private String painted(String style, String text) {
        return terminal ? "\u001b[" + style + "m" + text + "\u001b[0m" : text;
    }
}
