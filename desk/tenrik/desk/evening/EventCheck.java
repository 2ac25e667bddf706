package tenrik.desk.evening;

import java.util.Map;
import java.util.Set;
import java.util.TreeMap;
import java.util.TreeSet;
import java.util.concurrent.ConcurrentHashMap;

import tenrik.desk.core.EventQueue;
import tenrik.desk.core.Simulator;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;

/**
 * Compares all events that came with those that the service caused: events that were lost, that nobody
 * caused, and that name a session which was never opened.
 */
final class EventCheck {
    private static final String WHAT = "Events of the evening";

    private final EventQueue events;
    private final Set<Integer> sessions = ConcurrentHashMap.newKeySet();
    /** The handles of events that name no session, by the events' classes. */
    private final Map<String, Set<Integer>> strange = new ConcurrentHashMap<>();

    /** Sees the events of the queue from now on. */
    EventCheck(EventQueue events) {
        this.events = events;
        events.setFilter(event -> {
            see(event);
            return true;
        });
    }

    /** A session was opened. */
    void opened(int handle) {
        sessions.add(handle);
    }

    private void see(Record event) {
        int handle = handleOf(event);
        // The first event about a session is the one that names it.
        if (!(event instanceof BG_EV_DTVSV_CREATE_REPLY) && !sessions.contains(handle)) {
            strange.computeIfAbsent(event.getClass().getSimpleName(),
                    name -> ConcurrentHashMap.newKeySet()).add(handle);
        }
    }

    /** The session that an event is about; -1 when the event does not say it. */
    static int handleOf(Record event) {
        try {
            return (int) event.getClass().getMethod("handle").invoke(event);
        } catch (ReflectiveOperationException none) {
            return -1;
        }
    }

    private static String text(Simulator.EventCount count, int came) {
        String text = String.valueOf(came);
        if (came != count.sent()) {
            text += ", of " + count.sent() + " sent";
        }
        if (count.dropped() > 0 && count.added() > 0) {
            text += ", after " + count.dropped() + (count.dropped() == 1 ? " was" : " were")
                    + " dropped and " + count.added() + " added";
        }
        return text;
    }

    /** Ends the service's time, and adds what came otherwise. */
    void finish(Differences differences) {
        differences.begin("Events");
        if (!Simulator.finish()) {
            differences.add(WHAT, "", "", "that each callback returns", "one that does not");
        }
        Map<String, Integer> received = events.receivedClasses();
        Map<String, Simulator.EventCount> counts = Simulator.events();
        new TreeMap<>(counts).forEach((name, count) -> {
            int came = received.getOrDefault(name, 0);
            if (count.dropped() > 0 || count.added() > 0 || count.sent() != came) {
                differences.add(WHAT, "", name, count.caused() + " that the service caused",
                        text(count, came));
            }
        });
        new TreeMap<>(strange).forEach((name, handles) ->
                differences.add(WHAT, "", name, "about sessions " + new TreeSet<>(sessions),
                        "about " + new TreeSet<>(handles)));
    }
}
