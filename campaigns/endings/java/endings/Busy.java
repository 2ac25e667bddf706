package endings;

import java.nio.file.Path;
import java.util.Random;
import java.util.concurrent.CountDownLatch;
import java.util.concurrent.atomic.AtomicIntegerArray;
import java.util.concurrent.atomic.LongAdder;

import tenrik.desk.SimulatedService;
import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CONTROL_LNA_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/**
 * A process whose threads send commands and receive events without a pause, until it ends in the way
 * that is asked for.
 *
 * <p>Arguments: the folder of the libraries, the channel table, the guide, the way, the milliseconds
 * from the moment when all are busy to the end, how many threads send, how many deliver, the seed.
 * Prints "loading" first, "busy" when all threads are, and "ending CALLS EVENTS" just before the end.
 */
public final class Busy implements DtvEventListener {
    /** What the process ends with where the way lets it choose. */
    private static final int STATUS = 37;
    private static final int[] CHANNELS = {13, 20, 32, 40, 62};

    private final CountDownLatch opened;
    private final AtomicIntegerArray handles;
    private final LongAdder calls = new LongAdder();
    private final LongAdder events = new LongAdder();
    private int created;

    private Busy(int senders) {
        opened = new CountDownLatch(senders);
        handles = new AtomicIntegerArray(senders);
    }

    private static native void setDeliveryThreads(int count);

    public static void main(String[] arguments) throws InterruptedException {
        System.out.println("loading");
        Path libraries = Path.of(arguments[0]).toAbsolutePath();
        String way = arguments[3];
        int senders = Integer.parseInt(arguments[5]);
        // Seconds of the service pass in milliseconds: events come all the time.
        SimulatedService service = SimulatedService.start(new SimulatedService.Settings(
                libraries, Path.of(arguments[1]), Path.of(arguments[2]), null, 2000,
                Integer.valueOf(arguments[7])));
        System.load(libraries.resolve("libbusy.so").toString());
        setDeliveryThreads(Integer.parseInt(arguments[6]));
        System.load(libraries.resolve("libDtv_jni.so").toString());
        Busy busy = new Busy(senders);
        BGCallBack.setListener(busy);
        busy.begin(senders, Long.parseLong(arguments[7]), way);
        System.out.println("busy");
        Thread.sleep(Integer.parseInt(arguments[4]));
        busy.end(way, service);
    }

    private void begin(int senders, long seed, String way) throws InterruptedException {
        DtvServerProxy proxy = new DtvServerProxy();
        for (int sender = 0; sender < senders; sender++) {
            proxy.DtvSvLib_Create(0, 100);
        }
        opened.await();
        for (int sender = 0; sender < senders; sender++) {
            Random random = new Random(seed * senders + sender);
            int handle = handles.get(sender);
            Thread thread = new Thread(() -> send(proxy, handle, random), "sender-" + sender);
            thread.setDaemon(true);
            thread.start();
        }
    }

    private void send(DtvServerProxy proxy, int handle, Random random) {
        while (true) {
            switch (random.nextInt(8)) {
                case 0 -> proxy.DtvSvLib_StartBroadcastReceiving(handle, station(random));
                case 1, 2 -> proxy.DtvSvLib_SelectChannel(handle, station(random));
                case 3 -> proxy.DtvSvLib_TerminateBroadcastReceiving_Sync(handle);
                case 4 -> proxy.DtvSvLib_StartScan(handle);
                case 5 -> proxy.DtvSvLib_ControlDecodeAudio_Sync(handle, 1);
                case 6 -> proxy.DtvSvLib_CancelScan(handle);
                default -> proxy.DtvSvLib_ControlLNA(handle, 16);
            }
            calls.increment();
        }
    }

    private static BG_TS_DTVSVLIB_BROADCAST_INFO station(Random random) {
        return new BG_TS_DTVSVLIB_BROADCAST_INFO(CHANNELS[random.nextInt(CHANNELS.length)], 0);
    }

    private void end(String way, SimulatedService service) throws InterruptedException {
        if (way.equals("signal")) {
            Thread.sleep(Long.MAX_VALUE);
        }
        System.out.println("ending " + calls.sum() + " " + events.sum());
        switch (way) {
            case "System.exit" -> System.exit(STATUS);
            case "Runtime.halt" -> Runtime.getRuntime().halt(STATUS);
            // The delivery threads are no daemons, and would keep the VM.
            case "main-returns" -> service.close();
            case "main-throws" -> {
                service.close();
                throw new IllegalStateException("thrown out of main");
            }
            case "thread-throws" -> {
                // As a device does: the first exception that nobody catches ends the process.
                Thread.setDefaultUncaughtExceptionHandler((thread, thrown) -> System.exit(STATUS));
                Thread thread = new Thread(() -> {
                    throw new IllegalStateException("thrown out of a thread");
                });
                thread.start();
                Thread.sleep(Long.MAX_VALUE);
            }
            case "service-gone" -> {
                service.close();
                checkNoService();
                Thread.sleep(20);
                System.exit(STATUS);
            }
            default -> throw new IllegalArgumentException(way);
        }
    }

    /** Without a service a command is refused; the events have ended. */
    private void checkNoService() {
        long before = events.sum();
        BG_TE_DTVSVLIB_RESULT result = new DtvServerProxy().DtvSvLib_ControlLNA(1, 16);
        if (result != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG || events.sum() != before) {
            System.out.println("without a service a command ended with " + result + ", and "
                    + (events.sum() - before) + " events came");
        }
    }

    @Override
    public void onEvDtvsvCreateReply(BG_EV_DTVSV_CREATE_REPLY event) {
        events.increment();
        synchronized (this) {
            handles.set(created++, event.handle());
        }
        opened.countDown();
    }

    @Override
    public void onEvDtvsvSelectChannelReply(BG_EV_DTVSV_SELECT_CHANNEL_REPLY event) {
        events.increment();
    }

    @Override
    public void onEvDtvsvControlLNAReply(BG_EV_DTVSV_CONTROL_LNA_REPLY event) {
        events.increment();
    }

    @Override
    public void onEvDtvsvScanNotify(BG_EV_DTVSV_SCAN_NOTIFY event) {
        events.increment();
    }

    @Override
    public void onEvDtvsvReceiveSensitivityNotify(BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY event) {
        events.increment();
    }
}
