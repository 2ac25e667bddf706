package tenrik.service.dtvserver.type;

/**
 * The language of the captions, by its place among those that the programme carries. The broadcast
 * service owns the meaning of the numbers; the names are the desk's.
 */
public enum BG_TE_DTVSVLIB_CAP_LANG {
    LANGUAGE_1(0),
    LANGUAGE_2(1),
    LANGUAGE_3(2),
    LANGUAGE_4(3),
    LANGUAGE_5(4),
    LANGUAGE_6(5),
    LANGUAGE_7(6),
    LANGUAGE_8(7),
    NONE(8);

    private final int value;

    BG_TE_DTVSVLIB_CAP_LANG(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getCapLangValue(BG_TE_DTVSVLIB_CAP_LANG constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_CAP_LANG of(int value) {
        for (BG_TE_DTVSVLIB_CAP_LANG constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
