package tenrik.desk.evening;

import java.util.Map;

import tenrik.desk.core.Simulator;

/** The command that was sent last: its name, and how long ago it was sent. */
final class LastCommand {
    private Map<String, Integer> arrivedBefore = Map.of();
    private long sentAt;

    /** A command is about to be sent. */
    void sends() {
        arrivedBefore = Simulator.calls();
        sentAt = Simulator.now();
    }

    /** Its name, when it has reached the service; otherwise empty. */
    String name() {
        StringBuilder names = new StringBuilder();
        Simulator.calls().forEach((name, count) -> {
            if (count > arrivedBefore.getOrDefault(name, count)) {
                names.append(names.isEmpty() ? "" : " ").append(name);
            }
        });
        return names.toString();
    }

    /** Milliseconds of the service's clock since it was sent. */
    long age() {
        return Simulator.now() - sentAt;
    }
}
