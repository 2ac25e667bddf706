package rows;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Changes each row of the tables, one letter at a time. The comparison has to refuse each mutant
 * with the row's file and line.
 *
 * <pre>MutantsTest SCRATCH COMPILER PRINTING-SOURCE TABLES JAR</pre>
 *
 * <p>TABLES is the folder that the tables are included from, SCRATCH a folder for changed copies. A
 * copy holds every mutant of every row, each between marks, so that the preprocessor and the VM
 * start once.
 */
public final class MutantsTest {
    private static final String MARK = "ROW_MUTANT";
    private static final Pattern MARKED = Pattern.compile(MARK + "\\s+(\\d+)\\s*;");

    private final Preprocessor preprocessor;
    private final Path tables;
    private final Path scratch;
    private final Jars jars = new Jars();
    private final List<Mutant> mutants = new ArrayList<>();
    private final List<String> failures = new ArrayList<>();
    private List<Row> rows;

    /** A row of a file with one letter changed. */
    private record Mutant(String file, TableRow row, String text) {}

    private MutantsTest(String[] arguments) throws InputException {
        scratch = Path.of(arguments[0]);
        preprocessor = new Preprocessor(arguments[1], Path.of(arguments[2]));
        tables = Path.of(arguments[3]);
        jars.add(Path.of(arguments[4]));
    }

    public static void main(String[] arguments) throws Exception {
        System.exit(new MutantsTest(arguments).run() ? 0 : 1);
    }

    private boolean run() throws IOException, InterruptedException, InputException {
        rows = RowReader.read(tables, preprocessor.print(tables));
        failures.addAll(Comparison.compare(rows, jars, false));
        for (String file : new TreeSet<>(rows.stream().map(Row::file).toList())) {
            writeMutants(file);
        }
        Map<Integer, List<Row>> printed = split(preprocessor.print(scratch, tables));
        int letters = 0;
        for (int i = 0; i < mutants.size(); ++i) {
            letters += refuses(mutants.get(i), printed.getOrDefault(i, List.of())) ? 1 : 0;
        }
        int flags = checkFlags();
        int removals = checkRemovals();
        failures.forEach(System.err::println);
        System.out.println(rows.size() + " rows; refused: " + letters
                + " changed letters, " + flags + " changed flags, " + removals
                + " rows left out; failures: " + failures.size());
        return failures.isEmpty() && letters > 0 && flags > 0 && removals > 0;
    }

    /** Writes a table with each row replaced by its mutants. What is no row stays as it is. */
    private void writeMutants(String file) throws IOException {
        String table = Files.readString(Path.of(file));
        StringBuilder copy = new StringBuilder();
        int written = 0;
        for (Map.Entry<Integer, TableRow> entry : TableRow.of(table).entrySet()) {
            TableRow row = entry.getValue();
            if (rows.stream().noneMatch(printed -> isOf(printed, file, row))) {
                failures.add(file + ":" + row.first() + ": not printed: " + row.text());
            }
            copy.append(table, written, entry.getKey());
            written = entry.getKey() + row.text().length();
            for (String text : row.mutants()) {
                copy.append(MARK).append(' ').append(mutants.size()).append(" ;\n#line ")
                        .append(row.first()).append(" \"").append(file).append("\"\n")
                        .append(text).append('\n');
                mutants.add(new Mutant(file, row, text));
            }
        }
        copy.append(table.substring(written));
        Path target = scratch.resolve(tables.relativize(Path.of(file)));
        Files.createDirectories(target.getParent());
        Files.writeString(target, copy);
    }

    /** Whether a printed row is one that a row of a table makes. */
    private static boolean isOf(Row printed, String file, TableRow row) {
        return printed.file().equals(file) && printed.line() >= row.first()
                && printed.line() <= row.last();
    }

    /** The rows that each mutant prints, by the mutant's number. */
    private Map<Integer, List<Row>> split(String text) throws InputException {
        Map<Integer, StringBuilder> texts = new LinkedHashMap<>();
        Matcher mark = MARKED.matcher(text);
        int number = -1;
        int start = 0;
        while (mark.find()) {
            texts.computeIfAbsent(number, key -> new StringBuilder())
                    .append(text, start, mark.start());
            number = Integer.parseInt(mark.group(1));
            start = mark.end();
        }
        texts.computeIfAbsent(number, key -> new StringBuilder()).append(text.substring(start));
        Map<Integer, List<Row>> printed = new LinkedHashMap<>();
        for (Map.Entry<Integer, StringBuilder> entry : texts.entrySet()) {
            if (entry.getValue().indexOf("BRIDGE_ROW") >= 0) {
                printed.put(entry.getKey(),
                        RowReader.read(scratch, entry.getValue().toString()));
            }
        }
        return printed;
    }

    private boolean refuses(Mutant mutant, List<Row> changed) throws InputException {
        List<Row> now = new ArrayList<>(rows);
        now.removeIf(printed -> isOf(printed, mutant.file(), mutant.row()));
        int index = 0;
        while (index < now.size() && rows.get(index) == now.get(index)) {
            ++index;
        }
        String place = mutant.file() + ":" + mutant.row().first();
        if (rows.size() - now.size() != changed.size()
                || !changed.stream().allMatch(
                        printed -> isOf(printed, mutant.file(), mutant.row()))) {
            failures.add(place + ": not printed as the row is: " + mutant.text());
            return false;
        }
        now.addAll(index, changed);
        // Compilers differ in which line of a row is its line.
        return expect(Comparison.compare(now, jars, false), changed.get(0).place() + ": error: ",
                mutant.text());
    }

    /** Changes whether a member is static, in each row that names one. Returns the refused. */
    private int checkFlags() throws InputException {
        int refused = 0;
        for (int i = 0; i < rows.size(); ++i) {
            Row row = rows.get(i);
            if (row.kind() != Row.Kind.CLASS) {
                List<Row> now = new ArrayList<>(rows);
                now.set(i, new Row(row.kind(), row.file(), row.line(), row.className(),
                        row.name(), row.descriptor(), !row.isStatic()));
                refused += expect(Comparison.compare(now, jars, false),
                        row.place() + ": error: ", row.member() + " with the other flag") ? 1 : 0;
            }
        }
        return refused;
    }

    /**
     * Leaves out each row that Java needs; the message names the member and the table. Returns how
     * many are missed.
     */
    private int checkRemovals() throws InputException {
        int missed = 0;
        for (Row row : rows) {
            if (row.kind() != Row.Kind.NATIVE && row.kind() != Row.Kind.CALLBACK) {
                continue;
            }
            List<Row> now = new ArrayList<>(rows);
            now.removeIf(other -> other.place().equals(row.place()));
            String end = row.member() + row.descriptor() + " has no row in " + row.file();
            if (Comparison.compare(now, jars, false).stream()
                    .anyMatch(finding -> finding.endsWith(end))) {
                ++missed;
            } else {
                failures.add(row.place() + ": no finding says that it lacks " + row.member());
            }
        }
        return missed;
    }

    private boolean expect(List<String> findings, String beginning, String change) {
        boolean refused = findings.stream().anyMatch(finding -> finding.startsWith(beginning));
        if (!refused) {
            failures.add(beginning + "accepted: " + change + " " + findings);
        }
        return refused;
    }
}
