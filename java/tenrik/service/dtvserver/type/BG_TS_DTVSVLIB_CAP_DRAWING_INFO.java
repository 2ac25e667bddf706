package tenrik.service.dtvserver.type;

import android.view.Surface;

/**
 * Where and how the captions are drawn.
 *
 * @param surface_handle what is drawn on
 * @param surface_width its width in pixels, 0 to 65535
 * @param surface_height its height in pixels, 0 to 65535
 * @param screen_rotate how it is rotated
 * @param cap_info the layout
 */
public record BG_TS_DTVSVLIB_CAP_DRAWING_INFO(
        Surface surface_handle, int surface_width, int surface_height,
        BG_TE_DTVSVLIB_SCREEN_ROTATE screen_rotate, BG_TS_DTVSVLIB_CAP_DISPLAY_INFO cap_info) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param surface_handle what is drawn on
     * @param surface_width its width in pixels, 0 to 65535
     * @param surface_height its height in pixels, 0 to 65535
     * @param screen_rotate how it is rotated; a number of {@link BG_TE_DTVSVLIB_SCREEN_ROTATE}
     * @param cap_info the layout
     */
    public BG_TS_DTVSVLIB_CAP_DRAWING_INFO(
            Surface surface_handle, int surface_width, int surface_height, int screen_rotate,
            BG_TS_DTVSVLIB_CAP_DISPLAY_INFO cap_info) {
        this(
                surface_handle, surface_width, surface_height,
                BG_TE_DTVSVLIB_SCREEN_ROTATE.of(screen_rotate), cap_info);
    }
}
