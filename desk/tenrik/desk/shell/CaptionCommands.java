package tenrik.desk.shell;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_CAP_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CAP_LANG;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;

/** The captions of the current session. */
@Command(name = "captions", description = "Controls the captions.")
final class CaptionCommands {
    private static final int LANGUAGE = 0;

    private final RemoteControl remote;

    CaptionCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Turns them on.")
    void on(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.ON, "on");
    }

    @Command(description = "Turns them off.")
    void off(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.OFF, "off");
    }

    @Command(description = "Suspends them.")
    void suspend(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND, "suspended");
    }

    @Command(description = "Resumes suspended captions.")
    void resume(@Mixin SyncOption waiting) throws DeskException, InterruptedException {
        control(waiting, BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME, "resumed");
    }

    @Command(description = "Chooses their language.")
    void language(@Mixin WaitOption waiting, @Parameters(paramLabel = "LANGUAGE",
            description = "One of ${COMPLETION-CANDIDATES}, or its number.")
            BG_TE_DTVSVLIB_CAP_LANG language) throws DeskException, InterruptedException {
        remote.ask(waiting, "changed", session -> remote.service().DtvSvLib_ChangeCapLang(
                        session.handle(), EnumConstants.number(language)),
                BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY.class);
    }

    private void control(SyncOption waiting, BG_TE_DTVSVLIB_CONTROL_TYPE type, String done)
            throws DeskException, InterruptedException {
        int number = EnumConstants.number(type);
        remote.ask(waiting, done, session -> remote.service().DtvSvLib_ControlCap(
                        session.handle(), number, LANGUAGE, session.planes().captions()),
                BG_EV_DTVSV_CONTROL_CAP_REPLY.class,
                session -> remote.service().DtvSvLib_ControlCap_Sync(session.handle(), number,
                        LANGUAGE, session.planes().captions()));
    }
}
