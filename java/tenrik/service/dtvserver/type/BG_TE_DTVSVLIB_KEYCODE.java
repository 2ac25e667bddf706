package tenrik.service.dtvserver.type;

/**
 * A key of the receiver as a data-broadcast document sees it. The broadcast service owns the
 * meaning of the numbers; the names are the desk's.
 */
public enum BG_TE_DTVSVLIB_KEYCODE {
    /** No key: the position of the touch counts. */
    NONE(0),
    UP(1),
    DOWN(2),
    LEFT(3),
    RIGHT(4),
    DIGIT_0(5),
    DIGIT_1(6),
    DIGIT_2(7),
    DIGIT_3(8),
    DIGIT_4(9),
    DIGIT_5(10),
    DIGIT_6(11),
    DIGIT_7(12),
    DIGIT_8(13),
    DIGIT_9(14),
    NUMBER_10(15),
    NUMBER_11(16),
    NUMBER_12(17),
    ENTER(18),
    BACK(19),
    DATA(20),
    BLUE(21),
    RED(22),
    GREEN(23),
    YELLOW(24);

    private final int value;

    BG_TE_DTVSVLIB_KEYCODE(int value) {
        this.value = value;
    }

    /** The number that the constant is sent as. */
    public static int getKeyValue(BG_TE_DTVSVLIB_KEYCODE constant) {
        return constant.value;
    }

    /** The constant with this number, or null when there is none. */
    public static BG_TE_DTVSVLIB_KEYCODE of(int value) {
        for (BG_TE_DTVSVLIB_KEYCODE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
