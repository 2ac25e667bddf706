package rows;

import java.io.PrintStream;
import java.nio.file.Path;
import java.util.List;
import java.util.stream.Collectors;

/**
 * Compares the rows in which the bridge states what it expects of Java with class files.
 *
 * <pre>CompareRows [--count] ROWS JAR [PLATFORM-JAR]</pre>
 *
 * <p>ROWS is what {@link RowReader} reads. Each difference is one line on standard error, in the
 * form of a compiler's error. With {@code --count} the number of rows of each kind is printed when
 * all are equal. Status 0: all is equal; 1: something differs; 2: nothing was compared.
 */
public final class CompareRows {
    private CompareRows() {}

    public static void main(String[] arguments) {
        System.exit(run(arguments, System.out, System.err));
    }

    /** Does what the program does, and returns its status. */
    static int run(String[] arguments, PrintStream out, PrintStream err) {
        boolean count = arguments.length > 0 && arguments[0].equals("--count");
        int first = count ? 1 : 0;
        int given = arguments.length - first;
        if (given < 2 || given > 3) {
            err.println("usage: CompareRows [--count] ROWS JAR [PLATFORM-JAR]");
            return 2;
        }
        try (Jars jars = new Jars()) {
            List<Row> rows = RowReader.read(Path.of(arguments[first]));
            for (int i = first + 1; i < arguments.length; ++i) {
                jars.add(Path.of(arguments[i]));
            }
            List<String> findings = Comparison.compare(rows, jars, given > 2);
            findings.forEach(err::println);
            if (findings.isEmpty() && count) {
                out.println(countOf(rows));
            }
            return findings.isEmpty() ? 0 : 1;
        } catch (InputException e) {
            err.println("error: " + e.getMessage());
            return 2;
        }
    }

    /** How many rows of each kind there are, in the order of the kinds. */
    private static String countOf(List<Row> rows) {
        return List.of(Row.Kind.values()).stream()
                .map(kind -> kind + " " + rows.stream().filter(row -> row.kind() == kind).count())
                .collect(Collectors.joining(", "));
    }
}
