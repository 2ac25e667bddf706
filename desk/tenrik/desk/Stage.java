package tenrik.desk;

import java.util.function.IntSupplier;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/**
 * What every part of an evening uses.
 *
 * @param service the bridge
 * @param dialogue commands and their answers
 * @param screen what a person sees
 * @param session the session of the evening
 * @param planes where it draws
 */
record Stage(
        DtvServerProxy service, Dialogue dialogue, Screen screen, int session, Planes planes) {
    // What the service answers to what it does not do.
    static final int NOT_NOW = 1;
    static final int NO_SUCH_THING = 5;
    static final int UNKNOWN_HANDLE = -1;

    static final BG_TE_DTVSVLIB_RESULT NOT_SENT = BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG;
    static final BG_TE_DTVSVLIB_RESULT BAD_ARGUMENT =
            BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG;

    /** A result of the service's, in words. */
    static String words(int result) {
        return "result " + result + switch (result) {
            case NOT_NOW -> ", not now";
            case NO_SUCH_THING -> ", no such thing";
            case UNKNOWN_HANDLE -> ", unknown session";
            default -> "";
        };
    }

    /** The first service of a physical channel. */
    static BG_TS_DTVSVLIB_BROADCAST_INFO channel(int physicalChannel) {
        return new BG_TS_DTVSVLIB_BROADCAST_INFO(physicalChannel, 0);
    }

    /** The number of a control type. */
    static int number(BG_TE_DTVSVLIB_CONTROL_TYPE type) {
        return BG_TE_DTVSVLIB_CONTROL_TYPE.getControlTypeValue(type);
    }

    /** A command that waits for its answer itself. */
    void exchange(String what, String answer, IntSupplier command) throws DeskException {
        dialogue.exchange(what, command);
        screen.answered(answer);
    }
}
