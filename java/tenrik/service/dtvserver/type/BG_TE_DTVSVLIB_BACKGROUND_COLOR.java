package tenrik.service.dtvserver.type;

/**
 * The background colour of the captions. The broadcast service defines the numbers; the names were
 * chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_BACKGROUND_COLOR {
    /** Black. */
    BLACK(0),
    /** Red. */
    RED(1),
    /** Green. */
    GREEN(2),
    /** Yellow. */
    YELLOW(3),
    /** Blue. */
    BLUE(4),
    /** Magenta. */
    MAGENTA(5),
    /** Cyan. */
    CYAN(6),
    /** White. */
    WHITE(7),
    /** No background. */
    NONE(8);

    private final int value;

    BG_TE_DTVSVLIB_BACKGROUND_COLOR(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getBackgroundColorValue(BG_TE_DTVSVLIB_BACKGROUND_COLOR constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_BACKGROUND_COLOR of(int value) {
        for (BG_TE_DTVSVLIB_BACKGROUND_COLOR constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
