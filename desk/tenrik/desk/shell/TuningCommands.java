package tenrik.desk.shell;

import java.util.List;
import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/** Commands that look for stations. */
final class TuningCommands {
    private static final int FIRST_CHANNEL = 13;

    private TuningCommands() {}

    @Command(name = "scan", description = "Looks for stations on all channels.")
    static final class Scan implements Callable<Integer> {
        private final RemoteControl remote;
        private int looked;
        private int channels;

        @Mixin
        private SyncOption waiting;

        @Option(names = "--cancel", description = "Ends a scan that is under way.")
        private boolean cancel;

        Scan(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            if (cancel) {
                remote.ask(waiting, "cancelled",
                        session -> remote.service().DtvSvLib_CancelScan(session.handle()),
                        BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class,
                        session -> remote.service().DtvSvLib_CancelScan_Sync(session.handle()));
            } else if (waiting.sync) {
                throw new DeskException("--sync is for scan --cancel");
            } else if (waiting.waiting.noWait) {
                remote.ask(waiting.waiting, null,
                        session -> remote.service().DtvSvLib_StartScan(session.handle()),
                        BG_EV_DTVSV_START_SCAN_REPLY.class);
            } else {
                scan(remote.session().handle());
            }
            return 0;
        }

        private void scan(int handle) throws DeskException, InterruptedException {
            try (RemoteControl.Subscription events = remote.subscribe(
                    event -> Events.handle(event) == handle
                    && (event instanceof BG_EV_DTVSV_START_SCAN_REPLY
                    || event instanceof BG_EV_DTVSV_SCAN_NOTIFY
                    || event instanceof BG_EV_DTVSV_SERVICE_INFO_NOTIFY
                    || event instanceof BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY))) {
                looked = 0;
                remote.send(() -> remote.service().DtvSvLib_StartScan(handle));
                while (!process(events.next())) {
                    // The progress is shown.
                }
            } finally {
                remote.output().leaveProgress();
            }
            List<Station> stations = remote.sessions().stations();
            remote.output().screen().answered(stations.size() + " stations found");
            show(remote, stations);
        }

        /** Shows what an event of the scan reports. True at the scan's end. */
        private boolean process(Record event) throws DeskException {
            if (event instanceof BG_EV_DTVSV_START_SCAN_REPLY reply) {
                RemoteControl.checkAnswer(reply.result());
                channels = reply.channnel_num();
            } else if (event instanceof BG_EV_DTVSV_SCAN_NOTIFY notice && looked < channels) {
                remote.output().screen().progress(++looked, channels,
                        notice.result_channnel_num() + " found");
            } else if (event instanceof BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY end) {
                RemoteControl.checkAnswer(end.result());
                return true;
            }
            return false;
        }
    }

    private static void show(RemoteControl remote, List<Station> stations) {
        if (!stations.isEmpty()) {
            remote.output().screen().table(stations.stream().map(Station::label).toList());
        }
    }

    @Command(name = "channels", description = "Shows what the last scan has found.")
    static final class Channels implements Runnable {
        private final RemoteControl remote;

        Channels(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public void run() {
            List<Station> stations = remote.sessions().stations();
            show(remote, stations);
            if (stations.isEmpty()) {
                remote.output().screen().reported("no station is known; \"scan\" looks for them");
            }
        }
    }

    /** The directions of a search, in the order of their numbers. */
    enum Way {
        UP,
        DOWN
    }

    @Command(name = "search",
            description = "Looks for the next station, from the one received last.")
    static final class Search implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private WaitOption waiting;

        @Option(names = "--cancel", description = "Ends a search that is under way.")
        private boolean cancel;

        @Parameters(arity = "0..1", paramLabel = "up|down", defaultValue = "UP",
                description = "The direction; up when left out.")
        private Way way;

        Search(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            SessionState session = remote.session();
            BG_TS_DTVSVLIB_BROADCAST_INFO from = session.station() != null ? session.station()
                    : Station.firstServiceOf(FIRST_CHANNEL);
            if (cancel) {
                remote.ask(waiting, "cancelled",
                        any -> remote.service().DtvSvLib_CancelSearchChannel(session.handle()),
                        BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class);
            } else if (waiting.noWait) {
                remote.ask(waiting, null, any -> remote.service().DtvSvLib_StartSearchChannel(
                                session.handle(), from, way.ordinal()),
                        BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY.class);
            } else {
                search(session.handle(), from);
            }
            return 0;
        }

        private void search(int handle, BG_TS_DTVSVLIB_BROADCAST_INFO from)
                throws DeskException, InterruptedException {
            try (RemoteControl.Subscription events = remote.subscribe(
                    event -> Events.handle(event) == handle
                    && (event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY
                    || event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY
                    || event instanceof BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY))) {
                remote.send(() -> remote.service().DtvSvLib_StartSearchChannel(handle, from,
                        way.ordinal()));
                while (true) {
                    Record event = events.next();
                    if (event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY reply) {
                        RemoteControl.checkAnswer(reply.result());
                    } else if (event instanceof BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY end) {
                        RemoteControl.checkAnswer(end.result());
                        remote.output().screen().answered("receiving " + remote.sessions().label(
                                end.broadcast_info().physical_channel()));
                        return;
                    }
                }
            }
        }
    }
}
