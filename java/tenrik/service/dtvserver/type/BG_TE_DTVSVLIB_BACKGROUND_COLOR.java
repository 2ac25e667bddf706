package tenrik.service.dtvserver.type;

/**
 * The colour behind the captions. The broadcast service owns the meaning of the numbers; the names
 * are the desk's.
 */
public enum BG_TE_DTVSVLIB_BACKGROUND_COLOR {
    BLACK(0),
    RED(1),
    GREEN(2),
    YELLOW(3),
    BLUE(4),
    MAGENTA(5),
    CYAN(6),
    WHITE(7),
    NONE(8);

    private final int value;

    BG_TE_DTVSVLIB_BACKGROUND_COLOR(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getBackgroundColorValue(BG_TE_DTVSVLIB_BACKGROUND_COLOR constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_BACKGROUND_COLOR of(int value) {
        for (BG_TE_DTVSVLIB_BACKGROUND_COLOR constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
