package tenrik.bench;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_NETWORK_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_MAIL_REQ;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PRG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SERVICE_INFO;

/**
 * Counts the events that reach Java and adds up one field of each. The session handle of an event
 * is the number of the thread that delivers it, from 1: each thread has counters of its own.
 */
public final class CountingListener implements DtvEventListener {
    private static final int THREADS = 32;
    /** Longs from one thread's counters to the next one's, so that no two are in one cache line. */
    private static final int STRIDE = 16;

    private static final long[] COUNTS = new long[(THREADS + 1) * STRIDE];
    private static final long[] SUMS = new long[(THREADS + 1) * STRIDE];

    private static boolean describes;
    private static String description = "";

    private CountingListener() {}

    /** Has all events counted from now on. */
    static void install() {
        BGCallBack.setListener(new CountingListener());
    }

    /**
     * Has each event described from now on, or not; that takes longer than the event.
     *
     * @param wanted whether it is wanted
     */
    static void describe(boolean wanted) {
        describes = wanted;
        description = "";
    }

    /**
     * The last event that was described.
     *
     * @return all its fields and those of its objects; empty when there is none
     */
    static String description() {
        return description;
    }

    /**
     * How many events have come.
     *
     * @return the number since the program's start, on all threads
     */
    static long count() {
        return total(COUNTS);
    }

    /**
     * What the events' fields add up to.
     *
     * @return the sum since the program's start, on all threads
     */
    static long sum() {
        return total(SUMS);
    }

    /**
     * Counts a callback that is no event, with two ints.
     *
     * @param a a thread's number
     * @param b what is added up
     */
    public static void onInts(int a, int b) {
        COUNTS[a * STRIDE]++;
        SUMS[a * STRIDE] += b;
    }

    @Override
    public void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {
        add(event, event.handle(), event.result());
    }

    @Override
    public void onEvDtvsvControlDecodeAudioReply(BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY event) {
        add(event, event.handle(), event.result() + 1);
    }

    @Override
    public void onEvDtvsvNetworkInfoNotify(BG_EV_DTVSV_NETWORK_INFO_NOTIFY event) {
        add(event, event.handle(), event.network_info().nw_name().length());
    }

    @Override
    public void onEvDtvsvServiceInfoNotify(BG_EV_DTVSV_SERVICE_INFO_NOTIFY event) {
        BG_TS_DTVSVLIB_SERVICE_INFO[] services = event.stream_info().service_info();
        add(event, event.handle(), services[services.length - 1].name().length());
    }

    @Override
    public void onEvDtvsvReceiveEpgInfoNotify(BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY event) {
        BG_TS_DTVSVLIB_PRG_INFO[] following = event.epg_info().after_prg_info();
        add(event, event.handle(), following[following.length - 1].text().length());
    }

    @Override
    public void onEvDtvsvBmlMailReq(BG_EV_DTVSV_BML_MAIL_REQ event) {
        add(event, event.handle(), event.mail_req().data().length());
    }

    private static void add(Record event, int handle, int value) {
        COUNTS[handle * STRIDE]++;
        SUMS[handle * STRIDE] += value;
        if (describes) {
            description = event.toString();
        }
    }

    private static long total(long[] values) {
        long sum = 0;
        for (long value : values) {
            sum += value;
        }
        return sum;
    }
}
