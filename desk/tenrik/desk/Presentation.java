package tenrik.desk;

import java.util.function.Supplier;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CAP_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GOOD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_CAP_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_LNA_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_BML_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_TUNER_LOG_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** How a station that is received is shown and heard: planes, captions, sound, signal. */
final class Presentation {
    private static final int OFF = 0;
    private static final int ON = 1;
    private static final int LNA_ON = 16;
    private static final int LOG_ON = 1;
    private static final int LOG_OFF = 2;
    private static final int DATA_PLANE = 2;

    private final Stage stage;

    Presentation(Stage stage) {
        this.stage = stage;
    }

    void run() throws DeskException, InterruptedException {
        planes();
        captions();
        sound();
        signal();
    }

    private void planes() throws DeskException, InterruptedException {
        stage.screen().title("Planes");
        Planes planes = stage.planes();
        ask("Place picture, captions and data", () -> stage.service().DtvSvLib_SetDisplayAll(
                        stage.session(), planes.video(), planes.captions(), planes.data()),
                BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY.class);
        stage.dialogue().await("Place", BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY.class, any -> true,
                other -> {});
        stage.screen().answered("placed");
        ask("Place the picture", () -> stage.service().DtvSvLib_SetScreenDisplay(
                stage.session(), planes.video()), BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY.class);
        ask("Place the captions", () -> stage.service().DtvSvLib_SetCapDisplay(
                stage.session(), planes.captions()), BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY.class);
        ask("Place the data", () -> stage.service().DtvSvLib_SetBMLDisplay(
                stage.session(), planes.data()), BG_EV_DTVSV_SET_BML_DISPLAY_REPLY.class);
        ask("Turn the picture by 90 degrees, on the whole screen",
                () -> stage.service().DtvSvLib_ControlDisplayModeReq(stage.session(), 1, 1),
                BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY.class);
        ask("Show the picture",
                () -> stage.service().DtvSvLib_ControlScreenDisplay(stage.session(), ON),
                BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY.class);
        ask("Stop decoding the picture",
                () -> stage.service().DtvSvLib_ControlDecodeScreen(stage.session(), OFF),
                BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY.class);
        stage.exchange("Decode the picture again, and wait for the answer", "decoding",
                () -> stage.service().DtvSvLib_ControlDecodeScreen_Sync(stage.session(), ON)
                        .return_value());
        ask("Give the plane of the data back",
                () -> stage.service().DtvSvLib_ReleaseDisplay(stage.session(), DATA_PLANE),
                BG_EV_DTVSV_RELEASE_DISPLAY_REPLY.class);
        stage.screen().answered("released");
        stage.dialogue().refusedByService("Give the plane of the data back once more",
                () -> stage.service().DtvSvLib_ReleaseDisplay(stage.session(), DATA_PLANE),
                BG_EV_DTVSV_RELEASE_DISPLAY_REPLY.class, Stage.NOT_NOW);
    }

    private void captions() throws DeskException, InterruptedException {
        stage.screen().title("Captions");
        captions("Turn the captions on", BG_TE_DTVSVLIB_CONTROL_TYPE.ON);
        ask("Change their language",
                () -> stage.service().DtvSvLib_ChangeCapLang(stage.session(), 1),
                BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY.class);
        int language = stage.dialogue().await("Language",
                BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY.class, any -> true, other -> {})
                .caption_data().cap_lang();
        stage.screen().answered("language " + (language + 1));
        stage.exchange("Suspend them, and wait for the answer", "suspended",
                () -> stage.service().DtvSvLib_ControlCap_Sync(stage.session(),
                        Stage.number(BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND), 1,
                        stage.planes().captions()).return_value());
        captions("Resume them", BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME);
        stage.dialogue().refusedByService("Turn the captions on once more",
                () -> control(BG_TE_DTVSVLIB_CONTROL_TYPE.ON), BG_EV_DTVSV_CONTROL_CAP_REPLY.class,
                Stage.NOT_NOW);
    }

    private BG_TE_DTVSVLIB_RESULT control(
            BG_TE_DTVSVLIB_CONTROL_TYPE type) {
        return stage.service().DtvSvLib_ControlCap(
                stage.session(), Stage.number(type), 1, stage.planes().captions());
    }

    private void captions(String what, BG_TE_DTVSVLIB_CONTROL_TYPE type)
            throws DeskException, InterruptedException {
        ask(what, () -> control(type), BG_EV_DTVSV_CONTROL_CAP_REPLY.class);
        int status = stage.dialogue().await(what, BG_EV_DTVSV_CAP_STATUS_NOTIFY.class, any -> true,
                other -> {}).change_status();
        stage.screen().answered("status " + status);
    }

    private void sound() throws DeskException, InterruptedException {
        stage.screen().title("Sound");
        String component = "Switch to the second sound";
        ask(component, () -> stage.service().DtvSvLib_ChangeAudioComponent(stage.session(), 1),
                BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY.class);
        stage.dialogue().await(component, BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class,
                any -> true, other -> {});
        stage.screen().answered("switched");
        String dualMono = "Hear its sub channel";
        ask(dualMono, () -> stage.service().DtvSvLib_ChangeSoundDualMono(stage.session(), 1),
                BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY.class);
        stage.dialogue().await(dualMono, BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY.class,
                any -> true, other -> {});
        stage.screen().answered("heard");
        ask("Hold picture and sound back by 40 ms",
                () -> stage.service().DtvSvLib_SetSoundVideoDelay(stage.session(), 40, 40),
                BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY.class);
        stage.dialogue().refused("Hold the picture back by 101 ms of 100",
                () -> stage.service().DtvSvLib_SetSoundVideoDelay(stage.session(), 101, 40),
                Stage.BAD_ARGUMENT);
        ask("Mute", () -> stage.service().DtvSvLib_ControlDecodeAudio(stage.session(), OFF),
                BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY.class);
        stage.exchange("Unmute, and wait for the answer", "heard",
                () -> stage.service().DtvSvLib_ControlDecodeAudio_Sync(stage.session(), ON)
                        .return_value());
    }

    private void signal() throws DeskException, InterruptedException {
        stage.screen().title("Signal");
        ask("Amplify the signal", () -> stage.service().DtvSvLib_ControlLNA(stage.session(), LNA_ON),
                BG_EV_DTVSV_CONTROL_LNA_REPLY.class);
        ask("Log the tuner", () -> stage.service().DtvSvLib_SetTunerLog(stage.session(), LOG_ON),
                BG_EV_DTVSV_SET_TUNER_LOG_REPLY.class);
        int status = ask("Ask whether it is logged",
                () -> stage.service().DtvSvLib_GetTunerLogStatus(stage.session()),
                BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class).log_status();
        stage.screen().answered("log status " + status);
        String wait = "Wait for a fade";
        stage.screen().asked(wait);
        stage.dialogue().await(wait, BG_EV_DTVSV_BAD_SENS_NOTIFY.class, any -> true, this::tell);
        stage.screen().answered("bad");
        stage.dialogue().await(wait, BG_EV_DTVSV_GOOD_SENS_NOTIFY.class, any -> true, this::tell);
        stage.screen().answered("good again");
        ask("Log the tuner no longer",
                () -> stage.service().DtvSvLib_SetTunerLog(stage.session(), LOG_OFF),
                BG_EV_DTVSV_SET_TUNER_LOG_REPLY.class);
    }

    private void tell(Record event) {
        if (event instanceof BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY news) {
            int cn = news.tuner_sens_data().cn_value();
            stage.screen().told("C/N " + cn / 100 + "." + cn % 100 / 10 + " dB, gain "
                    + news.tuner_sens_data().ifagc());
        }
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return stage.dialogue().ask(what, command, reply);
    }
}
