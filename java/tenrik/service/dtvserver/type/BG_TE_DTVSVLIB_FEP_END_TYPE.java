package tenrik.service.dtvserver.type;

/**
 * How a text input ended. The broadcast service defines the numbers; the names were chosen for the
 * desk.
 */
public enum BG_TE_DTVSVLIB_FEP_END_TYPE {
    /** A text was entered. */
    ENTERED(0),
    /** The input was cancelled. */
    CANCEL(1);

    private final int value;

    BG_TE_DTVSVLIB_FEP_END_TYPE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getFepEndValue(BG_TE_DTVSVLIB_FEP_END_TYPE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_FEP_END_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_FEP_END_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
