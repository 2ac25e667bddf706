package tenrik.desk;

import java.util.List;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;

/** An evening with the receiver, from the first session to the release of the last. */
final class Evening {
    private static final int SESSION_START = 0;
    private static final int MAX_DELAY = 100; // milliseconds

    private final DtvServerProxy service;
    private final Dialogue dialogue;
    private final Screen screen;

    Evening(DtvServerProxy service, Dialogue dialogue, Screen screen) {
        this.service = service;
        this.dialogue = dialogue;
        this.screen = screen;
    }

    /**
     * Plays it.
     *
     * @return whether there was a station to watch; without one most of it cannot be shown
     * @throws DeskException when something is not answered as it should be
     */
    boolean play() throws DeskException, InterruptedException {
        screen.title("Switching on");
        int session = create("Create a session");
        Stage stage = new Stage(service, dialogue, screen, session, Planes.create());
        List<Tuning.Station> stations = new Tuning(stage).run();
        if (stations.isEmpty()) {
            screen.told("Nothing is on the air there, so there is nothing to watch.");
        } else {
            watch(stage, stations);
        }
        screen.title("Switching off");
        stage.exchange("Release the session, and wait for the answer", "released",
                () -> service.DtvSvLib_Release_Sync(session).return_value());
        dialogue.refusedByService("Ask the released session for its log",
                () -> service.DtvSvLib_GetTunerLogStatus(session),
                BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class, Stage.UNKNOWN_HANDLE);
        return !stations.isEmpty();
    }

    private void watch(Stage stage, List<Tuning.Station> stations)
            throws DeskException, InterruptedException {
        Watching watching = new Watching(stage, stations);
        watching.run();
        new Presentation(stage).run();
        new DataBroadcast(stage).run();
        int program = new Recordings(stage).record();
        watching.stop();
        new Playback(stage, program).run();
        twoSessions(stage, stations);
    }

    /** Another session beside the first: each receives a station of its own. */
    private void twoSessions(Stage stage, List<Tuning.Station> stations)
            throws DeskException, InterruptedException {
        screen.title("Two sessions at once");
        int first = stage.session();
        int second = create("Create a second session");
        Tuning.Station one = stations.get(0);
        Tuning.Station other = stations.get(stations.size() - 1);
        String here = "Select " + one.label();
        String there = "In the second session, select " + other.label();
        dialogue.send(here, () -> service.DtvSvLib_SelectChannel(first,
                Stage.channel(one.channel())));
        dialogue.send(there, () -> service.DtvSvLib_SelectChannel(second,
                Stage.channel(other.channel())));
        received(here, first);
        received(there, second);
        dialogue.ask("Release the second session", () -> service.DtvSvLib_Release(second),
                BG_EV_DTVSV_RELEASE_REPLY.class);
        screen.answered("released");
    }

    private void received(String what, int session) throws DeskException, InterruptedException {
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY reply = dialogue.reply(what,
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, answer -> answer.handle() == session);
        screen.answered("session " + session + " receives channel " + reply.physical_channel());
    }

    private int create(String what) throws DeskException, InterruptedException {
        int session = dialogue.ask(what,
                () -> service.DtvSvLib_Create(SESSION_START, MAX_DELAY),
                BG_EV_DTVSV_CREATE_REPLY.class).handle();
        screen.answered("session " + session);
        return session;
    }
}
