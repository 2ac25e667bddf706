package tenrik.service.dtvserver.type;

/**
 * The language of the captions, by its place among those that the programme carries. The broadcast
 * service defines the numbers; the names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_CAP_LANG {
    /** The first language. */
    LANGUAGE_1(0),
    /** The second language. */
    LANGUAGE_2(1),
    /** The third language. */
    LANGUAGE_3(2),
    /** The fourth language. */
    LANGUAGE_4(3),
    /** The fifth language. */
    LANGUAGE_5(4),
    /** The sixth language. */
    LANGUAGE_6(5),
    /** The seventh language. */
    LANGUAGE_7(6),
    /** The eighth language. */
    LANGUAGE_8(7),
    /** No language. */
    NONE(8);

    private final int value;

    BG_TE_DTVSVLIB_CAP_LANG(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getCapLangValue(BG_TE_DTVSVLIB_CAP_LANG constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_CAP_LANG of(int value) {
        for (BG_TE_DTVSVLIB_CAP_LANG constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
