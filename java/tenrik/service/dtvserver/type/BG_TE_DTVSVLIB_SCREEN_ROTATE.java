package tenrik.service.dtvserver.type;

/**
 * How a plane is rotated on the display. The broadcast service defines the numbers; the names were
 * chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_SCREEN_ROTATE {
    /** Not rotated. */
    ROTATE_0(0),
    /** By 90 degrees. */
    ROTATE_90(1),
    /** By 180 degrees. */
    ROTATE_180(2),
    /** By 270 degrees. */
    ROTATE_270(3);

    private final int value;

    BG_TE_DTVSVLIB_SCREEN_ROTATE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getScreenRotateValue(BG_TE_DTVSVLIB_SCREEN_ROTATE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_SCREEN_ROTATE of(int value) {
        for (BG_TE_DTVSVLIB_SCREEN_ROTATE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
