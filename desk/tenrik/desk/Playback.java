package tenrik.desk;

import java.util.function.Supplier;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_EVENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_PAUSE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RESTART_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SKIP_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_PLAY_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_PLAY_DIRECTION;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SKIP_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SPECIAL_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_PLAY;

/**
 * The playback of a recording, in all ways there are; nothing is received meanwhile. With a fast
 * clock it may reach its end before the program has asked for all of them: then it stays there,
 * paused, and the service refuses what needs a playback that runs.
 */
final class Playback {
    private static final int FORWARD = 0;
    private static final int END_REACHED = 1;
    private static final int NO_PROGRAMME = 99;

    private final Stage stage;
    private final int program;
    private boolean ended;
    private boolean damageSeen;

    /** @param program the number of a recording that is kept */
    Playback(Stage stage, int program) {
        this.stage = stage;
        this.program = program;
    }

    /** Plays the recording to its end, and opens it again. */
    void run() throws DeskException, InterruptedException {
        stage.screen().title("Playback");
        stage.dialogue().refusedByService("Play programme " + NO_PROGRAMME,
                () -> start(NO_PROGRAMME, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class, Stage.NO_SUCH_THING);
        ask("Play programme " + program, () -> start(program, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class);
        toTheEnd();
        ask("Stop playing", () -> stage.service().DtvSvLib_TerminatePlay(stage.session()),
                BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class);
        if (!damageSeen && stage.dialogue().isLive()) {
            toTheDamage();
        }
        ask("Play it again, paused", () -> start(program, BG_TE_DTVSVLIB_ONOFF.ON),
                BG_EV_DTVSV_START_PLAY_REPLY.class);
        stage.exchange("Stop playing, and wait for the answer", "stopped",
                () -> stage.service().DtvSvLib_TerminatePlay_Sync(stage.session()).return_value());
    }

    private void toTheEnd() throws DeskException, InterruptedException {
        tellStatus();
        speed(2);
        tellStatus();
        askInTime("Pause", () -> stage.service().DtvSvLib_PausePlay(stage.session()),
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
        if (!ended) {
            stage.dialogue().await(wait, BG_EV_DTVSV_PLAY_EVENT_NOTIFY.class, Playback::isEnd,
                    this::tell);
        }
        stage.screen().answered("the end is reached");
    }

    /** A command may have moved the playback past the damaged place; so once more, without one. */
    private void toTheDamage() throws DeskException, InterruptedException {
        String what = "Play it again, to the damaged place";
        ask(what, () -> start(program, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class);
        if (!damageSeen) {
            tell(stage.dialogue().await(what, BG_EV_DTVSV_PLAY_ERROR_NOTIFY.class, any -> true,
                    this::tell));
        }
        ask("Stop playing", () -> stage.service().DtvSvLib_TerminatePlay(stage.session()),
                BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class);
    }

    private BG_TE_DTVSVLIB_RESULT start(int number, BG_TE_DTVSVLIB_ONOFF pause) {
        return stage.service().DtvSvLib_StartPlay(stage.session(), new BG_TS_DTVSVLIB_START_PLAY(
                BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL, number, BG_TE_DTVSVLIB_ONOFF.OFF, 1,
                pause));
    }

    private void speed(int times) throws DeskException, InterruptedException {
        askInTime("Play " + times + " times as fast", () ->
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
        note(event);
        if (event instanceof BG_EV_DTVSV_PLAY_STATUS_NOTIFY news) {
            stage.screen().told("at " + news.play_status_info().current_time() + " s, status "
                    + news.play_status_info().status());
        } else if (event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY news) {
            stage.screen().told("a damaged place, error " + news.play_error());
        }
    }

    private void note(Record event) {
        ended |= event instanceof BG_EV_DTVSV_PLAY_EVENT_NOTIFY news && isEnd(news);
        damageSeen |= event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
    }

    private static boolean isEnd(BG_EV_DTVSV_PLAY_EVENT_NOTIFY news) {
        return news.play_event() == END_REACHED;
    }

    private void ask(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command,
            Class<? extends Record> reply) throws DeskException, InterruptedException {
        stage.dialogue().ask(what, command, reply, this::note);
    }

    private void askInTime(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command,
            Class<? extends Record> reply) throws DeskException, InterruptedException {
        if (!stage.dialogue().askInTime(what, command, reply, this::note, () -> ended)) {
            stage.screen().answered("too late, the end is reached");
        }
    }
}
