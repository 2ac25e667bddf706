package tenrik.desk;

import android.view.Surface;

import java.nio.file.Path;
import java.time.Duration;
import java.util.Map;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Simulator;
import tenrik.desk.replay.Captures;
import tenrik.desk.replay.Replay;

/**
 * A capture in the place of the DTV service, for the tests of the code that uses the bridge: its commands are
 * held against the recorded ones, and it gets the recorded answers and events. The first one in a process is
 * started before {@code libDtv_jni.so} is loaded; there is one at a time, and any number one after the other.
 */
public final class ReplayedService implements AutoCloseable {
    private ReplayedService() {}

    /**
     * How a capture is replayed.
     *
     * @param libraries the folder of libdtv_desk.so
     * @param capture the file
     * @param speed seconds of the capture in one second of real time; 0 when no message waits for
     *     its time
     * @param patience how long the replay waits for what does not come from the code under test
     * @param fill whether events of which not all bytes are known are delivered, with zeros
     * @param channelTables the folder of the channel tables for a simulated service that takes the
     *     commands that the capture does not have; null when they are not taken
     * @param guide the programmes of that service, an XMLTV file; null when there is no guide
     */
    public record Settings(
            Path libraries, Path capture, double speed, Duration patience, boolean fill,
            Path channelTables, Path guide) {
        /**
         * A replay without time, which waits for ten seconds, fills nothing and simulates nothing.
         *
         * @param libraries the folder of libdtv_desk.so
         * @param capture the file
         */
        public Settings(Path libraries, Path capture) {
            this(libraries, capture, 0, Duration.ofSeconds(10), false, null, null);
        }
    }

    /**
     * What came of a replay.
     *
     * @param same whether the code did what was recorded
     * @param report the first divergence, and how many there are of each kind; at most 20 lines
     */
    public record Result(boolean same, String report) {}

    /**
     * Starts a replay.
     *
     * @param settings how
     * @return the running replay; the caller closes it
     * @throws IllegalArgumentException when the capture cannot be replayed, or when the speed is
     *     negative, infinite or no number; the message says why
     * @throws UnsatisfiedLinkError when the library cannot be loaded
     */
    public static ReplayedService start(Settings settings) {
        if (!Double.isFinite(settings.speed()) || settings.speed() < 0) {
            throw new IllegalArgumentException("the speed is " + settings.speed()
                    + "; a finite number that is not negative is needed");
        }
        System.load(settings.libraries().toAbsolutePath().resolve("libdtv_desk.so").toString());
        try {
            Map<String, String> section = Replay.open(settings.capture());
            if (settings.channelTables() != null) {
                Captures.simulateUnknown(settings.capture(), section, settings.channelTables(),
                        settings.guide());
            }
        } catch (DeskException failure) {
            throw new IllegalArgumentException(failure.getMessage(), failure);
        }
        Replay.start(new Replay.Settings(settings.speed(), settings.patience(), settings.fill()));
        return new ReplayedService();
    }

    /**
     * Makes a surface to draw on.
     *
     * @return a new surface, which lasts as long as the process
     */
    public Surface newSurface() {
        return new Surface(Simulator.newSurface());
    }

    /**
     * Waits until all recorded messages have passed, or until nothing comes any more. Not to be
     * called from a callback. Commands that come afterwards are not taken.
     *
     * @return what came of the replay
     */
    public Result finish() {
        String report = Replay.finish(false);
        return new Result(Replay.status() == 0, report);
    }

    /** Ends the replay. Another one can be started. */
    @Override
    public void close() {
        Replay.disconnect();
    }
}
