package tenrik.service.dtvserver.type;

/**
 * What the viewer chose when a data-broadcast document asked for a permission. The broadcast
 * service defines the numbers; the names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE {
    /** The permission was given. */
    PERMIT(0),
    /** The permission was refused. */
    REFUSE(1),
    /** The question was cancelled. */
    CANCEL(2);

    private final int value;

    BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getPermissionValue(BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE of(int value) {
        for (BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
