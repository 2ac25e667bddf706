package tenrik.desk;

import java.lang.reflect.InvocationHandler;
import java.lang.reflect.Proxy;
import java.time.Duration;
import java.util.Map;
import java.util.Optional;
import java.util.TreeMap;
import java.util.concurrent.BlockingQueue;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.LinkedBlockingQueue;
import java.util.concurrent.TimeUnit;
import java.util.function.Consumer;
import java.util.function.Predicate;

import tenrik.service.dtvserver.DtvEventListener;

/**
 * Takes every event of the service, on whatever thread it comes, and keeps it until the program
 * looks for it.
 */
final class Mailbox {
    private final Pace pace;
    private final BlockingQueue<Record> events = new LinkedBlockingQueue<>();
    private final Map<String, Integer> received = new ConcurrentHashMap<>();
    private volatile Predicate<Record> sieve = any -> true;

    /** @param pace how the service's time passes; stepped time passes while this waits */
    Mailbox(Pace pace) {
        this.pace = pace;
    }

    /** What to give to the service as the receiver of its events. */
    DtvEventListener listener() {
        // Every event has a method of its own there; here all are treated alike.
        InvocationHandler keep = (proxy, method, arguments) -> {
            if (method.getDeclaringClass() == Object.class) {
                return switch (method.getName()) {
                    case "equals" -> proxy == arguments[0];
                    case "hashCode" -> System.identityHashCode(proxy);
                    default -> "Mailbox";
                };
            }
            received.merge(method.getName(), 1, Integer::sum);
            Record event = (Record) arguments[0];
            if (sieve.test(event)) {
                events.add(event);
            }
            return null;
        };
        return (DtvEventListener) Proxy.newProxyInstance(
                DtvEventListener.class.getClassLoader(), new Class<?>[] {DtvEventListener.class},
                keep);
    }

    /**
     * From now on every event is shown to the sieve as it comes, on the thread that brings it, and
     * kept when the sieve says so. The sieve does not throw, and does not wait for other events.
     */
    void sift(Predicate<Record> wanted) {
        sieve = wanted;
    }

    /** Throws away what nobody has looked for. */
    void clear() {
        events.clear();
    }

    /** How often each callback was called so far, by its name. */
    Map<String, Integer> received() {
        return new TreeMap<>(received);
    }

    /**
     * Waits for an event.
     *
     * @param wanted which one; the first that fits is taken
     * @param limit how long to wait at most: on the service's clock where its time is stepped,
     *     otherwise in real time
     * @param others gets the events that come before it, in order
     * @return the event; empty when it has not come in time, or when nothing comes any more
     */
    <T extends Record> Optional<T> await(
            Class<T> type, Predicate<T> wanted, Duration limit, Consumer<Record> others)
            throws InterruptedException {
        long end = now() + limit.toMillis();
        while (true) {
            Record event = next(end);
            if (event == null) {
                return Optional.empty();
            }
            if (type.isInstance(event) && wanted.test(type.cast(event))) {
                return Optional.of(type.cast(event));
            }
            others.accept(event);
        }
    }

    /** The next event; null when none comes before the end, in milliseconds of {@link #now}. */
    private Record next(long end) throws InterruptedException {
        if (!pace.isStepped()) {
            return events.poll(end - now(), TimeUnit.MILLISECONDS);
        }
        while (events.isEmpty()) {
            if (now() > end || !Simulator.advance()) {
                return null;
            }
        }
        return events.remove();
    }

    private long now() {
        return pace.isStepped() ? Simulator.now() : TimeUnit.NANOSECONDS.toMillis(System.nanoTime());
    }
}
