package tenrik.service.dtvserver.type;

/**
 * A key or a touch for the data-broadcast document.
 *
 * @param key_code the key
 * @param key_type what happened to it
 * @param touch_x where it was touched, in pixels from the left
 * @param touch_y where it was touched, in pixels from the top
 */
public record BG_TS_DTVSVLIB_KEY_CODE_NOTIFY(
        BG_TE_DTVSVLIB_KEYCODE key_code, BG_TE_DTVSVLIB_KEY_EVENT_TYPE key_type, int touch_x,
        int touch_y) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param key_code the key; a number of {@link BG_TE_DTVSVLIB_KEYCODE}
     * @param key_type what happened to it; a number of {@link BG_TE_DTVSVLIB_KEY_EVENT_TYPE}
     * @param touch_x where it was touched, in pixels from the left
     * @param touch_y where it was touched, in pixels from the top
     */
    public BG_TS_DTVSVLIB_KEY_CODE_NOTIFY(int key_code, int key_type, int touch_x, int touch_y) {
        this(
                BG_TE_DTVSVLIB_KEYCODE.of(key_code), BG_TE_DTVSVLIB_KEY_EVENT_TYPE.of(key_type),
                touch_x, touch_y);
    }
}
