package tenrik.desk.core;

import android.view.Surface;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_AUDIO_COMPONENT;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BACKGROUND_COLOR;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CAP_LANG;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_DUALMONO;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_COMPONENT_SETTING;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

/**
 * The three planes on which a session draws: their surfaces, sizes and modes.
 *
 * @param video the plane of the picture
 * @param captions the plane of the captions
 * @param data the plane of data broadcasting
 */
public record Planes(
        BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO video, BG_TS_DTVSVLIB_CAP_DRAWING_INFO captions,
        BG_TS_DTVSVLIB_BML_DRAWING_INFO data) {
    private static final int WIDTH = 320;

    /**
     * Makes three surfaces: a picture with captions on it, and data below.
     *
     * @return planes with the new surfaces, which last as long as the process
     */
    public static Planes create() {
        return new Planes(
                new BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO(surface(), WIDTH, 180,
                        BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0, BG_TE_DTVSVLIB_SCREEN_MODE.NORMAL),
                new BG_TS_DTVSVLIB_CAP_DRAWING_INFO(surface(), WIDTH, 60,
                        BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0, new BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(
                                16, 20, 3, 2, 0, 0, BG_TE_DTVSVLIB_BACKGROUND_COLOR.BLACK,
                                BG_TE_DTVSVLIB_ONOFF.ON)),
                new BG_TS_DTVSVLIB_BML_DRAWING_INFO(surface(), WIDTH, 240,
                        BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0));
    }

    /**
     * What reception begins with: sound and picture, without captions and data.
     *
     * @return an argument of DtvSvLib_SetFirstComponent
     */
    public BG_TS_DTVSVLIB_COMPONENT_SETTING firstComponents() {
        return new BG_TS_DTVSVLIB_COMPONENT_SETTING(BG_TE_DTVSVLIB_CAP_LANG.LANGUAGE_1,
                BG_TE_DTVSVLIB_DUALMONO.MAIN, BG_TE_DTVSVLIB_AUDIO_COMPONENT.FIRST,
                BG_TE_DTVSVLIB_CONTROL_TYPE.OFF, BG_TE_DTVSVLIB_CONTROL_TYPE.OFF, video, captions,
                data);
    }

    private static Surface surface() {
        return new Surface(Simulator.newSurface());
    }
}
