package tenrik.desk.shell;

import java.util.ArrayList;
import java.util.List;
import java.util.Optional;
import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/** Commands about the sessions themselves. */
final class SessionCommands {
    private static final int SESSION_START = 0;

    private SessionCommands() {}

    @Command(name = "create", description = "Opens a session and makes it the current one.")
    static final class Create implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private WaitOption waiting;

        @Parameters(arity = "0..1", paramLabel = "MAX_DELAY", defaultValue = "100",
                description = "The longest delay of picture and sound in milliseconds, at most 999;"
                        + " ${DEFAULT-VALUE} when left out.")
        private int delay;

        Create(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            Optional<BG_EV_DTVSV_CREATE_REPLY> reply = remote.ask(waiting, null,
                    () -> remote.service().DtvSvLib_Create(SESSION_START, delay),
                    BG_EV_DTVSV_CREATE_REPLY.class, any -> true);
            reply.ifPresent(created -> remote.output().screen().answered(
                    "session " + created.handle()));
            return 0;
        }
    }

    @Command(name = "sessions", description = "Shows the open sessions.")
    static final class Show implements Runnable {
        private final RemoteControl remote;

        Show(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public void run() {
            List<String> lines = new ArrayList<>();
            for (SessionState session : remote.sessions().all()) {
                BG_TS_DTVSVLIB_BROADCAST_INFO station = session.station();
                lines.add((session == remote.sessions().current() ? "* " : "  ")
                        + session.handle() + "  " + (session.isReceiving()
                        ? "receives " + remote.sessions().label(station.physical_channel())
                        : session.isScanning() ? "scans" : "receives nothing"));
            }
            lines.forEach(remote.output().screen()::reported);
            if (lines.isEmpty()) {
                remote.output().screen().reported("no session is open");
            }
        }
    }

    @Command(name = "session", description = "Makes another session the current one.")
    static final class Use implements Callable<Integer> {
        private final RemoteControl remote;

        @Parameters(paramLabel = ParameterLabels.SESSION, description = "Its handle.")
        private int handle;

        Use(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException {
            if (!remote.sessions().use(handle)) {
                throw new DeskException("session " + handle + " is not open");
            }
            return 0;
        }
    }

    @Command(name = "release", description = "Closes the current session.")
    static final class Release implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private SyncOption waiting;

        Release(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            remote.ask(waiting, "released",
                    session -> remote.service().DtvSvLib_Release(session.handle()),
                    BG_EV_DTVSV_RELEASE_REPLY.class,
                    session -> remote.service().DtvSvLib_Release_Sync(session.handle()));
            return 0;
        }
    }
}
