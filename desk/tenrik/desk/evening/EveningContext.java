package tenrik.desk.evening;

import java.util.function.IntSupplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Planes;
import tenrik.desk.core.Screen;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/**
 * What every part of the evening uses.
 *
 * @param service the bridge
 * @param commands sends commands and checks their answers
 * @param screen where commands and answers are shown
 * @param session the handle of the session
 * @param planes where the session draws
 */
record EveningContext(DtvServerProxy service, CheckedCommands commands, Screen screen, int session,
        Planes planes) {
    static final BG_TE_DTVSVLIB_RESULT NOT_SENT = BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG;
    static final BG_TE_DTVSVLIB_RESULT BAD_ARGUMENT =
            BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;

    /** Calls a synchronous native and shows the answer. */
    void askSync(String what, String answer, IntSupplier command) throws DeskException {
        commands.askSync(what, command);
        screen.answered(answer);
    }
}
