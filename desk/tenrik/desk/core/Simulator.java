package tenrik.desk.core;

import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.ThreadLocalRandom;

/**
 * The simulated DTV service, to which libDtv is connected. The library {@code libdtv_desk.so} must
 * have been loaded. There is one simulator at a time in a process.
 */
public final class Simulator {
    private Simulator() {}

    /**
     * How the service is started.
     *
     * @param channelTable the stations on the air, a file in the DVBv5 format
     * @param guide their programmes, an XMLTV file; null when there is no guide
     * @param script what modifies the service's behaviour, a JSON file; null when nothing does
     * @param pace how its time passes
     * @param seed the seed of its random numbers; null when they differ from run to run, and the
     *     time of day is the clock's
     */
    public record Settings(
            Path channelTable, Path guide, Path script, Pace pace, Integer seed) {}

    /**
     * The contents of a channel table.
     *
     * @param stations UHF stations on channels 13 to 62
     * @param vhfEntries entries left out because they are VHF
     * @param beyondEntries UHF entries left out because no receiver scans their channel
     * @param unusableEntries entries left out because they name no ISDB-T channel
     */
    public record Plan(
            int stations, int vhfEntries, int beyondEntries, int unusableEntries) {}

    /**
     * Starts the service.
     *
     * @param settings how
     * @return what was read of the channel table
     * @throws DeskException when a file cannot be read; the message says why
     */
    public static Plan start(Settings settings) throws DeskException {
        Pace pace = settings.pace();
        boolean repeated = settings.seed() != null;
        int[] counts = startNative(settings.channelTable().toString(), text(settings.guide()),
                text(settings.script()), pace.isStepped() ? 1 : pace.speed(), pace.isStepped(),
                repeated ? settings.seed() : ThreadLocalRandom.current().nextInt(), repeated);
        return new Plan(counts[0], counts[1], counts[2], counts[3]);
    }

    /** The path's text; empty when there is none. */
    private static String text(Path path) {
        return path != null ? path.toString() : "";
    }

    /**
     * Advances stepped time to the next thing that the service does, and waits until its events
     * have been delivered. Not from a callback.
     *
     * @return false when nothing more will happen
     */
    public static native boolean advance();

    /**
     * The service's clock.
     *
     * @return milliseconds since the service was started
     */
    public static native long now();

    /**
     * How often each command has reached the service.
     *
     * @return counts, by the names of the natives without DtvSvLib_
     */
    public static Map<String, Integer> calls() {
        Map<String, Integer> calls = new LinkedHashMap<>();
        String[] names = commands();
        int[] counts = arrivals();
        for (int index = 0; index < names.length; index++) {
            calls.put(names[index], counts[index]);
        }
        return calls;
    }

    /**
     * How many events have waited at most, for the callbacks of those before them.
     *
     * @return events that were posted and not yet given to the bridge
     */
    public static native long mostEventsWaiting();

    /**
     * How many events of one kind there were.
     *
     * @param caused those that the service itself caused, whether or not they were sent
     * @param dropped those of them that were not sent
     * @param added those that were sent besides: copies, and those of a script
     */
    public record EventCount(int caused, int dropped, int added) {
        /**
         * Those that were sent.
         *
         * @return their number
         */
        public int sent() {
            return caused - dropped + added;
        }
    }

    /**
     * What a rule of the script has done.
     *
     * @param rule its place in the script, as {@code commands[2]}; {@code stop}
     * @param message the command, or the class of the event; {@code -} for a stop at a time
     * @param acted how often it has taken effect; the stop: on how many commands
     */
    public record RuleCount(String rule, String message, int acted) {}

    /**
     * Stops the service's time, so that it sends nothing more, and waits until what was sent has
     * been delivered. Where time is stepped, what is due within a second is done first. Not from a
     * callback. Final.
     *
     * @return false when a callback does not return
     */
    public static boolean finish() {
        return finishNative();
    }

    /**
     * How many events of each kind there were until now.
     *
     * @return counts, by the simple names of the events' classes; an event that the bridge does not
     *     know by its number, as {@code 0x12345678}
     */
    public static Map<String, EventCount> events() {
        Map<String, EventCount> events = new LinkedHashMap<>();
        for (String line : eventLines()) {
            String[] words = line.split(" ");
            events.put(words[0], new EventCount(Integer.parseInt(words[1]),
                    Integer.parseInt(words[2]), Integer.parseInt(words[3])));
        }
        return events;
    }

    /**
     * What the rules of the script have done until now.
     *
     * @return one for each rule, in the order of the script's keys; none without a script
     */
    public static List<RuleCount> rules() {
        List<RuleCount> rules = new ArrayList<>();
        for (String line : ruleLines()) {
            String[] words = line.split(" ");
            rules.add(new RuleCount(words[0], words[1], Integer.parseInt(words[2])));
        }
        return rules;
    }

    /**
     * Makes a native surface that lasts as long as the process.
     *
     * @return its address, for {@link android.view.Surface}
     */
    public static native int newSurface();

    /**
     * Writes to a file what native code writes to standard output from now on: the bridge's copies
     * of its ERROR lines, also those of the process's end. Java's own output is not changed.
     *
     * @param file its path; it is created, or appended to
     * @throws DeskException when the file cannot be opened
     */
    public static native void redirectStandardOutput(String file) throws DeskException;

    /**
     * Disconnects the service and delivers no further event. Final: nothing can start it again.
     */
    public static native void stop();

    private static native int[] startNative(
            String table, String guide, String script, double speed, boolean stepped, int seed,
            boolean repeated) throws DeskException;

    private static native boolean finishNative();

    private static native String[] eventLines();

    private static native String[] ruleLines();

    private static native String[] commands();

    private static native int[] arrivals();
}
