package tenrik.desk.evening;

import java.util.function.Supplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ServiceResult;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** A recording of what is received. */
final class Recorder {
    /** The signal fades every twenty seconds: the recording has a damaged place. */
    private static final int RECORDED_SECONDS = 24;
    private static final int INTERNAL = 0;
    private static final int CARD = 1;

    private final EveningContext context;
    private boolean fadeSeen;
    private boolean complete;
    private int program;

    Recorder(EveningContext context) {
        this.context = context;
    }

    /** The number of the recording that is kept; 0 when there is none. */
    int program() {
        return program;
    }

    /** Makes a recording that is kept. */
    void keep() throws DeskException, InterruptedException {
        context.screen().title("Recording");
        String what = "Record for " + RECORDED_SECONDS + " seconds";
        CheckedCommands.need(ask(what,
                () -> context.service().DtvSvLib_StartRec(context.session(), INTERNAL),
                BG_EV_DTVSV_START_REC_REPLY.class));
        context.commands().expectRefusedByService("Select another channel meanwhile",
                () -> context.service().DtvSvLib_SelectChannel(context.session(),
                        Station.firstServiceOf(13)),
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, ServiceResult.NOT_NOW);
        context.commands().await(what, BG_EV_DTVSV_REC_INFO_NOTIFY.class, this::isEnough,
                event -> fadeSeen |= event instanceof BG_EV_DTVSV_BAD_SENS_NOTIFY);
        BG_EV_DTVSV_TERMINATE_REC_REPLY kept = ask("Keep it as \"Programa gravado 録画\"",
                () -> context.service().DtvSvLib_TerminateRec(context.session(),
                        new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF.ON, 0,
                                "Programa gravado 録画")),
                BG_EV_DTVSV_TERMINATE_REC_REPLY.class);
        if (kept != null) {
            program = kept.terminate_rec().program_no();
            context.screen().answered("programme " + program);
        }
    }

    /** Makes one that is not kept. */
    void discard() throws DeskException, InterruptedException {
        CheckedCommands.need(ask("Record on the card",
                () -> context.service().DtvSvLib_StartRec(context.session(), CARD),
                BG_EV_DTVSV_START_REC_REPLY.class));
        context.askSync("Discard it, and wait for the answer", "discarded",
                () -> context.service().DtvSvLib_TerminateRec_Sync(context.session(),
                        new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF.OFF, 0, ""))
                        .result());
    }

    /**
     * Whether the recording is long enough. A busy machine measures the signal of a fast clock more
     * rarely than once a second of that clock: then the recording ends after a fade was seen.
     */
    private boolean isEnough(BG_EV_DTVSV_REC_INFO_NOTIFY info) {
        if (!complete) {
            context.screen().progress((int) info.rec_time(), RECORDED_SECONDS,
                    info.rec_time() + " s, " + info.rec_cap() + " % left");
        }
        complete = info.rec_time() >= RECORDED_SECONDS;
        return complete && (fadeSeen || !context.commands().isLive());
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return context.commands().ask(what, command, reply);
    }
}
