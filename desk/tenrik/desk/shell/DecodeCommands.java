package tenrik.desk.shell;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY;

/** Commands that switch the decoders of the current session. */
@Command(name = "decode", description = "Starts or stops decoding picture or sound.")
final class DecodeCommands {
    private final RemoteControl remote;

    /** The values of the switch, in the order of their numbers. */
    enum Switch {
        OFF,
        ON
    }

    DecodeCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Starts or stops decoding the picture.")
    void picture(@Mixin SyncOption waiting, @Parameters(paramLabel = "on|off") Switch onoff)
            throws DeskException, InterruptedException {
        remote.ask(waiting, done(onoff), session -> remote.service().DtvSvLib_ControlDecodeScreen(
                        session.handle(), onoff.ordinal()),
                BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY.class,
                session -> remote.service().DtvSvLib_ControlDecodeScreen_Sync(session.handle(),
                        onoff.ordinal()));
    }

    @Command(description = "Starts or stops decoding the sound.")
    void sound(@Mixin SyncOption waiting, @Parameters(paramLabel = "on|off") Switch onoff)
            throws DeskException, InterruptedException {
        remote.ask(waiting, done(onoff), session -> remote.service().DtvSvLib_ControlDecodeAudio(
                        session.handle(), onoff.ordinal()),
                BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY.class,
                session -> remote.service().DtvSvLib_ControlDecodeAudio_Sync(session.handle(),
                        onoff.ordinal()));
    }

    private static String done(Switch onoff) {
        return onoff == Switch.ON ? "decoding" : "not decoding";
    }
}
