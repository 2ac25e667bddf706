package tenrik.desk.shell;

/** The labels of parameters whose values are completed. */
final class ParameterLabels {
    static final String CHANNEL = "CHANNEL";
    static final String COMMAND = "COMMAND";
    static final String NATIVE = "NATIVE";
    static final String ARGUMENT = "ARGUMENT";
    static final String PROGRAMME = "PROGRAMME";
    static final String REQUEST = "KIND";
    static final String SESSION = "SESSION";

    private ParameterLabels() {}
}
