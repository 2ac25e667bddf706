package tenrik.desk.core;

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
 * The events of the service that the program has not yet processed. They are added on the threads
 * that deliver them and taken on the thread that waits for them.
 */
public final class EventQueue {
    private final Pace pace;
    private final BlockingQueue<Record> events = new LinkedBlockingQueue<>();
    private final Map<String, Integer> received = new ConcurrentHashMap<>();
    private final Map<String, Integer> classes = new ConcurrentHashMap<>();
    private volatile Predicate<Record> filter = any -> true;

    /**
     * An empty queue.
     *
     * @param pace how the service's time passes; stepped time passes while {@link #await} waits
     */
    public EventQueue(Pace pace) {
        this.pace = pace;
    }

    /**
     * What adds events to the queue.
     *
     * @return a listener to be registered with the bridge
     */
    public DtvEventListener listener() {
        // Every event has a method of its own there; here all are processed in the same way.
        InvocationHandler keep = (proxy, method, arguments) -> {
            if (method.getDeclaringClass() == Object.class) {
                return switch (method.getName()) {
                    case "equals" -> proxy == arguments[0];
                    case "hashCode" -> System.identityHashCode(proxy);
                    default -> "EventQueue";
                };
            }
            received.merge(method.getName(), 1, Integer::sum);
            Record event = (Record) arguments[0];
            classes.merge(event.getClass().getSimpleName(), 1, Integer::sum);
            if (filter.test(event)) {
                events.add(event);
            }
            return null;
        };
        return (DtvEventListener) Proxy.newProxyInstance(
                DtvEventListener.class.getClassLoader(), new Class<?>[] {DtvEventListener.class},
                keep);
    }

    /**
     * Sets the filter of the events that are delivered from now on. It is called for every event,
     * on the thread that delivers the event.
     *
     * @param wanted true for an event that is added to the queue; does not throw, and does not wait
     *     for other events
     */
    public void setFilter(Predicate<Record> wanted) {
        filter = wanted;
    }

    /** Removes all events. */
    public void clear() {
        events.clear();
    }

    /**
     * How often each callback was called, whether or not its event was added.
     *
     * @return counts, by the names of the callbacks that were called at least once
     */
    public Map<String, Integer> received() {
        return new TreeMap<>(received);
    }

    /**
     * How many events of each class came, whether or not they were added.
     *
     * @return counts, by the simple names of the classes that came at least once
     */
    public Map<String, Integer> receivedClasses() {
        return new TreeMap<>(classes);
    }

    /**
     * Waits for an event, and removes it and those before it.
     *
     * @param <T> its class
     * @param type its class
     * @param wanted further conditions; the first event that meets all is taken
     * @param limit how long to wait at most: on the service's clock where its time is stepped,
     *     otherwise in real time
     * @param others gets the events that come before it, in order
     * @return the event; empty when it has not come in time, or when nothing more will come
     * @throws InterruptedException when the thread is interrupted meanwhile
     */
    public <T extends Record> Optional<T> await(
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

    /** The next event; null when none comes until {@code end}, milliseconds of {@link #now}. */
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
        return pace.isStepped() ? Simulator.now()
                : TimeUnit.NANOSECONDS.toMillis(System.nanoTime());
    }
}
