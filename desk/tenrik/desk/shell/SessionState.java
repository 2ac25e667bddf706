package tenrik.desk.shell;

import java.time.Duration;
import java.util.concurrent.TimeUnit;

import tenrik.desk.core.Planes;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_EPG_INFO;

/** What the remote control knows of a session. Events change it, on their threads. */
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

    /** Where it draws; made when it is first asked for. */
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

    /** It receives a station from now on, whose guide comes later. */
    synchronized void receives(BG_TS_DTVSVLIB_BROADCAST_INFO received) {
        station = received;
        receiving = true;
        guide = null;
    }

    /** It receives nothing more. */
    synchronized void stopped() {
        receiving = false;
    }

    /** The guide of the station has come. */
    synchronized void setGuide(BG_TS_DTVSVLIB_EPG_INFO notice) {
        guide = notice;
        notifyAll();
    }

    /**
     * The guide of the station that was received last.
     *
     * @param limit how long to wait for it, when one is being received
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

    /** Where it records. */
    synchronized BG_TE_DTVSVLIB_RECORDING_MEDIUM medium() {
        return medium;
    }

    synchronized void setMedium(BG_TE_DTVSVLIB_RECORDING_MEDIUM where) {
        medium = where;
    }

    /** What the recording is called that ends next. */
    synchronized String title() {
        return title;
    }

    synchronized void setTitle(String recording) {
        title = recording;
    }
}
