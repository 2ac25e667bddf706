package tenrik.service.dtvserver.type;

/** A switch. */
public enum BG_TE_DTVSVLIB_ONOFF {
    /** Off, or no. */
    OFF(0),
    /** On, or yes. */
    ON(1);

    private final int value;

    BG_TE_DTVSVLIB_ONOFF(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getOnOffValue(BG_TE_DTVSVLIB_ONOFF constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_ONOFF of(int value) {
        for (BG_TE_DTVSVLIB_ONOFF constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
