package example;

import java.util.ArrayList;
import java.util.List;
import java.util.function.Consumer;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/**
 * A part of a service layer that uses the bridge: the list of channels. It is the same on the
 * receiver and at the desk.
 */
public final class ChannelList implements DtvEventListener {
    private final DtvServerProxy service = new DtvServerProxy();
    private final List<String> names = new ArrayList<>();
    private final Consumer<String> failed;
    private int session;
    private boolean complete;

    static {
        // On the receiver: System.loadLibrary("Dtv_jni").
        System.load(System.getProperty("dtv.libraries") + "/libDtv_jni.so");
    }

    /**
     * Opens a session.
     *
     * @param failed gets the failures, on a thread of the service
     */
    public ChannelList(Consumer<String> failed) {
        this.failed = failed;
        BGCallBack.setListener(this);
        check("create", service.DtvSvLib_Create(0, 0));
    }

    /** Begins a new list. */
    public synchronized void scan() {
        names.clear();
        complete = false;
        check("scan", service.DtvSvLib_StartScan(session));
    }

    /** Whether a session is open. */
    public synchronized boolean isOpen() {
        return session != 0;
    }

    /** Whether the list is complete. */
    public synchronized boolean isComplete() {
        return complete;
    }

    /** The stations found so far, by the names of their transport streams. */
    public synchronized List<String> names() {
        return List.copyOf(names);
    }

    @Override
    public synchronized void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY reply) {
        check("create", reply.result());
        session = reply.handle();
    }

    @Override
    public void onEvDtvsvStartScanReply(BG_EV_DTVSV_START_SCAN_REPLY reply) {
        check("scan", reply.result());
    }

    @Override
    public synchronized void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {
        if (event.result() == 0) {
            names.add(event.scan_result().network_info().ts_name());
        }
    }

    @Override
    public synchronized void onEvDtvsvTerminateScanNotify(BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY end) {
        check("scan", end.result());
        complete = true;
    }

    private void check(String what, BG_TE_DTVSVLIB_RESULT result) {
        if (result != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            failed.accept(what + ": " + result);
        }
    }

    private void check(String what, int result) {
        if (result != 0) {
            failed.accept(what + ": result " + result);
        }
    }
}
