package tenrik.desk.core;

/** A failure whose message is shown to the person who runs the program. */
public final class DeskException extends Exception {
    private static final long serialVersionUID = 1L;

    /**
     * A failure.
     *
     * @param message what has failed; may be of several lines
     */
    public DeskException(String message) {
        super(message);
    }
}
