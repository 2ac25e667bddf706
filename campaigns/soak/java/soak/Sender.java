package soak;

import android.view.Surface;

import java.util.Random;
import java.util.concurrent.TimeUnit;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_BACKGROUND_COLOR;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_PLAY_DIRECTION;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SKIP_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/** Sends the commands of one session. */
final class Sender {
    private static final int WIDTH = 320;
    private static final int HEIGHT = 180;
    private static final int TITLES = 64;
    private static final int LOG_OFF = 2;
    /** What the service answers to a session that presents nothing. */
    private static final int NOT_NOW = 1;
    private static final int VIDEO = 0;
    private static final int CAPTIONS = 1;

    private final DtvServerProxy service = new DtvServerProxy();
    private final Session session;
    private final int[] emptyChannels;
    private final BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO screen;
    private final BG_TS_DTVSVLIB_CAP_DRAWING_INFO captions;
    private final BG_TS_DTVSVLIB_BML_DRAWING_INFO data;
    private int log = LOG_OFF;
    private long synchronous;

    Sender(Session session, Surface surface, int[] emptyChannels) {
        this.session = session;
        this.emptyChannels = emptyChannels;
        screen = new BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO(surface, WIDTH, HEIGHT,
                BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0, BG_TE_DTVSVLIB_SCREEN_MODE.NORMAL);
        captions = new BG_TS_DTVSVLIB_CAP_DRAWING_INFO(surface, WIDTH, HEIGHT,
                BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0, new BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(
                        16, 20, 3, 2, 0, 0, BG_TE_DTVSVLIB_BACKGROUND_COLOR.BLACK,
                        BG_TE_DTVSVLIB_ONOFF.ON));
        data = new BG_TS_DTVSVLIB_BML_DRAWING_INFO(
                surface, WIDTH, HEIGHT, BG_TE_DTVSVLIB_SCREEN_ROTATE.ROTATE_0);
    }

    /** Commands that were answered before they returned. */
    long synchronous() {
        return synchronous;
    }

    /**
     * Sends commands until there are enough, the time is over or something was wrong, waits for
     * their answers, and lets the surfaces go.
     *
     * @param seed what the choice of the commands follows from
     * @param commands how many at most
     * @param end a moment of System.nanoTime
     */
    void run(long seed, long commands, long end) throws InterruptedException {
        Random random = new Random(seed);
        for (long sent = 0; sent < commands && !Failures.any(); sent++) {
            if ((sent & 63) == 0 && System.nanoTime() - end >= 0) {
                break;
            }
            if (!session.begin()) {
                break; // settle() says so
            }
            send(random);
        }
        release(VIDEO);
        release(CAPTIONS);
        session.settle();
    }

    private void release(int plane) throws InterruptedException {
        if (session.begin()) {
            session.sends(Kind.RELEASE_DISPLAY, plane);
            taken(service.DtvSvLib_ReleaseDisplay(session.handle, plane));
        }
    }

    private static void taken(BG_TE_DTVSVLIB_RESULT result) {
        if (result != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            Failures.add("a command was not taken: " + result);
        }
    }

    private void select() {
        int place = (int) (session.next() % (emptyChannels.length * Receiver.SERVICES));
        int channel = emptyChannels[place / Receiver.SERVICES];
        int serviceNumber = place % Receiver.SERVICES;
        session.sends(Kind.SELECT, channel * Receiver.SERVICES + serviceNumber);
        taken(service.DtvSvLib_SelectChannel(
                session.handle, new BG_TS_DTVSVLIB_BROADCAST_INFO(channel, serviceNumber)));
    }

    private void checkSynchronous(int handle, int result) {
        if (handle != session.handle || result != NOT_NOW) {
            Failures.add("session " + session.handle + ": answered with session " + handle
                    + " and result " + result);
        }
        synchronous++;
    }

    private void send(Random random) {
        int handle = session.handle;
        switch (random.nextInt(32)) {
            case 0 -> {
                session.sends(Kind.LNA, 0);
                taken(service.DtvSvLib_ControlLNA(handle, 16));
            }
            case 1 -> {
                log = 1 + random.nextInt(2);
                session.sends(Kind.SET_LOG, 0);
                taken(service.DtvSvLib_SetTunerLog(handle, log));
            }
            case 2, 3 -> {
                session.sends(Kind.LOG_STATUS, log);
                taken(service.DtvSvLib_GetTunerLogStatus(handle));
            }
            case 4, 5 -> {
                session.sends(Kind.SCREEN, 0);
                taken(service.DtvSvLib_SetScreenDisplay(handle, screen));
            }
            case 6 -> {
                session.sends(Kind.CAP_DISPLAY, 0);
                taken(service.DtvSvLib_SetCapDisplay(handle, captions));
            }
            case 7 -> {
                int plane = random.nextInt(2);
                session.sends(Kind.RELEASE_DISPLAY, plane);
                taken(service.DtvSvLib_ReleaseDisplay(handle, plane));
            }
            case 8 -> {
                session.sends(Kind.DISPLAY_MODE, 0);
                taken(service.DtvSvLib_ControlDisplayModeReq(handle, 0, 0));
            }
            case 9 -> {
                session.sends(Kind.SHOW_SCREEN, 0);
                taken(service.DtvSvLib_ControlScreenDisplay(handle, random.nextInt(2)));
            }
            case 10 -> {
                session.sends(Kind.DECODE_AUDIO, 0);
                taken(service.DtvSvLib_ControlDecodeAudio(handle, 1));
            }
            case 11 -> {
                session.sends(Kind.DUAL_MONO, 0);
                taken(service.DtvSvLib_ChangeSoundDualMono(handle, 1));
            }
            case 12 -> {
                session.sends(Kind.PAUSE, 0);
                taken(service.DtvSvLib_PausePlay(handle));
            }
            case 13 -> {
                session.sends(Kind.SKIP, 0);
                taken(service.DtvSvLib_SkipPlay(handle, new BG_TS_DTVSVLIB_SKIP_PLAY(
                        BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD, random.nextInt(10))));
            }
            case 14 -> {
                session.sends(Kind.CAPTIONS, 0);
                taken(service.DtvSvLib_ControlCap(handle, 1, 0, captions));
            }
            case 15 -> {
                session.sends(Kind.CAPTION_LANGUAGE, 0);
                taken(service.DtvSvLib_ChangeCapLang(handle, 0));
            }
            case 16 -> {
                session.sends(Kind.START_REC, 0);
                taken(service.DtvSvLib_StartRec(handle, 0));
            }
            case 17 -> {
                session.sends(Kind.TERMINATE_REC, 0);
                String title = "Programa gravado 録画 ".repeat(4)
                        .substring(0, random.nextInt(TITLES));
                taken(service.DtvSvLib_TerminateRec(handle, new BG_TS_DTVSVLIB_TERMINATE_REC_REQ(
                        BG_TE_DTVSVLIB_ONOFF.ON, 0, title)));
            }
            case 18 -> {
                session.sends(Kind.DATA, 0);
                taken(service.DtvSvLib_ControlBML(handle, 1, data));
            }
            case 19 -> {
                var decoded = service.DtvSvLib_ControlDecodeScreen_Sync(handle, 1);
                checkSynchronous(decoded.handle(), decoded.return_value());
                var played = service.DtvSvLib_TerminatePlay_Sync(handle);
                checkSynchronous(played.handle(), played.return_value());
                select();
            }
            default -> select();
        }
    }

    /**
     * Receives and scans until the others have ended, so that events with many objects come
     * between theirs.
     *
     * @param stations channels with a station
     * @param scansEnded has a permit for each scan that has ended
     */
    void watch(int[] stations, java.util.concurrent.Semaphore scansEnded, Thread[] others)
            throws InterruptedException {
        for (int turn = 0; !Failures.any() && anyAlive(others); turn++) {
            BG_TS_DTVSVLIB_BROADCAST_INFO station =
                    new BG_TS_DTVSVLIB_BROADCAST_INFO(stations[turn % stations.length], 0);
            if (!session.begin()) {
                break;
            }
            session.sends(Kind.START_RECEIVING, 0);
            taken(service.DtvSvLib_StartBroadcastReceiving(session.handle, station));
            for (Thread other : others) {
                other.join(5);
            }
            if (!session.begin()) {
                break;
            }
            session.sends(Kind.END_RECEIVING, 0);
            taken(service.DtvSvLib_TerminateBroadcastReceiving(session.handle));
            session.settle();
            if (!session.begin()) {
                break;
            }
            session.sends(Kind.START_SCAN, 0);
            taken(service.DtvSvLib_StartScan(session.handle));
            if (!scansEnded.tryAcquire(Failures.LONGEST_SECONDS, TimeUnit.SECONDS)) {
                Failures.add("a scan did not end");
            }
        }
        session.settle();
    }

    private static boolean anyAlive(Thread[] threads) {
        for (Thread thread : threads) {
            if (thread.isAlive()) {
                return true;
            }
        }
        return false;
    }
}
