package tenrik.bench;

import android.view.Surface;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

/**
 * Calls commands in a loop. Each method calls one command {@code count} times and returns how many
 * calls were answered as they should be.
 * <p>Defined once for each variant, so that the VM compiles it for one class of proxy and no
 * variant pays for the dispatch among several.
 */
final class CommandLoop {
    private static final int SESSION = 1;
    private static final byte[] BLOCK = new byte[64];

    private final DtvServerProxy proxy;
    private final BG_TS_DTVSVLIB_BROADCAST_INFO service = new BG_TS_DTVSVLIB_BROADCAST_INFO(27, 1);
    private final BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO screen;
    private final BG_TS_DTVSVLIB_CAP_DRAWING_INFO captions;
    private final BG_TS_DTVSVLIB_BML_DRAWING_INFO browser;
    private final BG_TS_DTVSVLIB_READ_NVRAM_REPLY block =
            new BG_TS_DTVSVLIB_READ_NVRAM_REPLY(0, "Rede Brasil", BLOCK);

    /**
     * Makes the arguments.
     *
     * @param proxy whose commands are called
     * @param nativeSurface address of the surface of all three planes
     */
    CommandLoop(DtvServerProxy proxy, int nativeSurface) {
        this.proxy = proxy;
        for (int i = 0; i < BLOCK.length; ++i) {
            BLOCK[i] = (byte) i;
        }
        Surface surface = new Surface(nativeSurface);
        screen = new BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO(surface, 320, 180, 1, 2);
        captions = new BG_TS_DTVSVLIB_CAP_DRAWING_INFO(
                surface, 320, 60, 1, new BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(18, 16, 3, 2, 8, 4, 1, 1));
        browser = new BG_TS_DTVSVLIB_BML_DRAWING_INFO(surface, 240, 320, 1);
    }

    int controlDecodeAudio(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += isOk(proxy.DtvSvLib_ControlDecodeAudio(SESSION, i & 1));
        }
        return ok;
    }

    int controlDecodeAudioSync(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += proxy.DtvSvLib_ControlDecodeAudio_Sync(SESSION, i & 1).handle();
        }
        return ok;
    }

    int selectChannel(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += isOk(proxy.DtvSvLib_SelectChannel(SESSION, service));
        }
        return ok;
    }

    int setDisplayAll(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += isOk(proxy.DtvSvLib_SetDisplayAll(SESSION, screen, captions, browser));
        }
        return ok;
    }

    int readNvramReply(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += isOk(proxy.DtvSvLib_BMLReadNvramReply(SESSION, block));
        }
        return ok;
    }

    private static int isOk(BG_TE_DTVSVLIB_RESULT result) {
        return result == BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK ? 1 : 0;
    }
}
