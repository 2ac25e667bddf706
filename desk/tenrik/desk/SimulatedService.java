package tenrik.desk;

import android.view.Surface;

import java.nio.file.Path;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Pace;
import tenrik.desk.core.Simulator;

/**
 * A simulated DTV service behind libDtv, for the tests of the code that uses the bridge. Started
 * before {@code libDtv_jni.so} is loaded; once in a process.
 */
public final class SimulatedService implements AutoCloseable {
    private final Simulator.Plan plan;

    private SimulatedService(Simulator.Plan plan) {
        this.plan = plan;
    }

    /**
     * How a service is started.
     *
     * @param libraries the folder of libdtv_desk.so
     * @param channelTable whose stations are on the air, a file in the DVBv5 format
     * @param guide what they show, an XMLTV file; null when there is no guide
     * @param script how the service's behaviour is bent, a JSON file; null when it is not
     * @param speed how many seconds of the service's pass in one of life; 0 when its time passes
     *     with {@link #advance} alone; anything outside of 0.000001 to 10000 is replaced by the
     *     nearest of the two
     * @param seed what chance begins with; null when it is left to chance, and the time of day is
     *     the clock's
     */
    public record Settings(
            Path libraries, Path channelTable, Path guide, Path script, double speed,
            Integer seed) {}

    /**
     * Starts the service.
     *
     * @throws IllegalArgumentException when one of the files cannot be used, or when the speed is
     *     negative, infinite or no number; the message says why
     * @throws UnsatisfiedLinkError when the library cannot be loaded
     */
    public static SimulatedService start(Settings settings) {
        System.load(settings.libraries().toAbsolutePath().resolve("libdtv_desk.so").toString());
        try {
            return new SimulatedService(Simulator.start(new Simulator.Settings(
                    settings.channelTable(), settings.guide(), settings.script(),
                    new Pace(settings.speed()), settings.seed())));
        } catch (DeskException failure) {
            throw new IllegalArgumentException(failure.getMessage(), failure);
        }
    }

    /** How many stations are on the air. */
    public int stations() {
        return plan.stations();
    }

    /** A surface to draw on, which lasts as long as the process. */
    public Surface newSurface() {
        return new Surface(Simulator.newSurface());
    }

    /**
     * Where time does not pass by itself: goes on to what comes next, and returns when its events
     * have been delivered. Not to be called from a callback.
     *
     * @return false when nothing comes any more
     */
    public boolean advance() {
        return Simulator.advance();
    }

    /** Ends the service. No event is delivered afterwards, and no other can be started. */
    @Override
    public void close() {
        Simulator.stop();
    }
}
