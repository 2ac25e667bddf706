import example.ChannelList;

import java.nio.file.Path;
import java.time.Duration;
import java.util.List;
import java.util.concurrent.CopyOnWriteArrayList;
import java.util.function.BooleanSupplier;

import tenrik.desk.ReplayedService;
import tenrik.desk.SimulatedService;
import tenrik.service.dtvserver.DtvServerProxy;

/**
 * A program with a Java side of its own: it scans twice. Recorded against a simulated service, then
 * replayed. Prints what the Java side saw.
 *
 *     OwnJava record FOLDER_OF_THE_EXAMPLE
 *     OwnJava replay CAPTURE [other [FOLDER_OF_CHANNEL_TABLES]]
 *
 * With "other" it sends a command that was not recorded, which a simulated service takes when there are
 * channel tables.
 */
public final class OwnJava {
    private static final Path LIBRARIES = Path.of(System.getProperty("dtv.libraries"));
    private static final List<String> FAILURES = new CopyOnWriteArrayList<>();

    private OwnJava() {}

    public static void main(String[] arguments) throws InterruptedException {
        if (arguments[0].equals("record")) {
            record(Path.of(arguments[1]));
        } else {
            // Twice: a replay can be started again in a process.
            for (int run = 0; run < 2; run++) {
                replay(Path.of(arguments[1]), arguments.length > 2,
                        arguments.length > 3 ? Path.of(arguments[3]) : null);
            }
        }
        System.exit(0);
    }

    private static void record(Path example) throws InterruptedException {
        try (SimulatedService service = SimulatedService.start(new SimulatedService.Settings(
                LIBRARIES, example.resolve("stations"), null, example.resolve("script.json"), 0, 1))) {
            scanTwice(condition -> {
                while (!condition.getAsBoolean()) {
                    if (!service.advance()) {
                        throw new IllegalStateException("the service does nothing more");
                    }
                }
            });
        }
    }

    private static void replay(Path capture, boolean otherwise, Path tables) throws InterruptedException {
        try (ReplayedService service = ReplayedService.start(new ReplayedService.Settings(
                LIBRARIES, capture, 0, Duration.ofSeconds(2), false, tables, null))) {
            FAILURES.clear();
            scanTwice(OwnJava::await);
            if (otherwise) {
                System.out.println(new DtvServerProxy().DtvSvLib_PausePlay(1));
            }
            ReplayedService.Result result = service.finish();
            System.out.println(result.report());
            System.out.println(result.same());
        }
    }

    private interface Waiter {
        void until(BooleanSupplier condition) throws InterruptedException;
    }

    private static void scanTwice(Waiter waiter) throws InterruptedException {
        ChannelList list = new ChannelList(FAILURES::add);
        waiter.until(list::isOpen);
        list.scan();
        waiter.until(list::isComplete);
        System.out.println(list.names());
        list.scan();
        waiter.until(() -> !FAILURES.isEmpty());
        System.out.println(FAILURES);
    }

    private static void await(BooleanSupplier condition) throws InterruptedException {
        for (int tries = 0; !condition.getAsBoolean() && tries < 5000; tries++) {
            Thread.sleep(1);
        }
    }
}
