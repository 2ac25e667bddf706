package tenrik.desk.core;

/** The results with which the simulated service answers commands. */
public final class ServiceResult {
    /** It was done. */
    public static final int DONE = 0;
    /** It is not possible in the present state of the session. */
    public static final int NOT_NOW = 1;
    /** There is no such station, programme or setting. */
    public static final int NO_SUCH_THING = 5;
    /** No session has this handle. */
    public static final int UNKNOWN_HANDLE = -1;

    private ServiceResult() {}

    /**
     * A result as text.
     *
     * @param result the number
     * @return the number, with its meaning where it is known
     */
    public static String text(int result) {
        return "result " + result + switch (result) {
            case NOT_NOW -> ", not now";
            case NO_SUCH_THING -> ", no such thing";
            case UNKNOWN_HANDLE -> ", unknown session";
            default -> "";
        };
    }

    /**
     * The result that a reply carries.
     *
     * @param reply an event that answers a command
     * @return its component {@code result}
     * @throws IllegalArgumentException when it has none
     */
    public static int of(Record reply) {
        try {
            return (int) reply.getClass().getMethod("result").invoke(reply);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(reply + " is no reply", failure);
        }
    }
}
