package tenrik.desk.shell;

import java.util.List;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** Records what the current session receives. */
@Command(name = "record", description = "Records what is received.")
final class RecordCommands {
    private final RemoteControl remote;

    RecordCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Starts a recording.")
    void start(@Mixin WaitOption waiting, @Parameters(arity = "0..1", paramLabel = "MEDIUM",
            defaultValue = "INTERNAL", description = "One of ${COMPLETION-CANDIDATES}, or its"
            + " number; INTERNAL when left out.") BG_TE_DTVSVLIB_RECORDING_MEDIUM medium)
            throws DeskException, InterruptedException {
        remote.ask(waiting, "recording", session -> {
            session.setMedium(medium);
            return remote.service().DtvSvLib_StartRec(session.handle(),
                    EnumConstants.number(medium));
        }, BG_EV_DTVSV_START_REC_REPLY.class);
    }

    @Command(description = "Ends the recording and keeps it.")
    void stop(@Mixin SyncOption waiting, @Parameters(arity = "1..*", paramLabel = "TITLE",
            description = "Its title.") List<String> title)
            throws DeskException, InterruptedException {
        end(waiting, BG_TE_DTVSVLIB_ONOFF.ON, String.join(" ", title), "kept");
    }

    @Command(description = "Ends the recording and discards it.")
    void discard(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        end(waiting, BG_TE_DTVSVLIB_ONOFF.OFF, "", "discarded");
    }

    private void end(SyncOption waiting, BG_TE_DTVSVLIB_ONOFF keep, String title, String done)
            throws DeskException, InterruptedException {
        int before = remote.sessions().recordings().size();
        BG_TS_DTVSVLIB_TERMINATE_REC_REQ end = new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(keep, title);
        remote.session().setTitle(title);
        remote.ask(waiting, done, session -> remote.service().DtvSvLib_TerminateRec(
                        session.handle(), end), BG_EV_DTVSV_TERMINATE_REC_REPLY.class,
                session -> remote.service().DtvSvLib_TerminateRec_Sync(session.handle(), end));
        remote.sessions().recordings().stream().skip(before).forEach(recording ->
                remote.output().screen().answered("programme " + recording.programme()));
    }

    @Command(name = "recordings", description = "Shows what was recorded and kept.")
    static final class Show implements Runnable {
        private final RemoteControl remote;

        Show(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public void run() {
            List<Sessions.Recording> recordings = remote.sessions().recordings();
            for (Sessions.Recording recording : recordings) {
                remote.output().screen().reported(recording.programme() + "  "
                        + recording.medium().name().toLowerCase() + "  " + recording.title());
            }
            if (recordings.isEmpty()) {
                remote.output().screen().reported("nothing was recorded and kept");
            }
        }
    }
}
