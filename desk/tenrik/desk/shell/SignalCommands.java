package tenrik.desk.shell;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_LNA_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_TUNER_LOG_REPLY;

/** Commands about the signal at the tuner of the current session. */
@Command(name = "signal", description = "Amplifies the signal and logs the tuner.")
final class SignalCommands {
    private static final int LOG_ON = 1;
    private static final int LOG_OFF = 2;

    private final RemoteControl remote;

    /** The actions on the log. */
    enum Log {
        ON,
        OFF,
        STATUS
    }

    SignalCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Sets the low-noise amplifier.")
    void lna(@Mixin WaitOption waiting, @Parameters(paramLabel = "MODE",
            description = "0, 16 or 17.") int mode) throws DeskException, InterruptedException {
        remote.ask(waiting, "set", session -> remote.service().DtvSvLib_ControlLNA(
                session.handle(), mode), BG_EV_DTVSV_CONTROL_LNA_REPLY.class);
    }

    @Command(description = "Turns the log of the tuner on or off, or shows whether it is on."
            + " Its values come every second; \"events all\" shows them.")
    void log(@Mixin WaitOption waiting, @Parameters(paramLabel = "on|off|status") Log what)
            throws DeskException, InterruptedException {
        if (what == Log.STATUS) {
            remote.ask(waiting, null, session -> remote.service().DtvSvLib_GetTunerLogStatus(
                            session.handle()), BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class)
                    .ifPresent(reply -> remote.output().screen().answered(
                            reply.log_status() == LOG_ON ? "logged"
                            : reply.log_status() == LOG_OFF ? "not logged"
                            : "log status " + reply.log_status()));
            return;
        }
        boolean on = what == Log.ON;
        remote.ask(waiting, on ? "logged" : "not logged",
                session -> remote.service().DtvSvLib_SetTunerLog(session.handle(),
                        on ? LOG_ON : LOG_OFF), BG_EV_DTVSV_SET_TUNER_LOG_REPLY.class);
    }
}
