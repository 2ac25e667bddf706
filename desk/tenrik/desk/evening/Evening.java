package tenrik.desk.evening;

import java.util.List;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Planes;
import tenrik.desk.core.Screen;
import tenrik.desk.core.ServiceResult;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;

/**
 * The evening, from the creation of the first session to the release of the last, in parts. When it is
 * continued after a difference, the next part gets a new session in the state that it needs.
 */
final class Evening {
    private static final int SESSION_START = 0;
    private static final int MAX_DELAY = 100; // milliseconds

    private final DtvServerProxy service;
    private final CheckedCommands commands;
    private final Screen screen;
    private EveningContext context;
    private List<Station> stations = List.of();
    /** The state of the session is not known. */
    private boolean lost;

    /** What a part needs, and whether it is there. */
    private enum Needs {
        NOTHING, SESSION, STATION
    }

    Evening(DtvServerProxy service, CheckedCommands commands, Screen screen) {
        this.service = service;
        this.commands = commands;
        this.screen = screen;
    }

    /**
     * Plays the evening.
     *
     * @return whether a station was found; without one most parts are left out
     * @throws DeskException when a command is not answered as expected, and the evening is not
     *     continued
     */
    boolean play() throws DeskException, InterruptedException {
        part("Switching on", Needs.NOTHING, () -> {
            screen.title("Switching on");
            int session = create("Create a session");
            context = new EveningContext(service, commands, screen, Planes.create());
            context.setSession(session);
        });
        part("Tuning", Needs.SESSION, () -> stations = new Tuning(context).run());
        if (stations.isEmpty() && lost) {
            part("Tuning again", Needs.SESSION, () -> stations = new Tuning(context).scan());
        }
        if (!stations.isEmpty()) {
            watch();
        } else if (lost) {
            commands.differences().leaveOut("Watching", "it needs a station, and none was found");
        } else {
            screen.reported("Nothing is on the air there, so there is nothing to watch.");
        }
        part("Switching off", Needs.SESSION, this::switchOff);
        commands.checkEvents();
        return !stations.isEmpty();
    }

    /**
     * Plays a part. When the evening is continued after differences, what it needs is made first,
     * and the rest of a part that cannot be continued is left out.
     */
    private void part(String name, Needs needs, CheckedCommands.Step play)
            throws DeskException, InterruptedException {
        Differences differences = commands.differences();
        if (differences == null) {
            play.run();
            return;
        }
        differences.begin(name);
        if (needs != Needs.NOTHING && lost && !prepare(needs)) {
            differences.leaveOut(name, needs == Needs.STATION ? "no station could be received for it"
                    : "no session could be opened for it");
            return;
        }
        int before = differences.inPart();
        try {
            play.run();
        } catch (Differences.PartLost rest) {
            differences.leaveOut("The rest of " + name, "it cannot be continued without that answer");
        }
        lost = differences.inPart() > before;
    }

    /** Opens a session in place of that whose state is not known. Whether that was possible. */
    private boolean prepare(Needs needs) throws DeskException, InterruptedException {
        screen.title("A new session, after what differed");
        try {
            if (context == null) {
                context = new EveningContext(service, commands, screen, Planes.create());
            } else {
                context.askSync("Release the session, and wait for the answer", "released",
                        () -> service.DtvSvLib_Release_Sync(context.session()).return_value());
            }
            context.setSession(create("Create a session"));
            CheckedCommands.need(commands.ask("Begin with picture and sound, on three surfaces",
                    () -> service.DtvSvLib_SetFirstComponent(context.session(),
                            context.planes().firstComponents()),
                    BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class));
            if (needs == Needs.STATION) {
                Station station = stations.get(0);
                CheckedCommands.need(commands.ask("Receive " + station.label(),
                        () -> service.DtvSvLib_StartBroadcastReceiving(context.session(),
                                Station.firstServiceOf(station.channel())),
                        BG_EV_DTVSV_START_BROADCAST_REPLY.class));
            }
            return true;
        } catch (Differences.PartLost notPossible) {
            return false;
        }
    }

    private void watch() throws DeskException, InterruptedException {
        part("Watching", Needs.SESSION, () -> new Reception(context, stations).run());
        part("Planes", Needs.STATION, () -> new Presentation(context).planes());
        part("Captions", Needs.STATION, () -> new Presentation(context).captions());
        part("Sound", Needs.STATION, () -> new Presentation(context).sound());
        part("Signal", Needs.STATION, () -> new Presentation(context).signal());
        part("Data broadcasting", Needs.STATION, () -> new DataBroadcast(context).pages());
        part("Links into the data", Needs.STATION, () -> new DataBroadcast(context).links());
        Recorder recorder = new Recorder(context);
        part("Recording", Needs.STATION, recorder::keep);
        part("Recording on the card", Needs.STATION, recorder::discard);
        part("The end of reception", Needs.STATION, () -> new Reception(context, stations).stop());
        if (recorder.program() != 0 || commands.differences() == null) {
            part("Playback", Needs.SESSION,
                    () -> new Playback(context, recorder.program()).run());
        } else {
            commands.differences().leaveOut("Playback", "it needs a recording, and none was kept");
        }
        part("Two sessions at once", Needs.SESSION, this::twoSessions);
    }

    /** Opens a second session: each receives a station of its own. */
    private void twoSessions() throws DeskException, InterruptedException {
        screen.title("Two sessions at once");
        int first = context.session();
        int second = create("Create a second session");
        commands.furtherSessionOpened(second);
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
        commands.askAbout(second, "Release the second session",
                () -> service.DtvSvLib_Release(second), BG_EV_DTVSV_RELEASE_REPLY.class);
        screen.answered("released");
    }

    private void checkReceived(String what, int session)
            throws DeskException, InterruptedException {
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY reply = commands.reply(what,
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, answer -> answer.handle() == session);
        if (reply != null) {
            screen.answered(
                    "session " + session + " receives channel " + reply.physical_channel());
        }
    }

    private void switchOff() throws DeskException, InterruptedException {
        screen.title("Switching off");
        context.askSync("Release the session, and wait for the answer", "released",
                () -> service.DtvSvLib_Release_Sync(context.session()).return_value());
        commands.expectRefusedByService("Ask the released session for its log",
                () -> service.DtvSvLib_GetTunerLogStatus(context.session()),
                BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class, ServiceResult.UNKNOWN_HANDLE);
    }

    private int create(String what) throws DeskException, InterruptedException {
        int session = CheckedCommands.need(commands.ask(what,
                () -> service.DtvSvLib_Create(SESSION_START, MAX_DELAY),
                BG_EV_DTVSV_CREATE_REPLY.class)).handle();
        screen.answered("session " + session);
        return session;
    }
}
