package tenrik.desk.core;

/** The exit statuses of the program. */
public final class ExitStatus {
    /** All that was asked for was done. */
    public static final int OK = 0;
    /** Something was not answered as it should be, or the output could not be written. */
    public static final int FAILED = 1;
    /** It could not start. */
    public static final int NOT_STARTED = 2;

    private ExitStatus() {}
}
