package tenrik.desk.core;

import java.util.Arrays;
import java.util.HashMap;
import java.util.Map;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_AUTH_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_BROWSER_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_CALL_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_ENROL_TVLINK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_MAIL_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_PERMISSION_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_PHONEBOOK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_READ_NVRAM_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_SAVE_PICTURE_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_SCHEDULE_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_FEP_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_TVLINK_REQ;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_WRITE_NVRAM_REQ;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_AUTH_SELECT_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BML_END_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_FEP_END_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_AUTH_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PERMISSION_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_FEP_REPLY;

/**
 * Answers the requests of data-broadcast documents, as the receiver's application does. Keeps the
 * broadcaster's memory, which a document writes and reads.
 */
public final class RequestAnswerer {
    /** The number of requests that a document of the simulated service makes, one of each kind. */
    public static final int REQUESTS = 13;

    private static final int OK = 0;
    private static final int NG = 1;

    private final DtvServerProxy service;
    private final Screen screen;
    /** What answers each kind of request. */
    private final Map<Class<?>, Answer<Record>> answers = new HashMap<>();
    /** The block of the broadcaster's memory that was written last. */
    private byte[] memory = new byte[0];
    private String memoryOwner = "";

    /** Answers one kind of request, by carrying it out or by refusing it. */
    private interface Answer<T extends Record> {
        BG_TE_DTVSVLIB_RESULT send(T request, boolean willing);
    }

    /**
     * An application whose broadcaster's memory is empty.
     *
     * @param service the bridge that takes the answers
     * @param screen shows the requests as they are answered
     */
    public RequestAnswerer(DtvServerProxy service, Screen screen) {
        this.service = service;
        this.screen = screen;
        answersWithValues();
        answersWithoutValues();
    }

    /**
     * Whether an event is a request of a document.
     *
     * @param event any event
     * @return true for a request
     */
    public static boolean isRequest(Record event) {
        return event.getClass().getPackage().equals(BG_EV_DTVSV_BML_AUTH_REQ.class.getPackage());
    }

    /**
     * A request as text.
     *
     * @param request an event for which {@link #isRequest} is true
     * @return its components, on one line
     */
    public static String text(Record request) {
        return request.toString().replaceAll("BG_(EV|TS)_DTVSV(LIB)?_", "")
                .replaceFirst("^\\w+\\[handle=\\d+, \\w+=(\\w+\\[.*])]$", "$1");
    }

    /**
     * Carries a request out and answers it.
     *
     * @param request the request
     * @throws DeskException when the answer was not taken
     */
    public void answer(Record request) throws DeskException {
        answer(request, true);
    }

    /**
     * Answers a request.
     *
     * @param request the request
     * @param willing whether it is carried out; otherwise it is refused
     * @throws DeskException when the answer was not taken
     */
    public void answer(Record request, boolean willing) throws DeskException {
        String text = text(request);
        screen.reported(text);
        Answer<Record> answer = answers.get(request.getClass());
        if (answer == null) {
            throw new DeskException("nothing answers " + request.getClass().getSimpleName());
        }
        BG_TE_DTVSVLIB_RESULT taken = answer.send(request, willing);
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException("the answer was not taken (" + taken + "): " + text);
        }
    }

    private <T extends Record> void on(Class<T> kind, Answer<T> answer) {
        answers.put(kind, (request, willing) -> answer.send(kind.cast(request), willing));
    }

    private void answersWithValues() {
        on(BG_EV_DTVSV_BML_PERMISSION_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLPermissionReply(asked.handle(),
                        new BG_TS_DTVSVLIB_PERMISSION_REPLY(
                                willing ? BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE.PERMIT
                                        : BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE.REFUSE,
                                asked.permission_req().task_id())));
        on(BG_EV_DTVSV_BML_AUTH_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLAuthReply(asked.handle(), new BG_TS_DTVSVLIB_AUTH_REPLY(
                        willing ? BG_TE_DTVSVLIB_AUTH_SELECT_TYPE.ENTERED
                                : BG_TE_DTVSVLIB_AUTH_SELECT_TYPE.CANCEL,
                        willing ? "segredo" : "", willing ? "視聴者" : "", asked.task_id())));
        on(BG_EV_DTVSV_BML_WRITE_NVRAM_REQ.class, (asked, willing) -> {
            if (willing) {
                memory = asked.write_nvram_req().data();
                memoryOwner = asked.write_nvram_req().ts_name();
            }
            return service.DtvSvLib_BMLWriteNvramReply(asked.handle(), end(willing));
        });
        on(BG_EV_DTVSV_BML_READ_NVRAM_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLReadNvramReply(asked.handle(),
                        new BG_TS_DTVSVLIB_READ_NVRAM_REPLY(
                                BG_TE_DTVSVLIB_BML_END_TYPE.of(end(willing)), memoryOwner,
                                Arrays.copyOf(memory, willing ? memory.length : 0))));
        on(BG_EV_DTVSV_BML_START_FEP_REQ.class, (asked, willing) -> {
            String text = willing ? "Três 三" : "";
            return service.DtvSvLib_BMLFepReply(asked.handle(), new BG_TS_DTVSVLIB_START_FEP_REPLY(
                    willing ? BG_TE_DTVSVLIB_FEP_END_TYPE.ENTERED
                            : BG_TE_DTVSVLIB_FEP_END_TYPE.CANCEL, text.length(), text));
        });
        on(BG_EV_DTVSV_BML_SAVE_PICTURE_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLSavePictureReply(asked.handle(),
                        new BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY(
                                willing ? BG_TE_DTVSVLIB_ONOFF.ON : BG_TE_DTVSVLIB_ONOFF.OFF,
                                BG_TE_DTVSVLIB_RECORDING_MEDIUM.CARD, BG_TE_DTVSVLIB_ONOFF.OFF,
                                asked.save_picture_req().filename())));
    }

    private void answersWithoutValues() {
        on(BG_EV_DTVSV_BML_MAIL_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLMailReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_PHONEBOOK_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLPhonebookReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_CALL_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLCallReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_SCHEDULE_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLScheduleReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_BROWSER_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLBrowserReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_START_TVLINK_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLStartTvlinkReply(asked.handle(), end(willing)));
        on(BG_EV_DTVSV_BML_ENROL_TVLINK_REQ.class, (asked, willing) ->
                service.DtvSvLib_BMLEnrolTvlinkReply(asked.handle(), end(willing)));
    }

    private static int end(boolean willing) {
        return willing ? OK : NG;
    }
}
