package tenrik.service.dtvserver.type;

/**
 * Which way playback moves. The broadcast service defines the numbers; the names were chosen for
 * the desk.
 */
public enum BG_TE_DTVSVLIB_PLAY_DIRECTION {
    /** Towards the end. */
    FORWARD(0),
    /** Towards the beginning. */
    BACKWARD(1);

    private final int value;

    BG_TE_DTVSVLIB_PLAY_DIRECTION(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getDirectionValue(BG_TE_DTVSVLIB_PLAY_DIRECTION constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_PLAY_DIRECTION of(int value) {
        for (BG_TE_DTVSVLIB_PLAY_DIRECTION constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
