import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;

/** An application that ends its process when its session has been closed. */
public final class ExitingListener implements DtvEventListener {
    private ExitingListener() {}

    public static void install() {
        BGCallBack.setListener(new ExitingListener());
    }

    @Override
    public void onEvDtvsvReleaseReply(BG_EV_DTVSV_RELEASE_REPLY event) {
        System.exit(37);
    }
}
