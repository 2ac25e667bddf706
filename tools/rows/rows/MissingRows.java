package rows;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.function.Predicate;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Collectors;

/** Checks that what Java declares for the bridge has a row, and only one. */
final class MissingRows {
    /** What the names of the methods begin with that take an event. */
    private static final String CALLBACK_PREFIX = "onEv";

    private static final Pattern CLASS_IN_DESCRIPTOR = Pattern.compile("L([^;]+);");

    private final Jars jars;
    private final List<Row> rows;
    private final Findings findings;
    private final Set<String> classRows;

    /**
     * @param jars the classes
     * @param rows all rows
     * @param findings what differs is added here
     */
    MissingRows(Jars jars, List<Row> rows, Findings findings) {
        this.jars = jars;
        this.rows = rows;
        this.findings = findings;
        classRows = of(Row.Kind.CLASS).stream().map(Row::className).collect(Collectors.toSet());
    }

    /**
     * Looks for what has no row, and for what has two.
     *
     * @throws InputException when a class file is damaged
     */
    void check() throws InputException {
        reportTwice();
        reportMembers(Row.Kind.NATIVE, "native method", ClassFile.Member::isNative);
        reportMembers(Row.Kind.CALLBACK, "callback",
                method -> method.isStatic() && method.name().startsWith(CALLBACK_PREFIX));
        reportClasses();
        reportMade();
    }

    private List<Row> of(Row.Kind kind) {
        return rows.stream().filter(row -> row.kind() == kind).toList();
    }

    private void reportTwice() {
        Map<String, Row> first = new HashMap<>();
        for (Row row : rows) {
            if (row.kind() == Row.Kind.GETTER) {
                continue; // fields of one enum have the same getter
            }
            String what = row.kind() == Row.Kind.CLASS
                    ? row.className() : row.member() + row.descriptor();
            Row other = first.putIfAbsent(row.kind() + row.className() + what, row);
            if (other != null) {
                findings.add(other.place(), what + " has another row, at " + row.place());
                findings.add(row.place(), what + " has a row already, at " + other.place());
            }
        }
    }

    /** The classes that rows of a kind name, each with one of these rows. */
    private Map<String, Row> classesOf(Row.Kind kind) {
        Map<String, Row> classes = new LinkedHashMap<>();
        of(kind).forEach(row -> classes.putIfAbsent(row.className(), row));
        return classes;
    }

    private void reportMembers(Row.Kind kind, String what, Predicate<ClassFile.Member> wanted)
            throws InputException {
        for (Map.Entry<String, Row> entry : classesOf(kind).entrySet()) {
            ClassFile declaring = jars.find(entry.getKey());
            if (declaring == null) {
                continue; // the rows of the class are reported
            }
            for (ClassFile.Member method : declaring.methods()) {
                if (wanted.test(method) && !hasRow(kind, declaring, method)) {
                    findings.add(jars.place(declaring.name()), what + " "
                            + Row.simpleName(declaring.name()) + "." + method.name()
                            + method.descriptor() + " has no row in " + entry.getValue().file());
                }
            }
        }
    }

    /**
     * Whether a method has a row, or one that is reported already because it says another
     * descriptor than every method of that name has.
     */
    private boolean hasRow(Row.Kind kind, ClassFile declaring, ClassFile.Member method) {
        Set<String> declared = declaring.methods().stream()
                .filter(other -> other.name().equals(method.name()))
                .map(ClassFile.Member::descriptor).collect(Collectors.toSet());
        return of(kind).stream()
                .filter(row -> row.className().equals(declaring.name())
                        && row.name().equals(method.name()))
                .anyMatch(row -> row.descriptor().equals(method.descriptor())
                        || !declared.contains(row.descriptor()));
    }

    /** Every class that a callback takes needs a row. */
    private void reportClasses() throws InputException {
        String table = of(Row.Kind.CLASS).get(0).file();
        Set<String> reported = new LinkedHashSet<>();
        for (String callbacks : classesOf(Row.Kind.CALLBACK).keySet()) {
            ClassFile declaring = jars.find(callbacks);
            if (declaring == null) {
                continue;
            }
            for (ClassFile.Member method : declaring.methods()) {
                if (!method.isStatic() || !method.name().startsWith(CALLBACK_PREFIX)) {
                    continue;
                }
                for (String taken : classesIn(method.descriptor())) {
                    if (!classRows.contains(taken) && reported.add(taken)) {
                        findings.add(jars.place(taken), "the class is what "
                                + Row.simpleName(declaring.name()) + "." + method.name()
                                + " takes, and has no row in " + table);
                    }
                }
            }
        }
    }

    /** The bridge makes what a constructor takes and what a native method returns. */
    private void reportMade() {
        for (Row row : of(Row.Kind.CONSTRUCTOR)) {
            reportMade(row, row.descriptor(), "takes");
        }
        for (Row row : of(Row.Kind.NATIVE)) {
            reportMade(row, row.descriptor().substring(row.descriptor().indexOf(')') + 1),
                    "returns");
        }
    }

    private void reportMade(Row row, String descriptor, String how) {
        for (String made : classesIn(descriptor)) {
            if (!made.startsWith("java/") && !classRows.contains(made)) {
                findings.add(row.place(),
                        row.member() + " " + how + " " + made + ", which has no row");
            }
        }
    }

    private static List<String> classesIn(String descriptor) {
        List<String> names = new ArrayList<>();
        Matcher matcher = CLASS_IN_DESCRIPTOR.matcher(descriptor);
        while (matcher.find()) {
            names.add(matcher.group(1));
        }
        return names;
    }
}
