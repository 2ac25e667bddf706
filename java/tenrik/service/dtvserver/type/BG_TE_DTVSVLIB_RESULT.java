package tenrik.service.dtvserver.type;

/**
 * How a command ended on its way to the broadcast service. The service's own answer comes later, as
 * an event.
 */
public enum BG_TE_DTVSVLIB_RESULT {
    /** Delivered to the service. */
    DTVSVLIB_RESULT_OK(0),
    /** Could not be delivered. */
    DTVSVLIB_RESULT_NG(1),
    /** Cancelled. */
    DTVSVLIB_RESULT_CANCEL(2),
    /** Could not be added. */
    DTVSVLIB_RESULT_ADD_NG(3),
    /** Could not be deleted. */
    DTVSVLIB_RESULT_DELETE_NG(4),
    /** An argument was refused; nothing was sent. */
    DTVSVLIB_RESULT_PARAM_NG(5);

    private final int value;

    BG_TE_DTVSVLIB_RESULT(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the code of the constant
     */
    public static int getResultValue(BG_TE_DTVSVLIB_RESULT constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_RESULT of(int value) {
        for (BG_TE_DTVSVLIB_RESULT constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
