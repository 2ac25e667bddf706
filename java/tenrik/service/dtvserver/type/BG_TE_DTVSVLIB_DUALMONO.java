package tenrik.service.dtvserver.type;

/**
 * What is heard of a dual mono sound. The broadcast service owns the meaning of the numbers; the
 * names are the desk's.
 */
public enum BG_TE_DTVSVLIB_DUALMONO {
    MAIN(0),
    SUB(1),
    MAIN_AND_SUB(2),
    SUB_AND_MAIN(3),
    AUTOMATIC(4);

    private final int value;

    BG_TE_DTVSVLIB_DUALMONO(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getDualMonoValue(BG_TE_DTVSVLIB_DUALMONO constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_DUALMONO of(int value) {
        for (BG_TE_DTVSVLIB_DUALMONO constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
