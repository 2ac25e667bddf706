package tenrik.desk.evening;

import java.util.function.Supplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ServiceResult;
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
 * The playback of a recording, with all its commands; nothing is received meanwhile. With a fast
 * clock it may reach its end before all commands were sent: then it stays there, paused, and the
 * service refuses commands that need a running playback.
 */
final class Playback {
    private static final int FORWARD = 0;
    private static final int END_REACHED = 1;
    private static final int NO_PROGRAMME = 99;

    private final EveningContext context;
    private final int program;
    private boolean ended;
    private boolean damageSeen;

    /** @param program the number of a recording that is kept */
    Playback(EveningContext context, int program) {
        this.context = context;
        this.program = program;
    }

    /** Plays the recording to its end, and starts it a second time. */
    void run() throws DeskException, InterruptedException {
        context.screen().title("Playback");
        context.commands().expectRefusedByService("Play programme " + NO_PROGRAMME,
                () -> start(NO_PROGRAMME, BG_TE_DTVSVLIB_ONOFF.OFF),
                BG_EV_DTVSV_START_PLAY_REPLY.class, ServiceResult.NO_SUCH_THING);
        begin("Play programme " + program, BG_TE_DTVSVLIB_ONOFF.OFF);
        playToTheEnd();
        ask("Stop playing", () -> context.service().DtvSvLib_TerminatePlay(context.session()),
                BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class);
        if (!damageSeen && context.commands().isLive()) {
            playToTheDamage();
        }
        begin("Play it again, paused", BG_TE_DTVSVLIB_ONOFF.ON);
        context.askSync("Stop playing, and wait for the answer", "stopped",
                () -> context.service().DtvSvLib_TerminatePlay_Sync(context.session())
                        .return_value());
    }

    private void playToTheEnd() throws DeskException, InterruptedException {
        showStatus();
        speed(2);
        showStatus();
        askInTime("Pause", () -> context.service().DtvSvLib_PausePlay(context.session()),
                BG_EV_DTVSV_PAUSE_PLAY_REPLY.class);
        ask("Step forward by one picture",
                () -> context.service().DtvSvLib_FrameSlidePlay(context.session(), FORWARD),
                BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY.class);
        ask("Move forward while paused",
                () -> context.service().DtvSvLib_MovePausePosition(context.session(), FORWARD),
                BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY.class);
        ask("Resume playing", () -> context.service().DtvSvLib_ReStartPlay(context.session()),
                BG_EV_DTVSV_RESTART_PLAY_REPLY.class);
        ask("Skip 2 seconds", () -> context.service().DtvSvLib_SkipPlay(context.session(),
                        new BG_TS_DTVSVLIB_SKIP_PLAY(BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD, 2)),
                BG_EV_DTVSV_SKIP_PLAY_REPLY.class);
        showStatus();
        speed(10);
        String wait = "Wait for the end";
        context.screen().asked(wait);
        if (!ended) {
            context.commands().await(wait, BG_EV_DTVSV_PLAY_EVENT_NOTIFY.class, Playback::isEnd,
                    this::show);
        }
        context.screen().answered("the end is reached");
    }

    /** A command may have moved the playback past the damaged place: plays without commands. */
    private void playToTheDamage() throws DeskException, InterruptedException {
        String what = "Play it again, to the damaged place";
        begin(what, BG_TE_DTVSVLIB_ONOFF.OFF);
        if (!damageSeen) {
            show(CheckedCommands.need(context.commands().await(what,
                    BG_EV_DTVSV_PLAY_ERROR_NOTIFY.class, any -> true, this::show)));
        }
        ask("Stop playing", () -> context.service().DtvSvLib_TerminatePlay(context.session()),
                BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class);
    }

    private void begin(String what, BG_TE_DTVSVLIB_ONOFF pause)
            throws DeskException, InterruptedException {
        CheckedCommands.need(context.commands().ask(what, () -> start(program, pause),
                BG_EV_DTVSV_START_PLAY_REPLY.class, this::note));
    }

    private BG_TE_DTVSVLIB_RESULT start(int number, BG_TE_DTVSVLIB_ONOFF pause) {
        return context.service().DtvSvLib_StartPlay(context.session(),
                new BG_TS_DTVSVLIB_START_PLAY(BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL, number,
                        BG_TE_DTVSVLIB_ONOFF.OFF, 1, pause));
    }

    private void speed(int times) throws DeskException, InterruptedException {
        askInTime("Play " + times + " times as fast", () ->
                context.service().DtvSvLib_ChangePlaySpeed(context.session(),
                        new BG_TS_DTVSVLIB_SPECIAL_PLAY(BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD,
                                times, 1)), BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY.class);
    }

    /** Waits for the next status of the playback and shows it. */
    private void showStatus() throws DeskException, InterruptedException {
        show(CheckedCommands.need(context.commands().await("Play",
                BG_EV_DTVSV_PLAY_STATUS_NOTIFY.class, any -> true, this::show)));
    }

    private void show(Record event) {
        note(event);
        if (event instanceof BG_EV_DTVSV_PLAY_STATUS_NOTIFY notice) {
            context.screen().reported("at " + notice.play_status_info().current_time()
                    + " s, status " + notice.play_status_info().status());
        } else if (event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY notice) {
            context.screen().reported("a damaged place, error " + notice.play_error());
        }
    }

    private void note(Record event) {
        ended |= event instanceof BG_EV_DTVSV_PLAY_EVENT_NOTIFY notice && isEnd(notice);
        damageSeen |= event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
    }

    private static boolean isEnd(BG_EV_DTVSV_PLAY_EVENT_NOTIFY notice) {
        return notice.play_event() == END_REACHED;
    }

    private void ask(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command,
            Class<? extends Record> reply) throws DeskException, InterruptedException {
        context.commands().ask(what, command, reply, this::note);
    }

    private void askInTime(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command,
            Class<? extends Record> reply) throws DeskException, InterruptedException {
        if (!context.commands().askInTime(what, command, reply, this::note, () -> ended)) {
            context.screen().answered("too late, the end is reached");
        }
    }
}
