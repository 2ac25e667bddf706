package rows;

import java.util.ArrayList;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import java.util.TreeSet;
import java.util.stream.Collectors;

/** Checks that what each row states is so in Java. */
final class RowCheck {
    /** What classes begin with that come with the platform, in a jar of their own. */
    private static final String PLATFORM = "android/";

    private final Jars jars;
    private final boolean platformGiven;
    private final Findings findings;
    private final Set<String> classRows;

    /**
     * @param jars the classes
     * @param platformGiven whether a jar of the platform's classes is among the jars
     * @param rows all rows
     * @param findings what differs is added here
     */
    RowCheck(Jars jars, boolean platformGiven, List<Row> rows, Findings findings) {
        this.jars = jars;
        this.platformGiven = platformGiven;
        this.findings = findings;
        classRows = rows.stream().filter(row -> row.kind() == Row.Kind.CLASS).map(Row::className)
                .collect(Collectors.toSet());
    }

    /**
     * Checks one row.
     *
     * @throws InputException when a class file is damaged
     */
    void check(Row row) throws InputException {
        ClassFile found = jars.find(row.className());
        if (found == null) {
            reportClass(row);
        } else if (row.kind() != Row.Kind.CLASS) {
            checkMember(row, found);
        }
    }

    private void reportClass(Row row) {
        if (row.kind() != Row.Kind.CLASS && classRows.contains(row.className())) {
            return; // the class's own row says it
        }
        String missing = "there is no class " + row.className();
        String near = nearClass(row.className());
        if (near != null) {
            missing += ", there is " + near;
        } else if (row.className().startsWith(PLATFORM) && !platformGiven) {
            missing += ", and no jar of the platform's classes is given (DTV_JAVA_FRAMEWORK)";
        }
        findings.add(row.place(), missing);
    }

    /** A class of the same name in another package, or one with a name like it. */
    private String nearClass(String className) {
        String simpleName = Row.simpleName(className);
        Set<String> names = new TreeSet<>();
        for (String name : jars.names()) {
            if (Row.simpleName(name).equals(simpleName)) {
                return name;
            }
            names.add(name);
        }
        return NearName.of(className, names);
    }

    private void checkMember(Row row, ClassFile declaring) throws InputException {
        List<ClassFile.Member> reachable = new ArrayList<>();
        String unknown = collect(row, declaring, reachable);
        List<ClassFile.Member> named =
                reachable.stream().filter(member -> member.name().equals(row.name())).toList();
        List<ClassFile.Member> exact = named.stream()
                .filter(member -> member.descriptor().equals(row.descriptor())).toList();
        if (named.isEmpty()) {
            findings.add(row.place(), missing(row, reachable) + unknown);
        } else if (exact.isEmpty()) {
            findings.add(row.place(), row.member() + " has " + descriptors(named)
                    + ", the row says " + row.descriptor() + unknown);
        } else {
            checkFlags(row, exact.get(0));
        }
    }

    /**
     * Collects the members that JNI finds for a row: a constructor and a native method in the class
     * itself, everything else in its superclasses too, those of the class itself first.
     *
     * @return what to add to a message about a missing member; mostly empty
     */
    private String collect(Row row, ClassFile declaring, List<ClassFile.Member> reachable)
            throws InputException {
        boolean inherited =
                row.kind() != Row.Kind.CONSTRUCTOR && row.kind() != Row.Kind.NATIVE;
        Set<String> seen = new LinkedHashSet<>();
        ClassFile holder = declaring;
        while (seen.add(holder.name())) {
            reachable.addAll(row.kind() == Row.Kind.FIELD ? holder.fields() : holder.methods());
            String next = holder.superName();
            if (!inherited || next == null || next.startsWith("java/")) {
                return "";
            }
            holder = jars.find(next);
            if (holder == null) {
                return " (its superclass " + next + " is in no jar that is given)";
            }
        }
        return "";
    }

    private static String missing(Row row, List<ClassFile.Member> reachable) {
        String what = row.kind() == Row.Kind.FIELD ? "field " : "method ";
        String text = row.simpleName() + " has no " + what + row.name();
        String near = NearName.of(row.name(),
                reachable.stream().map(ClassFile.Member::name).collect(Collectors.toSet()));
        return near == null ? text : text + ", it has " + near;
    }

    private static String descriptors(List<ClassFile.Member> members) {
        return members.stream().map(ClassFile.Member::descriptor).distinct()
                .collect(Collectors.joining(" and "));
    }

    private void checkFlags(Row row, ClassFile.Member member) {
        if (member.isStatic() != row.isStatic()) {
            findings.add(row.place(), row.member() + " is " + attribute(member.isStatic())
                    + ", the row says " + attribute(row.isStatic()));
        }
        if (row.kind() == Row.Kind.NATIVE && !member.isNative()) {
            findings.add(row.place(), row.member() + row.descriptor() + " is not native");
        }
    }

    private static String attribute(boolean isStatic) {
        return isStatic ? "static" : "of an instance";
    }
}
