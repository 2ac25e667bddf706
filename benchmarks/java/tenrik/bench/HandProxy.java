package tenrik.bench;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

/** The commands that a hand-written bridge serves. Defined once for each variant of it. */
final class HandProxy extends DtvServerProxy {
    @Override
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlDecodeAudio(int handle, int onoff);

    @Override
    public native BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO DtvSvLib_ControlDecodeAudio_Sync(
            int handle, int onoff);

    @Override
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SelectChannel(
            int handle, BG_TS_DTVSVLIB_BROADCAST_INFO broadcast_info);

    @Override
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_SetDisplayAll(
            int handle, BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO screen,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap, BG_TS_DTVSVLIB_BML_DRAWING_INFO bml);

    @Override
    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLReadNvramReply(
            int handle, BG_TS_DTVSVLIB_READ_NVRAM_REPLY reply);
}
