package tenrik.desk;

import android.view.Surface;

import java.time.Duration;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_EVENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_BML_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_CAP_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BACKGROUND_COLOR;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_PLAY_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** The rest of the receiver, shown on the station that is received: planes, data, recordings. */
final class Tour {
    private static final int WIDTH = 320;
    private static final int HEIGHT = 180;
    private static final int RECORDED_SECONDS = 2;
    private static final int END_REACHED = 1;
    private static final Duration LIMIT = Duration.ofSeconds(30);

    private final DtvServerProxy service = new DtvServerProxy();
    private final Dialogue dialogue;
    private final Screen screen;
    private final int session;

    private final BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO video =
            new BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO(new Surface(Simulator.newSurface()), WIDTH,
                    HEIGHT, BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0,
                    BG_TE_DTVSVLIB_SCREEN_MODE.NORMAL);
    private final BG_TS_DTVSVLIB_CAP_DRAWING_INFO captions =
            new BG_TS_DTVSVLIB_CAP_DRAWING_INFO(new Surface(Simulator.newSurface()), WIDTH, 60,
                    BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0, new BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(
                            16, 20, 3, 2, 0, 0, BG_TE_DTVSVLIB_BACKGROUND_COLOR.BLACK,
                            BG_TE_DTVSVLIB_ONOFF.ON));
    private final BG_TS_DTVSVLIB_BML_DRAWING_INFO data =
            new BG_TS_DTVSVLIB_BML_DRAWING_INFO(new Surface(Simulator.newSurface()), WIDTH, 240,
                    BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0);

    Tour(Dialogue dialogue, Screen screen, int session) {
        this.dialogue = dialogue;
        this.screen = screen;
        this.session = session;
    }

    /** What needs a station that is received: the planes, the captions, the data, a recording. */
    int receiving() throws DeskException, InterruptedException {
        dialogue.ask("Place picture, captions and data",
                () -> service.DtvSvLib_SetDisplayAll(session, video, captions, data),
                BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY.class,
                BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY::result);
        screen.answered("placed");
        dialogue.ask("Turn the captions on", () -> service.DtvSvLib_ControlCap(session,
                        on(), 0, captions),
                BG_EV_DTVSV_CONTROL_CAP_REPLY.class, BG_EV_DTVSV_CONTROL_CAP_REPLY::result);
        screen.answered("on");
        browse();
        return record();
    }

    /** Plays a recording to its end; nothing is received meanwhile. */
    void playing(int program) throws DeskException, InterruptedException {
        String what = "Play programme " + program;
        dialogue.ask(what, () -> service.DtvSvLib_StartPlay(session,
                        new BG_TS_DTVSVLIB_START_PLAY(BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL,
                                program, BG_TE_DTVSVLIB_ONOFF.OFF, 1, BG_TE_DTVSVLIB_ONOFF.OFF)),
                BG_EV_DTVSV_START_PLAY_REPLY.class, BG_EV_DTVSV_START_PLAY_REPLY::result);
        screen.answered("playing");
        dialogue.await(what, BG_EV_DTVSV_PLAY_EVENT_NOTIFY.class,
                event -> event.play_event() == END_REACHED, LIMIT, event -> {
                    if (event instanceof BG_EV_DTVSV_PLAY_STATUS_NOTIFY status) {
                        screen.told("at " + status.play_status_info().current_time() + " s");
                    }
                });
        screen.answered("the end is reached");
        screen.asked("Stop playing, and wait for the answer");
        BG_TS_DTVSVLIB_TERMINATE_PLAY_REPLY_SYNC_INFO end =
                service.DtvSvLib_TerminatePlay_Sync(session);
        if (end.return_value() != 0) {
            throw new DeskException("Stop playing: the service answered " + end + ".");
        }
        screen.answered("stopped");
    }

    private void browse() throws DeskException, InterruptedException {
        String what = "Turn the data on";
        dialogue.ask(what, () -> service.DtvSvLib_ControlBML(session, on(), data),
                BG_EV_DTVSV_CONTROL_BML_REPLY.class, BG_EV_DTVSV_CONTROL_BML_REPLY::result);
        screen.answered("on");
        Application application = new Application(service, screen);
        for (int request = 0; request < Application.REQUESTS; request++) {
            application.answer(dialogue.await(what, Record.class, Application::isRequest, LIMIT,
                    other -> {}));
        }
        String off = "Turn the data off";
        dialogue.ask(off, () -> service.DtvSvLib_ControlBML(session, off(), data),
                BG_EV_DTVSV_CONTROL_BML_REPLY.class, BG_EV_DTVSV_CONTROL_BML_REPLY::result);
        dialogue.await(off, BG_EV_DTVSV_BML_STATUS_NOTIFY.class,
                status -> status.change_status() == off(), LIMIT, other -> {});
        screen.answered("off");
    }

    private int record() throws DeskException, InterruptedException {
        String what = "Record for " + RECORDED_SECONDS + " seconds";
        dialogue.ask(what, () -> service.DtvSvLib_StartRec(session, 0),
                BG_EV_DTVSV_START_REC_REPLY.class, BG_EV_DTVSV_START_REC_REPLY::result);
        screen.answered("recording");
        dialogue.await(what, BG_EV_DTVSV_REC_INFO_NOTIFY.class, info -> {
            screen.told(info.rec_time() + " s recorded, " + info.rec_cap() + " % left");
            return info.rec_time() >= RECORDED_SECONDS;
        }, LIMIT, other -> {});
        int program = dialogue.ask("Keep the recording", () -> service.DtvSvLib_TerminateRec(
                        session, new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF.ON, 0,
                                "Programa gravado 録画")),
                BG_EV_DTVSV_TERMINATE_REC_REPLY.class, BG_EV_DTVSV_TERMINATE_REC_REPLY::result)
                .terminate_rec().program_no();
        screen.answered("kept as programme " + program);
        return program;
    }

    private static int on() {
        return BG_TE_DTVSVLIB_CONTROL_TYPE.getControlTypeValue(BG_TE_DTVSVLIB_CONTROL_TYPE.ON);
    }

    private static int off() {
        return BG_TE_DTVSVLIB_CONTROL_TYPE.getControlTypeValue(BG_TE_DTVSVLIB_CONTROL_TYPE.OFF);
    }
}
