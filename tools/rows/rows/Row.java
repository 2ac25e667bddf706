package rows;

/**
 * One statement of the bridge about Java, with the place of the row that makes it. A row of a table
 * may make several.
 *
 * @param kind what is stated
 * @param file the table
 * @param line the row's line in it
 * @param className the internal name of the class
 * @param name the member's name; empty for {@link Kind#CLASS}
 * @param descriptor the member's descriptor; empty for {@link Kind#CLASS}
 * @param isStatic whether the bridge uses the member as a static one
 */
record Row(Kind kind, String file, int line, String className, String name, String descriptor,
        boolean isStatic) {
    /** What a row states. */
    enum Kind {
        /** That there is a class. */
        CLASS,
        /** The constructor that makes a class's objects. */
        CONSTRUCTOR,
        /** A method that takes an event. */
        CALLBACK,
        /** A method that the bridge implements. */
        NATIVE,
        /** A field that a command reads. */
        FIELD,
        /** A method that gives the number of an enum's constant. */
        GETTER
    }

    /** The class without its package. */
    String simpleName() {
        return simpleName(className);
    }

    /** The last part of an internal name. */
    static String simpleName(String className) {
        return className.substring(className.lastIndexOf('/') + 1);
    }

    /** The member as messages name it. */
    String member() {
        return simpleName() + "." + name;
    }

    String place() {
        return file + ":" + line;
    }
}
