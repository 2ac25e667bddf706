package tenrik.service.dtvserver.type;

/**
 * What is heard of a dual mono sound. The broadcast service defines the numbers; the names were
 * chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_DUALMONO {
    /** The main channel. */
    MAIN(0),
    /** The sub channel. */
    SUB(1),
    /** The main channel and the sub channel. */
    MAIN_AND_SUB(2),
    /** The sub channel and the main channel. */
    SUB_AND_MAIN(3),
    /** As the service chooses. */
    AUTOMATIC(4);

    private final int value;

    BG_TE_DTVSVLIB_DUALMONO(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getDualMonoValue(BG_TE_DTVSVLIB_DUALMONO constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_DUALMONO of(int value) {
        for (BG_TE_DTVSVLIB_DUALMONO constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
