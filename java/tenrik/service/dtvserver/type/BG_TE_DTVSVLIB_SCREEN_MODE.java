package tenrik.service.dtvserver.type;

/**
 * How the picture fills its surface. The broadcast service defines the numbers; the names were
 * chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_SCREEN_MODE {
    /** The normal mode. */
    NORMAL(0),
    /** The full-screen mode. */
    FULL(1),
    /** The zoom mode. */
    ZOOM(2),
    /** The wide mode. */
    WIDE(3);

    private final int value;

    BG_TE_DTVSVLIB_SCREEN_MODE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getScreenModeValue(BG_TE_DTVSVLIB_SCREEN_MODE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_SCREEN_MODE of(int value) {
        for (BG_TE_DTVSVLIB_SCREEN_MODE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
