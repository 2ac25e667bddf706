package tenrik.desk;

/** The exit statuses of the program. */
final class ExitStatus {
    /** All that was asked for was done. */
    static final int OK = 0;
    /** Something was not answered as it should be, or the output could not be written. */
    static final int FAILED = 1;
    /** It could not start. */
    static final int NOT_STARTED = 2;

    private ExitStatus() {}
}
