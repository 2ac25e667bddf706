package tenrik.desk.evening;

import java.lang.reflect.Method;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;

import com.google.gson.Gson;
import com.google.gson.GsonBuilder;
import com.google.gson.annotations.SerializedName;

import tenrik.desk.core.Columns;
import tenrik.service.dtvserver.DtvEventListener;

/** Counts what happens in an evening, for the closing table. */
final class Summary {
    /** The bridge calls neither: it takes the two fatal errors and calls nothing. */
    private static final Set<String> NEVER_CALLED = Set.of(
            "onEvDtvsvBroadcastFatalErrorNotify", "onEvDtvsvCaptionFatalErrorNotify");

    private static final int WIDTH = 80;

    private final long begun = System.nanoTime();
    private final Map<String, String> refusals = new LinkedHashMap<>();
    private int replies;
    private String failure;

    /** Counts a reply with the result 0. */
    void replied() {
        replies++;
    }

    /** Adds a command that was refused as expected. */
    void refused(String what, String how) {
        refusals.put(what, how);
    }

    /** Notes why the evening has ended early. */
    void failed(String why) {
        failure = why;
    }

    /**
     * The figures at the end.
     *
     * @param calls how often each command has reached the service
     * @param received how often each callback was called
     * @param complete whether no part was left out: then all natives and callbacks are required
     */
    Result result(Map<String, Integer> calls, Map<String, Integer> received, boolean complete,
            String city, Integer seed, double clock, long mostEventsWaiting) {
        List<String> notCalled = calls.entrySet().stream().filter(call -> call.getValue() == 0)
                .map(Map.Entry::getKey).toList();
        List<String> callbacks = Arrays.stream(DtvEventListener.class.getMethods())
                .map(Method::getName).distinct().sorted().toList();
        List<String> notReceived = callbacks.stream()
                .filter(name -> !received.containsKey(name) && !NEVER_CALLED.contains(name))
                .toList();
        if (failure == null && complete && !(notCalled.isEmpty() && notReceived.isEmpty())) {
            failure = "not everything was seen: " + String.join(", ", notCalled)
                    + (notCalled.isEmpty() || notReceived.isEmpty() ? "" : ", ")
                    + String.join(", ", notReceived);
        }
        return new Result(failure == null, failure, city, seed,
                new Natives(calls.size() - notCalled.size(), calls.size(), notCalled),
                new Callbacks(received.size(), callbacks.size(),
                        NEVER_CALLED.stream().sorted().toList(), notReceived,
                        received.values().stream().mapToInt(Integer::intValue).sum()),
                replies, refusals, (System.nanoTime() - begun) / 1e9, clock, mostEventsWaiting);
    }

    /** Which natives' commands have reached the service. */
    record Natives(int called, int of, List<String> missing) {}

    /** Which callbacks were called, and which never are. */
    record Callbacks(int received, int of, List<String> never, List<String> missing, int events) {}

    /**
     * The figures of an evening.
     *
     * @param ok whether everything was answered as it should be
     * @param failure what was not; null when everything was
     * @param seconds real time
     * @param clock seconds on the service's clock
     * @param mostEventsWaiting how many events have waited at most until a callback was free
     */
    record Result(boolean ok, String failure, String city, Integer seed, Natives natives,
            Callbacks callbacks, int replies, Map<String, String> refusals, double seconds,
            double clock,
            @SerializedName("most_events_waiting") long mostEventsWaiting) {
        /** The figures as a table. */
        List<String> lines() {
            List<String> lines = new ArrayList<>();
            lines.add(row("natives called", natives.called + " of " + natives.of));
            missing(lines, natives.missing);
            lines.add(row("callbacks received", callbacks.received + " of " + callbacks.of
                    + ", " + callbacks.events + " events"));
            missing(lines, callbacks.missing);
            lines.add(row("callbacks never called", callbacks.never.size() + ", by design:"));
            callbacks.never.forEach(name -> lines.add("    " + name));
            lines.add(row("replies", replies + ", and all said OK"));
            lines.add(row("refusals provoked", refusals.size()
                    + (refusals.isEmpty() ? ""
                            : ok ? ", and all came back as they should:" : ":")));
            refusals.forEach((what, how) -> lines.add("    " + Columns.fit(what, 44) + " " + how));
            lines.add(row("time taken", String.format("%.1f s, %.1f s on the service's clock",
                    seconds, clock)));
            return lines;
        }

        private static void missing(List<String> lines, List<String> names) {
            StringBuilder line = new StringBuilder("    missing:");
            for (String name : names) {
                if (line.length() + name.length() >= WIDTH) {
                    lines.add(line.toString());
                    line = new StringBuilder("   ");
                }
                line.append(' ').append(name);
            }
            if (!names.isEmpty()) {
                lines.add(line.toString());
            }
        }

        private static String row(String name, String value) {
            return Columns.fit(name, 24) + value;
        }

        /** The figures as a JSON object. */
        String json() {
            return writer().toJson(this);
        }

        /** What writes them, and figures beside them. */
        static Gson writer() {
            return new GsonBuilder().setPrettyPrinting().serializeNulls().disableHtmlEscaping()
                    .create();
        }
    }
}
