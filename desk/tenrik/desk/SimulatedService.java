package tenrik.desk;

import android.view.Surface;

import java.nio.file.Path;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Pace;
import tenrik.desk.core.Simulator;

/**
 * A simulated DTV service that libDtv is connected to, for the tests of the code that uses the bridge. Started
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
     * @param channelTable the stations on the air, a file in the DVBv5 format
     * @param guide their programmes, an XMLTV file; null when there is no guide
     * @param script what modifies the service's behaviour, a JSON file; null when nothing does
     * @param speed seconds of the service's clock in one second of real time, from 0.000001 to
     *     10000 (any other number above 0 is replaced by the nearest of the two); 0 when its time
     *     passes with {@link #advance} alone
     * @param seed the seed of its random numbers, which makes runs repeatable; null when they
     *     differ from run to run, and the time of day is the clock's
     */
    public record Settings(
            Path libraries, Path channelTable, Path guide, Path script, double speed,
            Integer seed) {}

    /**
     * Starts the service.
     *
     * @param settings how
     * @return the running service; the caller closes it
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

    /**
     * How many stations are on the air.
     *
     * @return their number
     */
    public int stations() {
        return plan.stations();
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
     * Where time does not pass by itself: advances it to the next thing that the service does, and
     * returns when its events have been delivered. Not to be called from a callback.
     *
     * @return false when nothing more will happen
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
