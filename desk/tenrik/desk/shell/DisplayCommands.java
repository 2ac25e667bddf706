package tenrik.desk.shell;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_BML_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_COMPONENT_SETTING;

/** Commands about the planes on which the current session draws. */
@Command(name = "display", description = "Places the planes and shows the picture.")
final class DisplayCommands {
    private static final int HIDE = 0;
    private static final int SHOW = 1;

    private final RemoteControl remote;

    /** The planes, in the order of their numbers. */
    enum Plane {
        PICTURE,
        CAPTIONS,
        DATA
    }

    DisplayCommands(RemoteControl remote) {
        this.remote = remote;
    }

    @Command(description = "Sets the surface and the size of a plane, or of all three.")
    void place(@Mixin WaitOption waiting, @Parameters(arity = "0..1", paramLabel = "PLANE",
            description = "picture, captions or data; all when left out.") Plane plane)
            throws DeskException, InterruptedException {
        if (plane == null) {
            remote.ask(waiting, "placed", session -> remote.service().DtvSvLib_SetDisplayAll(
                            session.handle(), session.planes().video(),
                            session.planes().captions(), session.planes().data()),
                    BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY.class);
            return;
        }
        switch (plane) {
            case PICTURE -> remote.ask(waiting, "placed",
                    session -> remote.service().DtvSvLib_SetScreenDisplay(session.handle(),
                            session.planes().video()),
                    BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY.class);
            case CAPTIONS -> remote.ask(waiting, "placed",
                    session -> remote.service().DtvSvLib_SetCapDisplay(session.handle(),
                            session.planes().captions()),
                    BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY.class);
            default -> remote.ask(waiting, "placed",
                    session -> remote.service().DtvSvLib_SetBMLDisplay(session.handle(),
                            session.planes().data()), BG_EV_DTVSV_SET_BML_DISPLAY_REPLY.class);
        }
    }

    @Command(description = "Sets what is shown when reception begins: picture and sound.")
    void first(
            @Mixin WaitOption waiting,
            @Option(names = "--captions", description = "Captions too.") boolean captions,
            @Option(names = "--data", description = "Data broadcasting too.") boolean data)
            throws DeskException, InterruptedException {
        remote.ask(waiting, "set", session -> {
            BG_TS_DTVSVLIB_COMPONENT_SETTING plain = session.planes().firstComponents();
            return remote.service().DtvSvLib_SetFirstComponent(session.handle(),
                    new BG_TS_DTVSVLIB_COMPONENT_SETTING(plain.cap_lang(), plain.dualmono(),
                            plain.audio_component(), type(captions), type(data),
                            plain.video_drawing_info(), plain.cap_drawing_info(),
                            plain.bml_drawing_info()));
        }, BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class);
    }

    private static BG_TE_DTVSVLIB_CONTROL_TYPE type(boolean on) {
        return on ? BG_TE_DTVSVLIB_CONTROL_TYPE.ON : BG_TE_DTVSVLIB_CONTROL_TYPE.OFF;
    }

    @Command(description = "Releases a plane.")
    void release(@Mixin WaitOption waiting, @Parameters(paramLabel = "PLANE",
            description = "picture, captions or data.") Plane plane)
            throws DeskException, InterruptedException {
        remote.ask(waiting, "released", session -> remote.service().DtvSvLib_ReleaseDisplay(
                session.handle(), plane.ordinal()), BG_EV_DTVSV_RELEASE_DISPLAY_REPLY.class);
    }

    @Command(description = "Changes how the picture fills its plane, and its rotation.")
    void mode(
            @Mixin WaitOption waiting,
            @Parameters(index = "0", paramLabel = "MODE",
                    description = "One of ${COMPLETION-CANDIDATES}, or its number.")
                    BG_TE_DTVSVLIB_SCREEN_MODE mode,
            @Parameters(index = "1", paramLabel = "ROTATION",
                    description = "One of ${COMPLETION-CANDIDATES}, or its number.")
                    BG_TE_DTVSVLIB_SCREEN_ROTATE rotation)
            throws DeskException, InterruptedException {
        remote.ask(waiting, "changed", session -> remote.service().DtvSvLib_ControlDisplayModeReq(
                        session.handle(), EnumConstants.number(mode),
                        EnumConstants.number(rotation)),
                BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY.class);
    }

    @Command(description = "Shows the picture.")
    void show(@Mixin WaitOption waiting) throws DeskException, InterruptedException {
        turn(waiting, SHOW, "shown");
    }

    @Command(description = "Hides the picture.")
    void hide(@Mixin WaitOption waiting) throws DeskException, InterruptedException {
        turn(waiting, HIDE, "hidden");
    }

    private void turn(WaitOption waiting, int onoff, String done)
            throws DeskException, InterruptedException {
        remote.ask(waiting, done, session -> remote.service().DtvSvLib_ControlScreenDisplay(
                session.handle(), onoff), BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY.class);
    }
}
