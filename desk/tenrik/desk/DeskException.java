package tenrik.desk;

/** Something that ends the program, told in words for the person who runs it. */
final class DeskException extends Exception {
    private static final long serialVersionUID = 1L;

    DeskException(String message) {
        super(message);
    }
}
