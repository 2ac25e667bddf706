package harness;

/** A class for the strict table's own test; its natives are bound by that test. */
public final class StrictProbe {
    private int number = 7;
    private String text = "text";
    private static int shared = 9;

    public StrictProbe() {}

    public int one() {
        return number;
    }

    public static int two() {
        return shared;
    }

    public static void take(Object object) {}

    public static void fail() {
        throw new IllegalStateException("on purpose");
    }

    /** Returns a new reference to its argument. */
    public native Object give(Object argument);

    /** Returns a reference that it has deleted. */
    public native Object giveDeleted(Object argument);

    /** Pushes a frame and does not pop it. */
    public native void keepFrame();

    /** Takes characters and does not release them. */
    public native void keepText(String text);

    /** Keeps many references: the VM ends them with the call. */
    public native void makeMany(int count);

    /** Returns the sum of all its numbers, and 1000 for a reference that is not null. */
    public native double mix(boolean a, byte b, char c, short d, int e, long f, float g, double h,
            Object i, int[] j, int k);

    @Override
    public String toString() {
        return number + text + shared;
    }
}
