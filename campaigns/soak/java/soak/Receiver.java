package soak;

import java.util.concurrent.CountDownLatch;
import java.util.concurrent.Semaphore;
import java.util.concurrent.atomic.AtomicLong;
import java.util.concurrent.atomic.LongAdder;

import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CA_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_COMPONENT_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GOOD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_NETWORK_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_BML_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_CAP_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_LNA_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_PAUSE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SET_TUNER_LOG_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SKIP_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;

/**
 * Takes the events, on the threads that deliver them. An answer carries its command's number in the
 * place of the result; other events are counted.
 */
final class Receiver implements DtvEventListener {
    /** Service numbers on one channel. */
    static final int SERVICES = 3;

    /** The sessions by their handles. They are set before their first commands. */
    private volatile Session[] sessions = {};
    /** The number of the last answer in each session, on each delivery thread. */
    private final ThreadLocal<long[]> last = ThreadLocal.withInitial(this::newThread);
    private final AtomicLong threads = new AtomicLong();
    private final LongAdder others = new LongAdder();
    private volatile int created;
    private volatile CountDownLatch creation;
    private final Semaphore scansEnded = new Semaphore(0);

    /** Threads that have delivered an answer. */
    long threads() {
        return threads.get();
    }

    /** Events that are no answers. */
    long others() {
        return others.sum();
    }

    /** Before a Create is sent. */
    void expectCreation() {
        creation = new CountDownLatch(1);
    }

    /** The handle of the session that was created; 0 when none was. */
    int created() throws InterruptedException {
        return creation.await(Failures.LONGEST_SECONDS, java.util.concurrent.TimeUnit.SECONDS)
                ? created : 0;
    }

    /** An event of the end of a scan may be taken from it. */
    Semaphore scansEnded() {
        return scansEnded;
    }

    void setSessions(Session[] byHandle) {
        sessions = byHandle;
    }

    private long[] newThread() {
        threads.incrementAndGet();
        return new long[sessions.length];
    }

    private void answer(int kind, int handle, int result, int extra) {
        if (handle <= 0 || handle >= sessions.length || sessions[handle] == null) {
            Failures.add("an event of kind " + kind + " names session " + handle);
            return;
        }
        long number = Integer.toUnsignedLong(result);
        long[] before = last.get();
        if (number <= before[handle]) {
            Failures.add("session " + handle + ": event " + number + " came after event "
                    + before[handle] + " on " + Thread.currentThread().getName());
        }
        before[handle] = number;
        sessions[handle].answered(kind, number, extra);
    }

    private void other(boolean right, Object event) {
        others.increment();
        if (!right) {
            Failures.add("wrong contents: " + event);
        }
    }

    @Override
    public void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {
        others.increment();
        created = event.result() == 0 ? event.handle() : 0;
        creation.countDown();
    }

    @Override
    public void onEvDtvsvSelectChannelReply(BG_EV_DTVSV_SELECT_CHANNEL_REPLY event) {
        answer(Kind.SELECT, event.handle(), event.result(),
                (int) event.physical_channel() * SERVICES + event.service_no());
    }

    @Override
    public void onEvDtvsvControlLNAReply(BG_EV_DTVSV_CONTROL_LNA_REPLY event) {
        answer(Kind.LNA, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvSetTunerLogReply(BG_EV_DTVSV_SET_TUNER_LOG_REPLY event) {
        answer(Kind.SET_LOG, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvGetTunerLogStatusReply(BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY event) {
        answer(Kind.LOG_STATUS, event.handle(), event.result(), event.log_status());
    }

    @Override
    public void onEvDtvsvSetScreenDisplayReply(BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY event) {
        answer(Kind.SCREEN, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvSetCapDisplayReply(BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY event) {
        answer(Kind.CAP_DISPLAY, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvReleaseDisplayReply(BG_EV_DTVSV_RELEASE_DISPLAY_REPLY event) {
        answer(Kind.RELEASE_DISPLAY, event.handle(), event.result(), event.drawing_destination());
    }

    @Override
    public void onEvDtvsvControlDisplayModeReply(BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY event) {
        answer(Kind.DISPLAY_MODE, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvControlScreenDisplayReply(
            BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY event) {
        answer(Kind.SHOW_SCREEN, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvControlDecodeAudioReply(BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY event) {
        answer(Kind.DECODE_AUDIO, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvChangeSoundDualMonoReply(BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY event) {
        answer(Kind.DUAL_MONO, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvPausePlayReply(BG_EV_DTVSV_PAUSE_PLAY_REPLY event) {
        answer(Kind.PAUSE, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvSkipPlayReply(BG_EV_DTVSV_SKIP_PLAY_REPLY event) {
        answer(Kind.SKIP, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvControlCapReply(BG_EV_DTVSV_CONTROL_CAP_REPLY event) {
        answer(Kind.CAPTIONS, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvChangeCapLangReply(BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY event) {
        answer(Kind.CAPTION_LANGUAGE, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvStartRecReply(BG_EV_DTVSV_START_REC_REPLY event) {
        answer(Kind.START_REC, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvTerminateRecReply(BG_EV_DTVSV_TERMINATE_REC_REPLY event) {
        answer(Kind.TERMINATE_REC, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvControlBmlReply(BG_EV_DTVSV_CONTROL_BML_REPLY event) {
        answer(Kind.DATA, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvStartBroadcastReply(BG_EV_DTVSV_START_BROADCAST_REPLY event) {
        answer(Kind.START_RECEIVING, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvTerminateBroadcastReply(BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY event) {
        answer(Kind.END_RECEIVING, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvStartScanReply(BG_EV_DTVSV_START_SCAN_REPLY event) {
        answer(Kind.START_SCAN, event.handle(), event.result(), 0);
    }

    @Override
    public void onEvDtvsvAssignVideoAreaNotify(BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY event) {
        other(event.result() == 0, event);
    }

    @Override
    public void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {
        other(event.scan_result().network_info().ts_name() != null, event);
    }

    @Override
    public void onEvDtvsvTerminateScanNotify(BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY event) {
        other(event.result() == 0, event);
        scansEnded.release();
    }

    @Override
    public void onEvDtvsvServiceInfoNotify(BG_EV_DTVSV_SERVICE_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvNetworkInfoNotify(BG_EV_DTVSV_NETWORK_INFO_NOTIFY event) {
        other(!event.network_info().ts_name().isEmpty(), event);
    }

    @Override
    public void onEvDtvsvComponentInfoNotify(BG_EV_DTVSV_COMPONENT_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvUpdateVideoInfoNotify(BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvUpdateAudioInfoNotify(BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvGetCaptionDataNotify(BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvCopyControlInfoNotify(BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvCaInfoNotify(BG_EV_DTVSV_CA_INFO_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvReceiveEpgInfoNotify(BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY event) {
        other(event.epg_info().cur_prg_info() != null, event);
    }

    @Override
    public void onEvDtvsvGoodSensNotify(BG_EV_DTVSV_GOOD_SENS_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvBadSensNotify(BG_EV_DTVSV_BAD_SENS_NOTIFY event) {
        other(true, event);
    }

    @Override
    public void onEvDtvsvReceiveSensitivityNotify(BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY event) {
        other(true, event);
    }
}
