package rows;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/**
 * Reads the rows as the preprocessor prints them. A row is
 *
 * <pre>BRIDGE_ROW | kind | "file" | line | "class" | "name" | "descriptor" | static ;</pre>
 *
 * A text may be in several literals, one after the other, as in C++. The last field is {@code
 * static} or {@code instance}. Text outside of rows is ignored: a table's headers may
 * leave declarations there.
 */
final class RowReader {
    private static final String START = "BRIDGE_ROW";
    private static final int FIELDS = 7;

    private final Path source;
    private final String text;
    private int position;

    private RowReader(Path source, String text) {
        this.source = source;
        this.text = text;
    }

    /**
     * Reads all rows of a file.
     *
     * @throws InputException when it cannot be read, a row is damaged, or there is none
     */
    static List<Row> read(Path file) throws InputException {
        try {
            return read(file, Files.readString(file, StandardCharsets.UTF_8));
        } catch (IOException e) {
            throw new InputException(file + ": cannot be read: " + e);
        }
    }

    /** Reads all rows of a text; {@code file} names it in messages. */
    static List<Row> read(Path file, String text) throws InputException {
        List<Row> rows = new RowReader(file, text).rows();
        if (rows.isEmpty()) {
            throw new InputException(file + ": there are no rows to compare");
        }
        return rows;
    }

    private List<Row> rows() throws InputException {
        List<Row> rows = new ArrayList<>();
        int start = text.indexOf(START);
        while (start >= 0) {
            position = start + START.length();
            rows.add(row());
            start = text.indexOf(START, position);
        }
        return rows;
    }

    private Row row() throws InputException {
        String[] fields = new String[FIELDS];
        for (int i = 0; i < FIELDS; ++i) {
            expect('|');
            fields[i] = field();
        }
        expect(';');
        try {
            return new Row(Row.Kind.valueOf(fields[0].toUpperCase(Locale.ROOT)), fields[1],
                    Integer.parseInt(fields[2]), fields[3], fields[4], fields[5],
                    isStatic(fields[6]));
        } catch (IllegalArgumentException e) {
            throw damaged("a row is damaged: " + String.join(" | ", fields));
        }
    }

    private static boolean isStatic(String text) {
        if (!text.equals("static") && !text.equals("instance")) {
            throw new IllegalArgumentException(text);
        }
        return text.equals("static");
    }

    private void expect(char mark) throws InputException {
        skipBlanks();
        if (position >= text.length() || text.charAt(position) != mark) {
            throw damaged("a row lacks '" + mark + "'");
        }
        ++position;
    }

    /** A word, or literals without anything between them. */
    private String field() throws InputException {
        StringBuilder value = new StringBuilder();
        skipBlanks();
        while (position < text.length() && "|;".indexOf(text.charAt(position)) < 0) {
            if (text.charAt(position) == '"') {
                literal(value);
            } else {
                value.append(text.charAt(position));
                ++position;
            }
            skipBlanks();
        }
        return value.toString();
    }

    private void literal(StringBuilder value) throws InputException {
        ++position;
        while (position < text.length() && text.charAt(position) != '"') {
            if (text.charAt(position) == '\\') {
                ++position; // a file's name may hold a quote or a backslash
            }
            if (position < text.length()) {
                value.append(text.charAt(position));
                ++position;
            }
        }
        if (position >= text.length()) {
            throw damaged("a text of a row does not end");
        }
        ++position;
    }

    private void skipBlanks() {
        while (position < text.length() && Character.isWhitespace(text.charAt(position))) {
            ++position;
        }
    }

    private InputException damaged(String what) {
        long line = 1 + text.substring(0, Math.min(position, text.length()))
                .chars().filter(letter -> letter == '\n').count();
        return new InputException(source + ":" + line + ": " + what);
    }
}
