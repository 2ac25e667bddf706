package tenrik.service.dtvserver.type;

/**
 * How a request of a data-broadcast document ended. The broadcast service defines the numbers; the
 * names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_BML_END_TYPE {
    /** The request was carried out. */
    OK(0),
    /** The request was not carried out. */
    NG(1);

    private final int value;

    BG_TE_DTVSVLIB_BML_END_TYPE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getBmlEndValue(BG_TE_DTVSVLIB_BML_END_TYPE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_BML_END_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_BML_END_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
