package tenrik.service.dtvserver.type;

/**
 * Whether and how captions or data broadcasting run. As a start type only OFF and ON are accepted.
 * The broadcast service owns the meaning of the numbers; the names are the desk's.
 */
public enum BG_TE_DTVSVLIB_CONTROL_TYPE {
    OFF(0),
    ON(1),
    SUSPEND(2),
    RESUME(3),
    RESTART(4),
    UNCHANGED(255);

    private final int value;

    BG_TE_DTVSVLIB_CONTROL_TYPE(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getControlTypeValue(BG_TE_DTVSVLIB_CONTROL_TYPE constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_CONTROL_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_CONTROL_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
