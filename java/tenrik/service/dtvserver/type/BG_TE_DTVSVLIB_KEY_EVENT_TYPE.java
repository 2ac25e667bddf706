package tenrik.service.dtvserver.type;

/**
 * What happened to a key. The broadcast service defines the numbers; the names were chosen for the
 * desk.
 */
public enum BG_TE_DTVSVLIB_KEY_EVENT_TYPE {
    /** The key was pressed. */
    PRESS(0),
    /** The key was released. */
    RELEASE(1),
    /** The key is held and repeats. */
    REPEAT(2);

    private final int value;

    BG_TE_DTVSVLIB_KEY_EVENT_TYPE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getKeyEventValue(BG_TE_DTVSVLIB_KEY_EVENT_TYPE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_KEY_EVENT_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_KEY_EVENT_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
