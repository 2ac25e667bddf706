package tenrik.desk.shell;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_AUDIO_COMPONENT;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_DUALMONO;

/** Commands about the sound of the current session. */
@Command(name = "sound", description = "Selects the sound and its delay.")
final class SoundCommands {
    private final RemoteControl remote;

    SoundCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Selects a sound stream.")
    void component(@Mixin WaitOption waiting, @Parameters(paramLabel = "COMPONENT",
            description = "One of ${COMPLETION-CANDIDATES}, or its number.")
            BG_TE_DTVSVLIB_AUDIO_COMPONENT component) throws DeskException, InterruptedException {
        remote.ask(waiting, "switched", session -> remote.service().DtvSvLib_ChangeAudioComponent(
                        session.handle(), EnumConstants.number(component)),
                BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY.class);
    }

    @Command(description = "Selects the channels of a dual mono sound.")
    void dual(@Mixin WaitOption waiting, @Parameters(paramLabel = "CHANNELS",
            description = "One of ${COMPLETION-CANDIDATES}, or its number.")
            BG_TE_DTVSVLIB_DUALMONO channels) throws DeskException, InterruptedException {
        remote.ask(waiting, "switched", session -> remote.service().DtvSvLib_ChangeSoundDualMono(
                        session.handle(), EnumConstants.number(channels)),
                BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY.class);
    }

    @Command(description = "Delays picture and sound, at most by the limit given to create.")
    void delay(
            @Mixin WaitOption waiting,
            @Parameters(index = "0", paramLabel = "PICTURE", description = "Milliseconds.")
                    int picture,
            @Parameters(index = "1", paramLabel = "SOUND", description = "Milliseconds.")
                    int sound) throws DeskException, InterruptedException {
        remote.ask(waiting, "delayed", session -> remote.service().DtvSvLib_SetSoundVideoDelay(
                session.handle(), picture, sound), BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY.class);
    }
}
