package tenrik.desk.shell;

import java.time.Duration;
import java.util.concurrent.TimeUnit;

import tenrik.desk.core.Planes;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_EPG_INFO;

/** The state of a session, as its events report it, on the threads that deliver them. */
final class SessionState {
    private final int handle;
    private Planes planes;
    private BG_TS_DTVSVLIB_BROADCAST_INFO station;
    private BG_TS_DTVSVLIB_EPG_INFO guide;
    private boolean receiving;
    private boolean scanning;
    private BG_TE_DTVSVLIB_RECORDING_MEDIUM medium = BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL;
    private String title = "";

    SessionState(int handle) {
        this.handle = handle;
    }

    int handle() {
        return handle;
    }

    /** The planes on which it draws; made at the first call. */
    synchronized Planes planes() {
        if (planes == null) {
            planes = Planes.create();
        }
        return planes;
    }

    /** The station that was received last; null before the first. */
    synchronized BG_TS_DTVSVLIB_BROADCAST_INFO station() {
        return station;
    }

    synchronized boolean isReceiving() {
        return receiving;
    }

    /** Sets the station that is received from now on; its guide comes later. */
    synchronized void setReceiving(BG_TS_DTVSVLIB_BROADCAST_INFO received) {
        station = received;
        receiving = true;
        guide = null;
    }

    /** Reception has ended. */
    synchronized void setStopped() {
        receiving = false;
    }

    /** Sets the guide of the station. */
    synchronized void setGuide(BG_TS_DTVSVLIB_EPG_INFO notice) {
        guide = notice;
        notifyAll();
    }

    /**
     * The guide of the station that was received last.
     *
     * @param limit the longest wait for it while a station is received
     * @return the guide; null when there is none
     */
    synchronized BG_TS_DTVSVLIB_EPG_INFO guide(Duration limit) throws InterruptedException {
        long end = System.nanoTime() + limit.toNanos();
        while (guide == null && receiving) {
            long left = end - System.nanoTime();
            if (left <= 0) {
                break;
            }
            TimeUnit.NANOSECONDS.timedWait(this, left);
        }
        return guide;
    }

    synchronized boolean isScanning() {
        return scanning;
    }

    synchronized void setScanning(boolean now) {
        scanning = now;
    }

    /** The medium on which it records. */
    synchronized BG_TE_DTVSVLIB_RECORDING_MEDIUM medium() {
        return medium;
    }

    synchronized void setMedium(BG_TE_DTVSVLIB_RECORDING_MEDIUM where) {
        medium = where;
    }

    /** The title of the recording that ends next. */
    synchronized String title() {
        return title;
    }

    synchronized void setTitle(String recording) {
        title = recording;
    }
}
