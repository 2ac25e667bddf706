package tenrik.desk.shell;

import java.util.function.Function;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_END_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_START_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_BML_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEYCODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEY_EVENT_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_START_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_KEY_CODE_NOTIFY;

/** Data broadcasting in the current session. */
@Command(name = "data", description = "Controls data broadcasting.")
final class DataCommands {
    private static final int NETWORK = 1620;
    private static final int SERVICE = 51864;
    private static final int AFFILIATION_SIZE = 6;

    private final RemoteControl remote;

    DataCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Turns it on.")
    void on(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.ON, "on");
    }

    @Command(description = "Turns it off.")
    void off(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.OFF, "off");
    }

    @Command(description = "Suspends the document.")
    void suspend(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND, "suspended");
    }

    @Command(description = "Resumes a suspended document.")
    void resume(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME, "resumed");
    }

    @Command(description = "Shows the document from its start.")
    void restart(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.RESTART, "restarted");
    }

    private void control(SyncOption waiting, BG_TE_DTVSVLIB_CONTROL_TYPE type, String done)
            throws DeskException, InterruptedException {
        int number = EnumConstants.number(type);
        remote.ask(waiting, done, session -> remote.service().DtvSvLib_ControlBML(
                        session.handle(), number, session.planes().data()),
                BG_EV_DTVSV_CONTROL_BML_REPLY.class,
                session -> remote.service().DtvSvLib_ControlBML_Sync(session.handle(), number,
                        session.planes().data()));
    }

    @Command(description = "Restarts the browser.")
    void reboot(@Mixin WaitOption waiting) throws DeskException, InterruptedException {
        remote.ask(waiting, "started", session -> remote.service().DtvSvLib_BMLRebootBrowserReq(
                session.handle()), BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY.class);
    }

    @Command(description = "Sends a key to the document. No answer follows.")
    void key(
            @Parameters(paramLabel = "KEY",
                    description = "One of ${COMPLETION-CANDIDATES}, or its number.")
                    BG_TE_DTVSVLIB_KEYCODE key,
            @Parameters(arity = "0..1", index = "1", paramLabel = "EVENT", defaultValue = "PRESS",
                    description = "One of ${COMPLETION-CANDIDATES}, or its number; PRESS when left"
                            + " out.") BG_TE_DTVSVLIB_KEY_EVENT_TYPE event)
            throws DeskException {
        int handle = remote.session().handle();
        remote.send(() -> remote.service().DtvSvLib_BMLKeyEventNotify(handle,
                new BG_TS_DTVSVLIB_KEY_CODE_NOTIFY(key, event, 0, 0)));
        remote.output().screen().answered("sent");
    }

    @Command(description = "Follows a link into data broadcasting.")
    void link(
            @Mixin WaitOption waiting,
            @Parameters(paramLabel = "URL", description = "The page.") String url,
            @Option(names = "--network", paramLabel = "ID", defaultValue = "" + NETWORK,
                    description = "Its network; ${DEFAULT-VALUE} when left out.") int network,
            @Option(names = "--service", paramLabel = "ID", defaultValue = "" + SERVICE,
                    description = "Its service; ${DEFAULT-VALUE} when left out.") int service)
            throws DeskException, InterruptedException {
        Function<SessionState, BG_TE_DTVSVLIB_RESULT> start = session -> remote.service()
                .DtvSvLib_BMLStartTvLinkReq(session.handle(),
                        EnumConstants.number(BG_TE_DTVSVLIB_CONTROL_TYPE.ON),
                        new BG_TS_DTVSVLIB_BML_START_INFO(network, service,
                                new byte[AFFILIATION_SIZE], url, session.planes().data()));
        remote.ask(waiting, "shown", start, BG_EV_DTVSV_BML_START_TVLINK_REPLY.class);
    }

    @Command(description = "Leaves the link.")
    void unlink(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        remote.ask(waiting, "left", session -> remote.service().DtvSvLib_BMLEndTvLinkReq(
                        session.handle()), BG_EV_DTVSV_BML_END_TVLINK_REPLY.class,
                session -> remote.service().DtvSvLib_BMLEndTvLink_Sync(session.handle()));
    }
}
