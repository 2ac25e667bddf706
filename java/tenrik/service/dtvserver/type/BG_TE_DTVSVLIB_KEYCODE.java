package tenrik.service.dtvserver.type;

/**
 * A key of the receiver as it is reported to a data-broadcast document. The broadcast service
 * defines the numbers; the names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_KEYCODE {
    /** No key: the position of the touch counts. */
    NONE(0),
    /** The cursor key up. */
    UP(1),
    /** The cursor key down. */
    DOWN(2),
    /** The cursor key left. */
    LEFT(3),
    /** The cursor key right. */
    RIGHT(4),
    /** The digit 0. */
    DIGIT_0(5),
    /** The digit 1. */
    DIGIT_1(6),
    /** The digit 2. */
    DIGIT_2(7),
    /** The digit 3. */
    DIGIT_3(8),
    /** The digit 4. */
    DIGIT_4(9),
    /** The digit 5. */
    DIGIT_5(10),
    /** The digit 6. */
    DIGIT_6(11),
    /** The digit 7. */
    DIGIT_7(12),
    /** The digit 8. */
    DIGIT_8(13),
    /** The digit 9. */
    DIGIT_9(14),
    /** The key 10 of the twelve number keys. */
    NUMBER_10(15),
    /** The key 11 of the twelve number keys. */
    NUMBER_11(16),
    /** The key 12 of the twelve number keys. */
    NUMBER_12(17),
    /** The enter key. */
    ENTER(18),
    /** The back key. */
    BACK(19),
    /** The key of data broadcasting. */
    DATA(20),
    /** The blue colour key. */
    BLUE(21),
    /** The red colour key. */
    RED(22),
    /** The green colour key. */
    GREEN(23),
    /** The yellow colour key. */
    YELLOW(24);

    private final int value;

    BG_TE_DTVSVLIB_KEYCODE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getKeyValue(BG_TE_DTVSVLIB_KEYCODE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_KEYCODE of(int value) {
        for (BG_TE_DTVSVLIB_KEYCODE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
