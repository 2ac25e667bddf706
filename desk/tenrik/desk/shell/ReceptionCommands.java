package tenrik.desk.shell;

import java.util.Arrays;
import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_EPG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PRG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TIME;

/** Commands about the station that is received. */
final class ReceptionCommands {
    private ReceptionCommands() {}

    @Command(name = "select", description = "Receives a station.")
    static final class Select implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private WaitOption waiting;

        @Option(names = "--start", description = "Uses StartBroadcastReceiving, for a session"
                + " that receives nothing.")
        private boolean start;

        @Parameters(index = "0", paramLabel = ParameterLabels.CHANNEL,
                description = "Its physical channel, 13 to 62.")
        private int channel;

        @Parameters(index = "1", arity = "0..1", paramLabel = "SERVICE", defaultValue = "0",
                description = "The number of its service, 0 to 2; 0 when left out.")
        private int service;

        Select(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            var station = new BG_TS_DTVSVLIB_BROADCAST_INFO(channel, service);
            String done = "receiving " + remote.sessions().label(channel) + ", service " + service;
            if (start) {
                remote.ask(waiting, done, session -> remote.service()
                                .DtvSvLib_StartBroadcastReceiving(session.handle(), station),
                        BG_EV_DTVSV_START_BROADCAST_REPLY.class);
            } else {
                remote.ask(waiting, done, session -> remote.service()
                                .DtvSvLib_SelectChannel(session.handle(), station),
                        BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class);
            }
            return 0;
        }
    }

    @Command(name = "stop", description = "Stops receiving.")
    static final class Stop implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private SyncOption waiting;

        Stop(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            remote.ask(waiting, "stopped", session -> remote.service()
                            .DtvSvLib_TerminateBroadcastReceiving(session.handle()),
                    BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY.class, session -> remote.service()
                            .DtvSvLib_TerminateBroadcastReceiving_Sync(session.handle()));
            return 0;
        }
    }

    @Command(name = "epg",
            description = "Shows the programmes of the station received last: now, next, later.")
    static final class Guide implements Callable<Integer> {
        private final RemoteControl remote;

        Guide(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            SessionState session = remote.session();
            BG_TS_DTVSVLIB_EPG_INFO guide = session.guide(RemoteControl.LIMIT);
            if (guide == null) {
                throw new DeskException(session.station() == null ? "nothing was received yet"
                        : "no guide has come");
            }
            remote.output().screen().reported(remote.sessions().label(
                    session.station().physical_channel()));
            show("now", guide.cur_prg_info());
            if (!guide.cur_prg_info().text().isEmpty()) {
                remote.output().paragraph(" ".repeat(24) + guide.cur_prg_info().text());
            }
            show("next", guide.next_prg_info());
            Arrays.stream(guide.after_prg_info()).limit(guide.after_prg_infoCnt())
                    .forEach(programme -> show("", programme));
            return 0;
        }

        /** Shows a programme: its start, its duration and its name. */
        private void show(String when, BG_TS_DTVSVLIB_PRG_INFO programme) {
            BG_TS_DTVSVLIB_TIME start = programme.start().time();
            BG_TS_DTVSVLIB_TIME length = programme.duration();
            remote.output().screen().reported(String.format(
                    "%-6s%02d:%02d  %2d h %02d min  %s", when, start.hour(),
                    start.min(), length.hour(), length.min(), programme.name()));
        }
    }
}
