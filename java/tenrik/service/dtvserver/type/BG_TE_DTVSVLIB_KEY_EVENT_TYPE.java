package tenrik.service.dtvserver.type;

/**
 * What happened to a key. The broadcast service owns the meaning of the numbers; the names are the
 * desk's.
 */
public enum BG_TE_DTVSVLIB_KEY_EVENT_TYPE {
    PRESS(0),
    RELEASE(1),
    REPEAT(2);

    private final int value;

    BG_TE_DTVSVLIB_KEY_EVENT_TYPE(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getKeyEventValue(BG_TE_DTVSVLIB_KEY_EVENT_TYPE constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_KEY_EVENT_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_KEY_EVENT_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
