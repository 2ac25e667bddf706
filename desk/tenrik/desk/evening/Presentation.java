package tenrik.desk.evening;

import java.util.function.Supplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.desk.core.Planes;
import tenrik.desk.core.ServiceResult;
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

/** The presentation of the station that is received: planes, captions, sound, signal. */
final class Presentation {
    private static final int OFF = 0;
    private static final int ON = 1;
    private static final int LNA_ON = 16;
    private static final int LOG_ON = 1;
    private static final int LOG_OFF = 2;
    private static final int DATA_PLANE = 2;

    private final EveningContext context;

    Presentation(EveningContext context) {
        this.context = context;
    }

    void planes() throws DeskException, InterruptedException {
        context.screen().title("Planes");
        Planes planes = context.planes();
        ask("Place picture, captions and data", () -> context.service().DtvSvLib_SetDisplayAll(
                        context.session(), planes.video(), planes.captions(), planes.data()),
                BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY.class);
        context.commands().await("Place", BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY.class, any -> true,
                other -> {});
        context.screen().answered("placed");
        ask("Place the picture", () -> context.service().DtvSvLib_SetScreenDisplay(
                context.session(), planes.video()), BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY.class);
        ask("Place the captions", () -> context.service().DtvSvLib_SetCapDisplay(
                context.session(), planes.captions()), BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY.class);
        ask("Place the data", () -> context.service().DtvSvLib_SetBMLDisplay(
                context.session(), planes.data()), BG_EV_DTVSV_SET_BML_DISPLAY_REPLY.class);
        ask("Turn the picture by 90 degrees, on the whole screen",
                () -> context.service().DtvSvLib_ControlDisplayModeReq(context.session(), 1, 1),
                BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY.class);
        ask("Show the picture",
                () -> context.service().DtvSvLib_ControlScreenDisplay(context.session(), ON),
                BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY.class);
        ask("Stop decoding the picture",
                () -> context.service().DtvSvLib_ControlDecodeScreen(context.session(), OFF),
                BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY.class);
        context.askSync("Decode the picture again, and wait for the answer", "decoding",
                () -> context.service().DtvSvLib_ControlDecodeScreen_Sync(context.session(), ON)
                        .return_value());
        ask("Release the plane of the data",
                () -> context.service().DtvSvLib_ReleaseDisplay(context.session(), DATA_PLANE),
                BG_EV_DTVSV_RELEASE_DISPLAY_REPLY.class);
        context.screen().answered("released");
        context.commands().expectRefusedByService("Release the plane of the data once more",
                () -> context.service().DtvSvLib_ReleaseDisplay(context.session(), DATA_PLANE),
                BG_EV_DTVSV_RELEASE_DISPLAY_REPLY.class, ServiceResult.NOT_NOW);
    }

    void captions() throws DeskException, InterruptedException {
        context.screen().title("Captions");
        captions("Turn the captions on", BG_TE_DTVSVLIB_CONTROL_TYPE.ON);
        ask("Change their language",
                () -> context.service().DtvSvLib_ChangeCapLang(context.session(), 1),
                BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY.class);
        BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY language = context.commands().await("Language",
                BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY.class, any -> true, other -> {});
        if (language != null) {
            context.screen().answered("language " + (language.caption_data().cap_lang() + 1));
        }
        context.askSync("Suspend them, and wait for the answer", "suspended",
                () -> context.service().DtvSvLib_ControlCap_Sync(context.session(),
                        EnumConstants.number(BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND), 1,
                        context.planes().captions()).return_value());
        captions("Resume them", BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME);
        context.commands().expectRefusedByService("Turn the captions on once more",
                () -> control(BG_TE_DTVSVLIB_CONTROL_TYPE.ON), BG_EV_DTVSV_CONTROL_CAP_REPLY.class,
                ServiceResult.NOT_NOW);
    }

    private BG_TE_DTVSVLIB_RESULT control(
            BG_TE_DTVSVLIB_CONTROL_TYPE type) {
        return context.service().DtvSvLib_ControlCap(
                context.session(), EnumConstants.number(type), 1, context.planes().captions());
    }

    private void captions(String what, BG_TE_DTVSVLIB_CONTROL_TYPE type)
            throws DeskException, InterruptedException {
        ask(what, () -> control(type), BG_EV_DTVSV_CONTROL_CAP_REPLY.class);
        BG_EV_DTVSV_CAP_STATUS_NOTIFY notice = context.commands().await(what,
                BG_EV_DTVSV_CAP_STATUS_NOTIFY.class, any -> true, other -> {});
        if (notice != null) {
            context.screen().answered("status " + notice.change_status());
        }
    }

    void sound() throws DeskException, InterruptedException {
        context.screen().title("Sound");
        String component = "Switch to the second sound";
        ask(component, () -> context.service().DtvSvLib_ChangeAudioComponent(context.session(), 1),
                BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY.class);
        context.commands().await(component, BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class,
                any -> true, other -> {});
        context.screen().answered("switched");
        String dualMono = "Switch to its sub channel";
        ask(dualMono, () -> context.service().DtvSvLib_ChangeSoundDualMono(context.session(), 1),
                BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY.class);
        context.commands().await(dualMono, BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY.class,
                any -> true, other -> {});
        context.screen().answered("heard");
        ask("Delay picture and sound by 40 ms",
                () -> context.service().DtvSvLib_SetSoundVideoDelay(context.session(), 40, 40),
                BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY.class);
        context.commands().expectRefused("Delay the picture by 101 ms of 100",
                () -> context.service().DtvSvLib_SetSoundVideoDelay(context.session(), 101, 40),
                EveningContext.BAD_ARGUMENT);
        ask("Mute", () -> context.service().DtvSvLib_ControlDecodeAudio(context.session(), OFF),
                BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY.class);
        context.askSync("Unmute, and wait for the answer", "heard",
                () -> context.service().DtvSvLib_ControlDecodeAudio_Sync(context.session(), ON)
                        .return_value());
    }

    void signal() throws DeskException, InterruptedException {
        context.screen().title("Signal");
        ask("Amplify the signal",
                () -> context.service().DtvSvLib_ControlLNA(context.session(), LNA_ON),
                BG_EV_DTVSV_CONTROL_LNA_REPLY.class);
        ask("Log the tuner",
                () -> context.service().DtvSvLib_SetTunerLog(context.session(), LOG_ON),
                BG_EV_DTVSV_SET_TUNER_LOG_REPLY.class);
        BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY log = ask("Ask whether it is logged",
                () -> context.service().DtvSvLib_GetTunerLogStatus(context.session()),
                BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY.class);
        if (log != null) {
            context.screen().answered("log status " + log.log_status());
        }
        String wait = "Wait for a fade";
        context.screen().asked(wait);
        context.commands().await(wait, BG_EV_DTVSV_BAD_SENS_NOTIFY.class, any -> true, this::show);
        context.screen().answered("bad");
        context.commands().await(wait, BG_EV_DTVSV_GOOD_SENS_NOTIFY.class, any -> true, this::show);
        context.screen().answered("good again");
        ask("Stop logging the tuner",
                () -> context.service().DtvSvLib_SetTunerLog(context.session(), LOG_OFF),
                BG_EV_DTVSV_SET_TUNER_LOG_REPLY.class);
    }

    private void show(Record event) {
        if (event instanceof BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY notice) {
            int cn = notice.tuner_sens_data().cn_value();
            context.screen().reported("C/N " + cn / 100 + "." + cn % 100 / 10 + " dB, gain "
                    + notice.tuner_sens_data().ifagc());
        }
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return context.commands().ask(what, command, reply);
    }
}
