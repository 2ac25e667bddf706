package tenrik.desk;

import java.util.function.Supplier;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_EVENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_PAUSE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RESTART_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SKIP_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_PLAY_DIRECTION;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SKIP_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SPECIAL_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** A recording of what is received, and its playback. */
final class Recordings {
    /** The signal fades every twenty seconds: the recording has a place that cannot be played. */
    private static final int RECORDED_SECONDS = 24;
    private static final int INTERNAL = 0;
    private static final int CARD = 1;
    private static final int FORWARD = 0;
    private static final int END_REACHED = 1;
    private static final int NO_PROGRAMME = 99;

    private final Stage stage;

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
        stage.dialogue().await(what, BG_EV_DTVSV_REC_INFO_NOTIFY.class, info -> {
            stage.screen().progress((int) info.rec_time(), RECORDED_SECONDS,
                    info.rec_time() + " s, " + info.rec_cap() + " % left");
            return info.rec_time() >= RECORDED_SECONDS;
        }, other -> {});
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

    /** Plays a recording to its end, in all ways there are; nothing is received meanwhile. */
    void play(int program) throws DeskException, InterruptedException {
        stage.screen().title("Playback");
        stage.dialogue().refusedByService("Play programme " + NO_PROGRAMME,
                () -> start(NO_PROGRAMME, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class, Stage.NO_SUCH_THING);
        ask("Play programme " + program, () -> start(program, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class);
        tellStatus();
        speed(2);
        tellStatus();
        ask("Pause", () -> stage.service().DtvSvLib_PausePlay(stage.session()),
                BG_EV_DTVSV_PAUSE_PLAY_REPLY.class);
        ask("Go on by one picture",
                () -> stage.service().DtvSvLib_FrameSlidePlay(stage.session(), FORWARD),
                BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY.class);
        ask("Move on while paused",
                () -> stage.service().DtvSvLib_MovePausePosition(stage.session(), FORWARD),
                BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY.class);
        ask("Play on", () -> stage.service().DtvSvLib_ReStartPlay(stage.session()),
                BG_EV_DTVSV_RESTART_PLAY_REPLY.class);
        ask("Skip 2 seconds", () -> stage.service().DtvSvLib_SkipPlay(stage.session(),
                        new BG_TS_DTVSVLIB_SKIP_PLAY(BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD, 2)),
                BG_EV_DTVSV_SKIP_PLAY_REPLY.class);
        tellStatus();
        speed(10);
        String wait = "Wait for the end";
        stage.screen().asked(wait);
        stage.dialogue().await(wait, BG_EV_DTVSV_PLAY_EVENT_NOTIFY.class,
                event -> event.play_event() == END_REACHED, this::tell);
        stage.screen().answered("the end is reached");
        ask("Stop playing", () -> stage.service().DtvSvLib_TerminatePlay(stage.session()),
                BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class);
        ask("Play it again, paused", () -> start(program, BG_TE_DTVSVLIB_ONOFF.ON),
                BG_EV_DTVSV_START_PLAY_REPLY.class);
        stage.exchange("Stop playing, and wait for the answer", "stopped",
                () -> stage.service().DtvSvLib_TerminatePlay_Sync(stage.session()).return_value());
    }

    private BG_TE_DTVSVLIB_RESULT start(int program, BG_TE_DTVSVLIB_ONOFF pause) {
        return stage.service().DtvSvLib_StartPlay(stage.session(), new BG_TS_DTVSVLIB_START_PLAY(
                BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL, program, BG_TE_DTVSVLIB_ONOFF.OFF, 1,
                pause));
    }

    private void speed(int times) throws DeskException, InterruptedException {
        ask("Play " + times + " times as fast", () ->
                stage.service().DtvSvLib_ChangePlaySpeed(stage.session(),
                        new BG_TS_DTVSVLIB_SPECIAL_PLAY(BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD,
                                times, 1)), BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY.class);
    }

    /** Waits for the next word on how far the playback is. */
    private void tellStatus() throws DeskException, InterruptedException {
        tell(stage.dialogue().await("Play", BG_EV_DTVSV_PLAY_STATUS_NOTIFY.class, any -> true,
                this::tell));
    }

    private void tell(Record event) {
        if (event instanceof BG_EV_DTVSV_PLAY_STATUS_NOTIFY news) {
            stage.screen().told("at " + news.play_status_info().current_time() + " s, status "
                    + news.play_status_info().status());
        } else if (event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY news) {
            stage.screen().told("a damaged place, error " + news.play_error());
        }
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return stage.dialogue().ask(what, command, reply);
    }
}
