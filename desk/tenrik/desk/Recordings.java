package tenrik.desk;

import java.util.function.Supplier;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** A recording of what is received. */
final class Recordings {
    /** The signal fades every twenty seconds: the recording has a place that cannot be played. */
    private static final int RECORDED_SECONDS = 24;
    private static final int INTERNAL = 0;
    private static final int CARD = 1;

    private final Stage stage;
    private boolean fadeSeen;
    private boolean complete;

    Recordings(Stage stage) {
        this.stage = stage;
    }

    /** Records what is received, twice. The number of the programme that is kept. */
    int record() throws DeskException, InterruptedException {
        stage.screen().title("Recording");
        String what = "Record for " + RECORDED_SECONDS + " seconds";
        ask(what, () -> stage.service().DtvSvLib_StartRec(stage.session(), INTERNAL),
                BG_EV_DTVSV_START_REC_REPLY.class);
        stage.dialogue().refusedByService("Select another channel meanwhile",
                () -> stage.service().DtvSvLib_SelectChannel(stage.session(), Stage.channel(13)),
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, Stage.NOT_NOW);
        stage.dialogue().await(what, BG_EV_DTVSV_REC_INFO_NOTIFY.class, this::isEnough,
                event -> fadeSeen |= event instanceof BG_EV_DTVSV_BAD_SENS_NOTIFY);
        int program = ask("Keep it as \"Programa gravado 録画\"",
                () -> stage.service().DtvSvLib_TerminateRec(stage.session(),
                        new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF.ON, 0,
                                "Programa gravado 録画")),
                BG_EV_DTVSV_TERMINATE_REC_REPLY.class).terminate_rec().program_no();
        stage.screen().answered("programme " + program);
        ask("Record on the card", () -> stage.service().DtvSvLib_StartRec(stage.session(), CARD),
                BG_EV_DTVSV_START_REC_REPLY.class);
        stage.exchange("Throw that away, and wait for the answer", "thrown away",
                () -> stage.service().DtvSvLib_TerminateRec_Sync(stage.session(),
                        new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF.OFF, 0, ""))
                        .result());
        return program;
    }

    /**
     * Whether the recording is long enough. A busy machine measures the signal of a fast clock more
     * rarely than once a second of that clock: there the recording ends after a fade was seen.
     */
    private boolean isEnough(BG_EV_DTVSV_REC_INFO_NOTIFY info) {
        if (!complete) {
            stage.screen().progress((int) info.rec_time(), RECORDED_SECONDS,
                    info.rec_time() + " s, " + info.rec_cap() + " % left");
        }
        complete = info.rec_time() >= RECORDED_SECONDS;
        return complete && (fadeSeen || !stage.dialogue().isLive());
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return stage.dialogue().ask(what, command, reply);
    }
}
