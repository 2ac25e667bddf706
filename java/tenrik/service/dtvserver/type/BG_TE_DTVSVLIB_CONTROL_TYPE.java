package tenrik.service.dtvserver.type;

/**
 * Whether and how captions or data broadcasting run. As a start type only OFF and ON are accepted.
 * The broadcast service defines the numbers; the names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_CONTROL_TYPE {
    /** Turned off. */
    OFF(0),
    /** Turned on. */
    ON(1),
    /** Suspended. */
    SUSPEND(2),
    /** Resumed after a suspension. */
    RESUME(3),
    /** Started from the beginning. */
    RESTART(4),
    /** Left as it is. */
    UNCHANGED(255);

    private final int value;

    BG_TE_DTVSVLIB_CONTROL_TYPE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getControlTypeValue(BG_TE_DTVSVLIB_CONTROL_TYPE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_CONTROL_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_CONTROL_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
