package tenrik.desk.evening;

import java.util.List;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Planes;
import tenrik.desk.core.Screen;
import tenrik.desk.core.ServiceResult;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;

/** The evening, from the creation of the first session to the release of the last. */
final class Evening {
    private static final int SESSION_START = 0;
    private static final int MAX_DELAY = 100; // milliseconds

    private final DtvServerProxy service;
    private final CheckedCommands commands;
    private final Screen screen;

    Evening(DtvServerProxy service, CheckedCommands commands, Screen screen) {
        this.service = service;
        this.commands = commands;
        this.screen = screen;
    }

    /**
     * Plays the evening.
     *
     * @return whether a station was found; without one most parts are left out
     * @throws DeskException when a command is not answered as expected
     */
    boolean play() throws DeskException, InterruptedException {
        screen.title("Switching on");
        int session = create("Create a session");
        EveningContext context = new EveningContext(service, commands, screen, session,
                Planes.create());
        List<Station> stations = new Tuning(context).run();
        if (stations.isEmpty()) {
            screen.reported("Nothing is on the air there, so there is nothing to watch.");
        } else {
            watch(context, stations);
        }
        screen.title("Switching off");
        context.askSync("Release the session, and wait for the answer", "released",
                () -> service.DtvSvLib_Release_Sync(session).return_value());
        commands.expectRefusedByService("Ask the released session for its log",
                () -> service.DtvSvLib_GetTunerLogStatus(session),
                BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class, ServiceResult.UNKNOWN_HANDLE);
        return !stations.isEmpty();
    }

    private void watch(EveningContext context, List<Station> stations)
            throws DeskException, InterruptedException {
        Reception reception = new Reception(context, stations);
        reception.run();
        new Presentation(context).run();
        new DataBroadcast(context).run();
        int program = new Recorder(context).record();
        reception.stop();
        new Playback(context, program).run();
        twoSessions(context, stations);
    }

    /** Opens a second session: each receives a station of its own. */
    private void twoSessions(EveningContext context, List<Station> stations)
            throws DeskException, InterruptedException {
        screen.title("Two sessions at once");
        int first = context.session();
        int second = create("Create a second session");
        Station one = stations.get(0);
        Station other = stations.get(stations.size() - 1);
        String here = "Select " + one.label();
        String there = "In the second session, select " + other.label();
        commands.send(here, () -> service.DtvSvLib_SelectChannel(first,
                Station.firstServiceOf(one.channel())));
        commands.send(there, () -> service.DtvSvLib_SelectChannel(second,
                Station.firstServiceOf(other.channel())));
        checkReceived(here, first);
        checkReceived(there, second);
        commands.ask("Release the second session", () -> service.DtvSvLib_Release(second),
                BG_EV_DTVSV_RELEASE_REPLY.class);
        screen.answered("released");
    }

    private void checkReceived(String what, int session)
            throws DeskException, InterruptedException {
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY reply = commands.reply(what,
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, answer -> answer.handle() == session);
        screen.answered("session " + session + " receives channel " + reply.physical_channel());
    }

    private int create(String what) throws DeskException, InterruptedException {
        int session = commands.ask(what,
                () -> service.DtvSvLib_Create(SESSION_START, MAX_DELAY),
                BG_EV_DTVSV_CREATE_REPLY.class).handle();
        screen.answered("session " + session);
        return session;
    }
}
