package tenrik.desk;

import java.util.function.Supplier;

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

/** A page of data broadcasting, all that it asks for, and a link into it from elsewhere. */
final class DataBroadcast {
    private static final int OFF = 0;
    private static final int NETWORK = 1620;
    private static final int SERVICE = 51864;

    private final Stage stage;
    private final Application application;

    DataBroadcast(Stage stage) {
        this.stage = stage;
        this.application = new Application(stage.service(), stage.screen());
    }

    void run() throws DeskException, InterruptedException {
        stage.screen().title("Data broadcasting");
        stage.dialogue().refused("Answer a mail that was not asked for",
                () -> stage.service().DtvSvLib_BMLMailReply(stage.session(), 0), Stage.NOT_SENT);
        page();
        textInputLeftOpen();
        links();
    }

    private void page() throws DeskException, InterruptedException {
        String what = "Turn the data on, and answer all that the page asks for";
        control(what, BG_TE_DTVSVLIB_CONTROL_TYPE.ON);
        for (int request = 0; request < Application.REQUESTS; request++) {
            application.answer(stage.dialogue().await(what, Record.class, Application::isRequest,
                    this::tell));
        }
        stage.dialogue().send("Press the blue button", () ->
                stage.service().DtvSvLib_BMLKeyEventNotify(stage.session(),
                        new BG_TS_DTVSVLIB_KEY_CODE_NOTIFY(BG_TE_DTVSVLIB_KEYCODE.BLUE,
                                BG_TE_DTVSVLIB_KEY_EVENT_TYPE.PRESS, 0, 0)));
        stage.exchange("Suspend the page, and wait for the answer", "suspended",
                () -> stage.service().DtvSvLib_ControlBML_Sync(stage.session(),
                        Stage.number(BG_TE_DTVSVLIB_CONTROL_TYPE.SUSPEND), stage.planes().data())
                        .return_value());
        control("Resume it", BG_TE_DTVSVLIB_CONTROL_TYPE.RESUME);
    }

    /** The page from its beginning; it goes while it still waits for a text. */
    private void textInputLeftOpen() throws DeskException, InterruptedException {
        String what = "Start the browser again";
        ask(what, () -> stage.service().DtvSvLib_BMLRebootBrowserReq(stage.session()),
                BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY.class);
        while (true) {
            Record request = stage.dialogue().await(what, Record.class, Application::isRequest,
                    this::tell);
            if (request instanceof BG_EV_DTVSV_BML_START_FEP_REQ) {
                stage.screen().told("a text is wanted; nobody enters it");
                break;
            }
            application.answer(request);
        }
        String off = "Turn the data off";
        control(off, BG_TE_DTVSVLIB_CONTROL_TYPE.OFF);
        stage.dialogue().await(off, BG_EV_DTVSV_BML_END_FEP_NOTIFY.class, any -> true,
                this::tell);
        status(off, OFF);
        stage.screen().answered("off, and the text input has ended");
    }

    private void links() throws DeskException, InterruptedException {
        startLink();
        ask("Leave the link", () -> stage.service().DtvSvLib_BMLEndTvLinkReq(stage.session()),
                BG_EV_DTVSV_BML_END_TVLINK_REPLY.class);
        status("Leave the link", OFF);
        stage.screen().answered("left");
        startLink();
        stage.exchange("Leave it, and wait for the answer", "left",
                () -> stage.service().DtvSvLib_BMLEndTvLink_Sync(stage.session()).return_value());
        status("Leave the link", OFF);
    }

    private void startLink() throws DeskException, InterruptedException {
        ask("Follow a link into the data", () -> stage.service().DtvSvLib_BMLStartTvLinkReq(
                        stage.session(), Stage.number(BG_TE_DTVSVLIB_CONTROL_TYPE.ON),
                        new BG_TS_DTVSVLIB_BML_START_INFO(NETWORK, SERVICE,
                                new byte[] {2, 3, 5, 7, 11, 13}, "http://example.com/receitas",
                                stage.planes().data())),
                BG_EV_DTVSV_BML_START_TVLINK_REPLY.class);
        stage.screen().answered("shown");
    }

    private void control(String what, BG_TE_DTVSVLIB_CONTROL_TYPE type)
            throws DeskException, InterruptedException {
        ask(what, () -> stage.service().DtvSvLib_ControlBML(stage.session(), Stage.number(type),
                stage.planes().data()), BG_EV_DTVSV_CONTROL_BML_REPLY.class);
    }

    private void status(String what, int wanted) throws DeskException, InterruptedException {
        stage.dialogue().await(what, BG_EV_DTVSV_BML_STATUS_NOTIFY.class,
                news -> news.change_status() == wanted, other -> {});
    }

    private <T extends Record> void ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        stage.dialogue().ask(what, command, reply);
    }

    private void tell(Record event) {
        if (event instanceof BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY news) {
            stage.screen().told("the picture is saved, result " + news.result());
        }
    }
}
