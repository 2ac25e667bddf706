package rows;

/** The input cannot be used, so nothing was compared. The message names the file. */
final class InputException extends Exception {
    private static final long serialVersionUID = 1;

    InputException(String message) {
        super(message);
    }
}
