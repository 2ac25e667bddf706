package rows;

import java.util.List;

/** Compares the rows of the bridge with Java, in both directions. */
final class Comparison {
    private Comparison() {}

    /**
     * Compares.
     *
     * @param rows all rows of the bridge
     * @param jars the classes; the Java service's jar first
     * @param platformGiven whether a jar of the platform's classes is among the jars
     * @return one line for each difference, in the form of a compiler's error; empty when all is
     *     equal
     * @throws InputException when a class file is damaged, or a kind of rows is not there at all
     */
    static List<String> compare(List<Row> rows, Jars jars, boolean platformGiven)
            throws InputException {
        for (Row.Kind kind : Row.Kind.values()) {
            if (rows.stream().noneMatch(row -> row.kind() == kind)) {
                // Such a comparison would find nothing, whatever Java declares.
                throw new InputException("there is no row of the kind " + kind);
            }
        }
        Findings findings = new Findings();
        RowCheck check = new RowCheck(jars, platformGiven, rows, findings);
        for (Row row : rows) {
            check.check(row);
        }
        new MissingRows(jars, rows, findings).check();
        return findings.lines();
    }
}
