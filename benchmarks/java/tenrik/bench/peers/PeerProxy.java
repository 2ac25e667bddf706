package tenrik.bench.peers;

import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BACKGROUND_COLOR;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BML_END_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

/**
 * The commands with everything but the send in Java: the arguments are checked and the record is
 * packed here. Defined once for each peer, as {@link tenrik.bench.CommandLoop} is.
 */
final class PeerProxy extends DtvServerProxy {
    private static final int SELECT_CHANNEL = 0x10000006;
    private static final int SET_DISPLAY_ALL = 0x1000000b;
    private static final int CONTROL_DECODE_AUDIO = 0x10000016;
    private static final int READ_NVRAM_REPLY = 0x10000023;
    private static final int CONTROL_DECODE_AUDIO_SYNC = 0x1000003c;

    private static final int NAME_SIZE = 44;
    private static final int BLOCK_SIZE = 64;
    private static final byte[] ZEROS = new byte[NAME_SIZE + BLOCK_SIZE + 1];

    private final Peer peer;
    private final ByteBuffer record;
    private final ByteBuffer reply;

    PeerProxy(Peer peer) {
        this.peer = peer;
        record = peer.record();
        reply = peer.reply();
    }

    @Override
    public BG_TE_DTVSVLIB_RESULT DtvSvLib_ControlDecodeAudio(int handle, int onoff) {
        if (onoff > 1) {
            return BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;
        }
        record.putShort(0, (short) handle).put(2, (byte) onoff).put(3, (byte) 0);
        return result(peer.send(CONTROL_DECODE_AUDIO, 4));
    }

    @Override
    public BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO DtvSvLib_ControlDecodeAudio_Sync(
            int handle, int onoff) {
        if (onoff > 1) {
            return new BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO(5, handle);
        }
        record.putShort(0, (short) handle).put(2, (byte) onoff).put(3, (byte) 0);
        if (peer.exchange(CONTROL_DECODE_AUDIO_SYNC, 4) != 0) {
            return new BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO(1, handle);
        }
        return new BG_TS_DTVSVLIB_CONTROL_DECODE_AUDIO_SYNC_INFO(
                reply.getInt(4), reply.getShort(0) & 0xffff);
    }

    @Override
    public BG_TE_DTVSVLIB_RESULT DtvSvLib_SelectChannel(
            int handle, BG_TS_DTVSVLIB_BROADCAST_INFO info) {
        if (info == null || info.physical_channel() > 62 || info.service_no() > 2) {
            return BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;
        }
        record.putInt(0, handle & 0xffff)
                .putInt(4, info.physical_channel())
                .putInt(8, info.service_no() & 0xffff);
        return result(peer.send(SELECT_CHANNEL, 12));
    }

    @Override
    public BG_TE_DTVSVLIB_RESULT DtvSvLib_SetDisplayAll(
            int handle, BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO screen,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap, BG_TS_DTVSVLIB_BML_DRAWING_INFO bml) {
        int rotate = BG_TE_DTVSVLIB_SCREEN_ROTATE.getScreenRotateValue(screen.screen_rotate());
        int mode = BG_TE_DTVSVLIB_SCREEN_MODE.getScreenModeValue(screen.screen_mode());
        BG_TS_DTVSVLIB_CAP_DISPLAY_INFO layout = cap.cap_info();
        int capRotate = BG_TE_DTVSVLIB_SCREEN_ROTATE.getScreenRotateValue(cap.screen_rotate());
        int color =
                BG_TE_DTVSVLIB_BACKGROUND_COLOR.getBackgroundColorValue(layout.background_color());
        int alpha = BG_TE_DTVSVLIB_ONOFF.getOnOffValue(layout.background_alpha());
        int bmlRotate = BG_TE_DTVSVLIB_SCREEN_ROTATE.getScreenRotateValue(bml.screen_rotate());
        if (rotate > 3 || mode > 3 || capRotate > 3 || color > 8 || alpha > 1 || bmlRotate > 3
                || layout.position_x() < 0 || layout.position_y() < 0) {
            return BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;
        }
        record.putShort(0, (short) handle)
                .putShort(2, (short) screen.surface_width())
                .putShort(4, (short) screen.surface_height())
                .put(6, (byte) rotate)
                .put(7, (byte) mode)
                .putShort(8, (short) cap.surface_width())
                .putShort(10, (short) cap.surface_height())
                .put(12, (byte) capRotate)
                .put(13, (byte) 0)
                .put(14, (byte) layout.font_size())
                .put(15, (byte) layout.characters_num())
                .put(16, (byte) layout.lines_num())
                .put(17, (byte) layout.separator_size())
                .putShort(18, (short) layout.position_x())
                .putShort(20, (short) layout.position_y())
                .put(22, (byte) color)
                .put(23, (byte) alpha)
                .putShort(24, (short) bml.surface_width())
                .putShort(26, (short) bml.surface_height())
                .put(28, (byte) bmlRotate)
                .put(29, (byte) 0);
        return result(
                peer.sendWithSurfaces(
                        SET_DISPLAY_ALL, 30, screen.surface_handle().nativeSurface(),
                        cap.surface_handle().nativeSurface(),
                        bml.surface_handle().nativeSurface()));
    }

    @Override
    public BG_TE_DTVSVLIB_RESULT DtvSvLib_BMLReadNvramReply(
            int handle, BG_TS_DTVSVLIB_READ_NVRAM_REPLY reply) {
        byte[] name = reply.ts_name().getBytes(StandardCharsets.UTF_8);
        byte[] block = reply.nvram_data();
        if (block.length > BLOCK_SIZE) {
            return BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;
        }
        int endType = BG_TE_DTVSVLIB_BML_END_TYPE.getBmlEndValue(reply.bml_end_type());
        record.putShort(0, (short) handle)
                .put(2, (byte) endType)
                .put(3, ZEROS)
                .put(3, name, 0, Math.min(name.length, NAME_SIZE))
                .put(3 + NAME_SIZE, block);
        return result(peer.send(READ_NVRAM_REPLY, 3 + NAME_SIZE + BLOCK_SIZE + 1));
    }

    private static BG_TE_DTVSVLIB_RESULT result(int sent) {
        return sent == 0
                ? BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK
                : BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG;
    }
}
