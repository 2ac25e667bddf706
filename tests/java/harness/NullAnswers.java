package harness;

/** Methods that return null, or throw instead of returning. */
public final class NullAnswers {
    public NullAnswers() {}

    public static Object none(int number) {
        return null;
    }

    public static Object thrown(int number) {
        throw new IllegalStateException("on purpose");
    }

    public Object noneOfMine(int number) {
        return null;
    }

    public Object thrownByMe(int number) {
        throw new IllegalStateException("on purpose");
    }
}
