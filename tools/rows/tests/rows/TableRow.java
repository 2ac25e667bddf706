package rows;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * A row of a table: a macro at the beginning of a line, with its arguments.
 *
 * @param first its first line, from 1
 * @param last its last line
 * @param text the whole row
 * @param checked the spans of the arguments that say something of Java, as {from, to} in the text
 */
record TableRow(int first, int last, String text, List<int[]> checked) {
    /**
     * Which arguments of a row say something of Java, from 0. The others are ids, functions and log
     * lines, which the compiler and other tests check.
     */
    private static final Map<String, List<Integer>> CHECKED = Map.ofEntries(
            Map.entry("CLASS", List.of(1, 2)),
            Map.entry("VALUE", List.of(1, 3)),
            Map.entry("EVENT", List.of(1, 2, 4, 6)),
            Map.entry("NATIVE", List.of(0, 2, 3)),
            Map.entry("INT_FIELD", List.of(0, 1)),
            Map.entry("LIMITED_INT_FIELD", List.of(0, 1)),
            Map.entry("ENUM_FIELD", List.of(0, 1, 2, 3)),
            Map.entry("LIMITED_ENUM_FIELD", List.of(0, 1, 2, 3)),
            Map.entry("NAMED_ENUM_FIELD", List.of(0, 1, 3, 4)),
            Map.entry("TEXT_FIELD", List.of(0, 1)),
            Map.entry("BYTES_FIELD", List.of(0, 1)),
            Map.entry("OBJECT_FIELD", List.of(0, 1, 2)),
            Map.entry("SURFACE_FIELD", List.of(0, 1)),
            Map.entry("SURFACE_ADDRESS_FIELD", List.of(0)),
            Map.entry("RESULT_CONSTANT", List.of(1)));

    private static final Pattern BEGINNING = Pattern.compile("^([A-Z_]+)\\(", Pattern.MULTILINE);

    /** A literal, or a name. Numbers are ids, which Java does not know. */
    private static final Pattern PART = Pattern.compile("\"[^\"]*\"|\\b[A-Za-z_]\\w*");

    /**
     * The rows of a table, by their offset in its text.
     *
     * @throws IllegalArgumentException when a row is of an unknown kind or does not end
     */
    static Map<Integer, TableRow> of(String table) {
        Map<Integer, TableRow> rows = new LinkedHashMap<>();
        Matcher beginning = BEGINNING.matcher(table);
        while (beginning.find()) {
            List<Integer> checked = CHECKED.get(beginning.group(1));
            int first = line(table, beginning.start());
            if (checked == null) {
                throw new IllegalArgumentException("line " + first
                        + ": CHECKED does not say which arguments of the row are Java's");
            }
            List<int[]> arguments = new ArrayList<>();
            int end = split(table, beginning.end(), arguments);
            List<int[]> spans = new ArrayList<>();
            for (int index : checked) {
                int[] argument = arguments.get(index);
                spans.add(new int[] {
                    argument[0] - beginning.start(), argument[1] - beginning.start()});
            }
            rows.put(beginning.start(), new TableRow(first, line(table, end),
                    table.substring(beginning.start(), end), spans));
        }
        return rows;
    }

    private static int line(String table, int offset) {
        return 1 + (int) table.substring(0, offset).chars().filter(c -> c == '\n').count();
    }

    /** Finds the arguments of a row. Returns the offset after its closing parenthesis. */
    private static int split(String table, int from, List<int[]> arguments) {
        int depth = 1;
        int start = from;
        boolean literal = false;
        for (int i = from; i < table.length(); ++i) {
            char letter = table.charAt(i);
            if (letter == '"') {
                literal = !literal;
            } else if (!literal) {
                depth += letter == '(' ? 1 : letter == ')' ? -1 : 0;
                if (depth == 0 || depth == 1 && letter == ',') {
                    arguments.add(new int[] {start, i});
                    start = i + 1;
                }
                if (depth == 0) {
                    return i + 1;
                }
            }
        }
        throw new IllegalArgumentException("line " + line(table, from) + ": the row does not end");
    }

    /** The row with one letter changed: of each name one, of a literal each. */
    List<String> mutants() {
        List<String> mutants = new ArrayList<>();
        for (int[] span : checked) {
            Matcher part = PART.matcher(text).region(span[0], span[1]);
            while (part.find()) {
                int last = part.end() - 1;
                if (text.charAt(last) != '"') {
                    mutants.add(changed(last));
                    continue;
                }
                for (int i = part.start() + 1; i < last; ++i) {
                    if (Character.isLetterOrDigit(text.charAt(i)) || text.charAt(i) == '[') {
                        mutants.add(changed(i));
                    }
                }
            }
        }
        return mutants;
    }

    private String changed(int index) {
        char letter = text.charAt(index);
        char other = switch (letter) {
            case 'z' -> 'a';
            case 'Z' -> 'A';
            case '9' -> '0';
            case '_' -> 'x';
            case '[' -> 'B';
            default -> (char) (letter + 1);
        };
        return text.substring(0, index) + other + text.substring(index + 1);
    }
}
