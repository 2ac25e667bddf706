package tenrik.desk.evening;

import java.util.function.IntSupplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Planes;
import tenrik.desk.core.Screen;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** What every part of the evening uses. */
final class EveningContext {
    static final BG_TE_DTVSVLIB_RESULT NOT_SENT = BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG;
    static final BG_TE_DTVSVLIB_RESULT BAD_ARGUMENT =
            BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;

    private final DtvServerProxy service;
    private final CheckedCommands commands;
    private final Screen screen;
    private final Planes planes;
    private int session;

    /**
     * @param service the bridge
     * @param commands sends commands and checks their answers
     * @param screen where commands and answers are shown
     * @param planes where the session draws
     */
    EveningContext(
            DtvServerProxy service, CheckedCommands commands, Screen screen, Planes planes) {
        this.service = service;
        this.commands = commands;
        this.screen = screen;
        this.planes = planes;
    }

    DtvServerProxy service() {
        return service;
    }

    CheckedCommands commands() {
        return commands;
    }

    Screen screen() {
        return screen;
    }

    Planes planes() {
        return planes;
    }

    /** The handle of the session; 0 when none is open. */
    int session() {
        return session;
    }

    /** The session of the commands from now on. */
    void setSession(int handle) {
        session = handle;
        commands.sessionOpened(handle);
    }

    /** Calls a synchronous native and shows the answer. */
    void askSync(String what, String answer, IntSupplier command) throws DeskException {
        commands.askSync(what, command);
        screen.answered(answer);
    }
}
