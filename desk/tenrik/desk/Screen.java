package tenrik.desk;

import java.io.PrintStream;
import java.util.List;

/** What a person sees: what was asked, and what came back. Lines are at most 80 columns wide. */
final class Screen {
    private static final int WIDTH = 80;
    private static final int BAR = 40;
    private static final String INDENT = "    ";

    private final PrintStream out;
    private final boolean terminal;

    /**
     * @param out where the lines go; takes UTF-8
     * @param terminal whether it is a terminal that shows colours and redraws lines
     */
    Screen(PrintStream out, boolean terminal) {
        this.out = out;
        this.terminal = terminal;
    }

    /** A line that belongs to nothing. */
    void line(String text) {
        out.println(Columns.clip(text, WIDTH));
    }

    /** The name of what follows. */
    void title(String text) {
        out.println();
        out.println(painted("1;36", Columns.clip("== " + text, WIDTH)));
    }

    /** What is asked of the service. */
    void asked(String text) {
        out.println(painted("1", Columns.clip("> " + text, WIDTH)));
    }

    /** What the service answers. */
    void answered(String text) {
        out.println(painted("32", Columns.clip("  < " + text, WIDTH)));
    }

    /** What was asked on purpose although it would be refused, and how it was refused. */
    void refused(String what, String how) {
        out.println(painted("1", Columns.clip("> " + what, WIDTH)));
        out.println(painted("33", Columns.clip("  ! refused: " + how, WIDTH)));
    }

    /** What the service tells by itself; may be of several lines. */
    void told(String text) {
        text.lines().forEach(line -> out.println(Columns.clip(INDENT + line, WIDTH)));
    }

    /** How far something is; redrawn in place on a terminal, elsewhere shown when it is done. */
    void progress(int done, int total, String text) {
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

    /** Short texts in two columns, to be read downwards. */
    void table(List<String> texts) {
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

    /** The last word. */
    void ended(boolean well, String text) {
        out.println();
        out.println(painted(well ? "1;32" : "1;31", Columns.clip(text, WIDTH)));
    }

    private String painted(String style, String text) {
        return terminal ? "\u001b[" + style + "m" + text + "\u001b[0m" : text;
    }
}
