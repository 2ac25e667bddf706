package tenrik.desk;

import java.io.PrintStream;
import java.util.List;

/** What a person sees: what was asked, and what came back. Lines are at most 80 columns wide. */
final class Screen {
    private static final int WIDTH = 80;
    private static final String INDENT = "    ";

    private final PrintStream out;
    private final boolean colour;

    /**
     * @param out where the lines go; takes UTF-8
     * @param colour whether it is a terminal that shows colours
     */
    Screen(PrintStream out, boolean colour) {
        this.out = out;
        this.colour = colour;
    }

    /** A line that belongs to nothing. */
    void line(String text) {
        out.println(Columns.clip(text, WIDTH));
    }

    /** What is asked of the service. */
    void asked(String text) {
        out.println();
        out.println(painted("1", Columns.clip("> " + text, WIDTH)));
    }

    /** What the service answers. */
    void answered(String text) {
        out.println(painted("32", Columns.clip("  < " + text, WIDTH)));
    }

    /** What the service tells by itself; may be of several lines. */
    void told(String text) {
        text.lines().forEach(line -> out.println(Columns.clip(INDENT + line, WIDTH)));
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

    /** The last word, when all went well. */
    void done(String text) {
        out.println();
        out.println(painted("1;32", text));
    }

    private String painted(String style, String text) {
        return colour ? "\u001b[" + style + "m" + text + "\u001b[0m" : text;
    }
}
