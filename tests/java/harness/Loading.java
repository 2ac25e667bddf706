package harness;

/**
 * Loads the bridge. A library that is loaded resolves its classes through the class loader of the
 * class that loads it: this one.
 */
public final class Loading {
    private Loading() {}

    /** Null when the library was taken, otherwise what the VM threw. */
    public static String load(String path) {
        try {
            System.load(path);
            return null;
        } catch (Throwable refused) {
            return refused.toString();
        }
    }
}
