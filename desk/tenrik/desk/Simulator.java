package tenrik.desk;

import java.nio.file.Path;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.concurrent.ThreadLocalRandom;

/**
 * The simulated DTV service behind libDtv. The library {@code libdtv_desk.so} must have been
 * loaded. There is one simulator at a time in a process.
 */
final class Simulator {
    private Simulator() {}

    /**
     * What a channel table holds for the receiver.
     *
     * @param stations UHF stations on channels 13 to 62
     * @param vhfEntries entries left out because they are VHF
     * @param beyondEntries UHF entries left out because no receiver scans their channel
     * @param unusableEntries entries left out because they name no ISDB-T channel
     */
    record Plan(int stations, int vhfEntries, int beyondEntries, int unusableEntries) {}

    /**
     * Starts the service.
     *
     * @return what was read of the channel table
     * @throws DeskException when a file cannot be read; the message says why
     */
    static Plan start(SimulatedService.Settings settings) throws DeskException {
        Pace pace = new Pace(settings.speed());
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
     * Lets stepped time go on to what comes next, and waits until its events have been delivered.
     * Not from a callback.
     *
     * @return false when nothing comes any more
     */
    static native boolean advance();

    /** Milliseconds that have passed for the service. */
    static native long now();

    /** How often each command has reached the service, by the names that follow DtvSvLib_. */
    static Map<String, Integer> calls() {
        Map<String, Integer> calls = new LinkedHashMap<>();
        String[] names = commands();
        int[] counts = arrivals();
        for (int index = 0; index < names.length; index++) {
            calls.put(names[index], counts[index]);
        }
        return calls;
    }

    /**
     * Makes a native surface that lasts as long as the process.
     *
     * @return its address, for {@link android.view.Surface}
     */
    static native int newSurface();

    /**
     * Writes to a file what native code writes to standard output from now on: the bridge's copies
     * of its ERROR lines, also those of the process's end. Java's own output stays what it is.
     *
     * @throws DeskException when the file cannot be opened
     */
    static native void takeStandardOutput(String file) throws DeskException;

    /** Takes the service away and delivers no further event. Final: nothing can start it again. */
    static native void stop();

    private static native int[] startNative(
            String table, String guide, String script, double speed, boolean stepped, int seed,
            boolean repeated) throws DeskException;

    private static native String[] commands();

    private static native int[] arrivals();
}
