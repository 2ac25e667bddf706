package example;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertTrue;

import java.nio.file.Path;
import java.util.List;
import java.util.Queue;
import java.util.concurrent.ConcurrentLinkedQueue;
import java.util.function.BooleanSupplier;

import org.junit.AfterClass;
import org.junit.Before;
import org.junit.BeforeClass;
import org.junit.Test;

import tenrik.desk.SimulatedService;

/** The list of channels against a simulated service: three stations, and a second scan refused. */
public class ChannelListTest {
    private static final Path HERE = Path.of(System.getProperty("example.folder"));

    private static final Queue<String> FAILURES = new ConcurrentLinkedQueue<>();
    private static SimulatedService service;
    private static ChannelList list;

    @BeforeClass
    public static void start() {
        // Before the class that loads the bridge is initialised. Once in a process.
        service = SimulatedService.start(new SimulatedService.Settings(
                Path.of(System.getProperty("dtv.libraries")), HERE.resolve("stations"),
                null, HERE.resolve("script.json"), 0, 1));
        list = new ChannelList(FAILURES::add);
        advanceUntil(list::isOpen);
    }

    @AfterClass
    public static void stop() {
        service.close();
    }

    @Before
    public void forget() {
        FAILURES.clear();
    }

    /** Advances the service's time: no test waits, or depends on the speed of the machine. */
    private static void advanceUntil(BooleanSupplier condition) {
        while (!condition.getAsBoolean()) {
            assertTrue("the service does nothing more", service.advance());
        }
    }

    @Test
    public void firstScanFindsTheStationsAndTheSecondIsRefused() {
        list.scan();
        assertFalse(list.isComplete());
        advanceUntil(list::isComplete);
        assertEquals(List.of("Um", "Dois", "Três"), list.names());
        assertEquals(List.of(), List.copyOf(FAILURES));

        list.scan();
        advanceUntil(() -> !FAILURES.isEmpty());
        assertEquals(List.of("scan: result 7"), List.copyOf(FAILURES));
        assertEquals(List.of(), list.names());
    }
}
