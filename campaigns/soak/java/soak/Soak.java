package soak;

import android.view.Surface;

import java.lang.management.ManagementFactory;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.TimeUnit;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

import javax.management.JMException;
import javax.management.ObjectName;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvServerProxy;

/** The Java side of the soak: threads that send commands, and a listener that checks the events. */
public final class Soak {
    private static final Pattern REFERENCES =
            Pattern.compile("JNI global refs: (\\d+), weak refs: (\\d+)");

    private static final Receiver RECEIVER = new Receiver();
    private static final List<Session> SESSIONS = new ArrayList<>();
    private static final List<Sender> SENDERS = new ArrayList<>();
    private static int[] stations;

    private Soak() {}

    /** Loads the bridge. */
    public static void load(String bridge) {
        System.load(bridge);
    }

    /**
     * Opens the sessions: one for each thread, and one that receives.
     *
     * @param emptyChannels channels on which no station is
     * @param occupied channels with a station
     * @return what was wrong; empty when nothing was
     */
    public static String open(int threads, int surface, int[] emptyChannels, int[] occupied)
            throws InterruptedException {
        stations = occupied.clone();
        BGCallBack.setListener(RECEIVER);
        for (int index = 0; index <= threads; index++) {
            RECEIVER.expectCreation();
            new DtvServerProxy().DtvSvLib_Create(0, 100);
            int handle = RECEIVER.created();
            if (handle == 0) {
                return "no session was opened";
            }
            Session session = new Session(handle, index);
            SESSIONS.add(session);
            SENDERS.add(new Sender(session, new Surface(surface), emptyChannels));
        }
        int last = SESSIONS.stream().mapToInt(session -> session.handle).max().orElseThrow();
        Session[] byHandle = new Session[last + 1];
        SESSIONS.forEach(session -> byHandle[session.handle] = session);
        RECEIVER.setSessions(byHandle);
        return Failures.take();
    }

    /**
     * Sends commands on all threads, and returns when they have ended and every event has come.
     *
     * @param commands how many each thread sends at most
     * @param seconds how long at most
     * @return what was wrong; empty when nothing was
     */
    public static String stage(long seed, long commands, double seconds)
            throws InterruptedException {
        long end = System.nanoTime() + (long) (seconds * 1e9);
        int threads = SENDERS.size() - 1;
        Thread[] running = new Thread[threads];
        for (int index = 0; index < threads; index++) {
            Sender sender = SENDERS.get(index);
            long own = seed * threads + index;
            running[index] = new Thread(() -> run(sender, own, commands, end), "sender-" + index);
        }
        Arrays.stream(running).forEach(Thread::start);
        SENDERS.get(threads).watch(stations, RECEIVER.scansEnded(), running);
        for (Thread thread : running) {
            thread.join();
        }
        return Failures.take();
    }

    private static void run(Sender sender, long seed, long commands, long end) {
        try {
            sender.run(seed, commands, end);
        } catch (InterruptedException | RuntimeException | Error failure) {
            Failures.add("a sending thread ended: " + failure);
        }
    }

    /** Commands whose answers came as events. */
    public static long roundTrips() {
        return SESSIONS.stream().mapToLong(Session::answers).sum();
    }

    /** Commands that were answered before they returned. */
    public static long synchronous() {
        return SENDERS.stream().mapToLong(Sender::synchronous).sum();
    }

    /** Events that answer no command of a numbered session. */
    public static long otherEvents() {
        return RECEIVER.others();
    }

    /** Threads on which answers came. */
    public static long deliveryThreads() {
        return RECEIVER.threads();
    }

    /** Bytes of the Java heap in use, when everything unused has been dropped. */
    public static long heapInUse() {
        Runtime runtime = Runtime.getRuntime();
        for (int turn = 0; turn < 2; turn++) {
            System.gc();
        }
        return runtime.totalMemory() - runtime.freeMemory();
    }

    /** The global and weak references that the VM has, by its own count; -1 when it does not say. */
    public static long references() throws JMException {
        String[] none = {};
        Object dump = ManagementFactory.getPlatformMBeanServer().invoke(
                new ObjectName("com.sun.management:type=DiagnosticCommand"), "threadPrint",
                new Object[] {none}, new String[] {String[].class.getName()});
        Matcher matcher = REFERENCES.matcher(String.valueOf(dump));
        return matcher.find()
                ? Long.parseLong(matcher.group(1)) + Long.parseLong(matcher.group(2)) : -1;
    }

    /** Waits a little for threads that have just ended. */
    public static void pause() throws InterruptedException {
        TimeUnit.MILLISECONDS.sleep(20);
    }
}
