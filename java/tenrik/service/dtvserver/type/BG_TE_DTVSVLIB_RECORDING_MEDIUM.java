package tenrik.service.dtvserver.type;

/**
 * Where recordings and pictures are kept. The broadcast service defines the numbers; the names were
 * chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_RECORDING_MEDIUM {
    /** The memory of the receiver. */
    INTERNAL(0),
    /** The memory card. */
    CARD(1);

    private final int value;

    BG_TE_DTVSVLIB_RECORDING_MEDIUM(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getMediumValue(BG_TE_DTVSVLIB_RECORDING_MEDIUM constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_RECORDING_MEDIUM of(int value) {
        for (BG_TE_DTVSVLIB_RECORDING_MEDIUM constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
