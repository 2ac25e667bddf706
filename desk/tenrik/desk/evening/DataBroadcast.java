package tenrik.desk.evening;

import java.util.function.Supplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.desk.core.RequestAnswerer;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_END_FEP_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_FEP_REQ;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_END_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_BML_START_TVLINK_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_BML_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CONTROL_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEYCODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEY_EVENT_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_START_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_KEY_CODE_NOTIFY;

/** A document of data broadcasting with all its requests, and a link into data broadcasting. */
final class DataBroadcast {
    private static final int OFF = 0;
    private static final int NETWORK = 1620;
    private static final int SERVICE = 51864;

    private final EveningContext context;
    private final RequestAnswerer answerer;

    DataBroadcast(EveningContext context) {
        this.context = context;
        this.answerer = new RequestAnswerer(context.service(), context.screen());
    }

    /** A page with all its requests, twice. */
    void pages() throws DeskException, InterruptedException {
        context.screen().title("Data broadcasting");
        context.commands().expectRefused("Answer a mail that was not asked for",
                () -> context.service().DtvSvLib_BMLMailReply(context.session(), 0),
                EveningContext.NOT_SENT);
        page();
        textInputLeftOpen();
    }

    private void page() throws DeskException, InterruptedException {
        String what = "Turn the data on, and answer all requests of the page";
        control(what, BG_TE_DTVSVLIB_CONTROL_TYPE.ON);
        for (int request = 0; request < RequestAnswerer.REQUESTS; request++) {
            answer(CheckedCommands.need(context.commands().await(what, Record.class,
                    RequestAnswerer::isRequest, this::show)));
        }
        context.commands().send("Press the blue button", () ->
                context.service().DtvSvLib_BMLKeyEventNotify(context.session(),
                        new BG_TS_DTVSVLIB_KEY_CODE_NOTIFY(BG_TE_DTVSVLIB_KEYCODE.BLUE,
                                BG_TE_DTVSVLIB_KEY_EVENT_TYPE.PRESS, 0, 0)));
        context.askSync("Suspend the page, and wait for the answer", "suspended",
                () -> context.service().DtvSvLib_ControlBML_Sync(context.session(),
                        EnumConstants.number(BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND),
                        context.planes().data()).return_value());
        control("Resume it", BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME);
    }

    private void answer(Record request) throws DeskException, InterruptedException {
        context.commands().step("Answer " + request.getClass().getSimpleName(),
                () -> answerer.answer(request));
    }

    /** Restarts the document, and turns it off while it waits for a text. */
    private void textInputLeftOpen() throws DeskException, InterruptedException {
        String what = "Start the browser again";
        CheckedCommands.need(ask(what,
                () -> context.service().DtvSvLib_BMLRebootBrowserReq(context.session()),
                BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY.class));
        while (true) {
            Record request = CheckedCommands.need(context.commands().await(what, Record.class,
                    RequestAnswerer::isRequest, this::show));
            if (request instanceof BG_EV_DTVSV_BML_START_FEP_REQ) {
                context.screen().reported("a text is requested; it is not entered");
                break;
            }
            answer(request);
        }
        String off = "Turn the data off";
        control(off, BG_TE_DTVSVLIB_CONTROL_TYPE.OFF);
        context.commands().await(off, BG_EV_DTVSV_BML_END_FEP_NOTIFY.class, any -> true,
                this::show);
        status(off, OFF);
        context.screen().answered("off, and the text input has ended");
    }

    void links() throws DeskException, InterruptedException {
        startLink();
        ask("Leave the link", () -> context.service().DtvSvLib_BMLEndTvLinkReq(context.session()),
                BG_EV_DTVSV_BML_END_TVLINK_REPLY.class);
        status("Leave the link", OFF);
        context.screen().answered("left");
        startLink();
        context.askSync("Leave it, and wait for the answer", "left",
                () -> context.service().DtvSvLib_BMLEndTvLink_Sync(context.session())
                        .return_value());
        status("Leave the link", OFF);
    }

    private void startLink() throws DeskException, InterruptedException {
        CheckedCommands.need(ask("Follow a link into the data",
                () -> context.service().DtvSvLib_BMLStartTvLinkReq(
                        context.session(), EnumConstants.number(BG_TE_DTVSVLIB_CONTROL_TYPE.ON),
                        new BG_TS_DTVSVLIB_BML_START_INFO(NETWORK, SERVICE,
                                new byte[] {2, 3, 5, 7, 11, 13}, "http://example.com/receitas",
                                context.planes().data())),
                BG_EV_DTVSV_BML_START_TVLINK_REPLY.class));
        context.screen().answered("shown");
    }

    private void control(String what, BG_TE_DTVSVLIB_CONTROL_TYPE type)
            throws DeskException, InterruptedException {
        CheckedCommands.need(ask(what, () -> context.service().DtvSvLib_ControlBML(
                        context.session(), EnumConstants.number(type), context.planes().data()),
                BG_EV_DTVSV_CONTROL_BML_REPLY.class));
    }

    private void status(String what, int wanted) throws DeskException, InterruptedException {
        context.commands().await(what, BG_EV_DTVSV_BML_STATUS_NOTIFY.class,
                notice -> notice.change_status() == wanted, other -> {});
    }

    private <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return context.commands().ask(what, command, reply);
    }

    private void show(Record event) {
        if (event instanceof BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY notice) {
            context.screen().reported("the picture is saved, result " + notice.result());
        }
    }
}
