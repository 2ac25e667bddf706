package tenrik.desk.core;

import java.math.BigDecimal;
import java.time.Duration;

/**
 * How the time of the simulated service passes.
 *
 * @param speed seconds of the service's clock in one second of real time; 0 when the time is
 *     stepped: it then passes only while the program waits, and at once
 */
public record Pace(double speed) {
    /** Stepped time. */
    public static final Pace STEPPED = new Pace(0);
    /** The time passes as fast as real time. */
    public static final Pace REAL_TIME = new Pace(1);

    /**
     * The speeds at which the service still keeps its time. Faster, its periodic events take all
     * of the processor; slower, its delays do not fit in 64 bits of nanoseconds.
     */
    private static final double FASTEST = 10_000;
    private static final double SLOWEST = 1e-6;

    /** What a machine under load may need for anything, however fast the service's clock is. */
    private static final Duration SHORTEST_LIMIT = Duration.ofSeconds(30);

    /**
     * A pace.
     *
     * @param speed seconds of the service's clock in one second of real time, or 0; one that is too
     *     fast or too slow for the service is replaced by the nearest that it can keep
     * @throws IllegalArgumentException when the speed is negative, infinite or no number
     */
    public Pace {
        if (!Double.isFinite(speed) || speed < 0) {
            throw new IllegalArgumentException("the speed is " + speed
                    + "; a finite number that is not negative is needed");
        }
        if (speed != 0) {
            speed = Math.min(Math.max(speed, SLOWEST), FASTEST);
        }
    }

    /**
     * The pace that a person asked for.
     *
     * @param speed a decimal number above 0; a speed outside of what the service can keep is
     *     replaced by the nearest one
     * @return the pace
     * @throws DeskException when the text is anything else
     */
    public static Pace live(String speed) throws DeskException {
        double number;
        try {
            number = new BigDecimal(speed).doubleValue();
        } catch (NumberFormatException notOne) {
            number = 0;
        }
        if (!Double.isFinite(number) || number <= 0) {
            throw new DeskException("\"" + speed + "\" is not a finite number above 0");
        }
        return new Pace(number);
    }

    /**
     * Whether the time is stepped.
     *
     * @return true when the speed is 0
     */
    public boolean isStepped() {
        return speed == 0;
    }

    /**
     * How long to wait for something that the service does in its own time.
     *
     * @param serviceTime more than it takes on the service's clock
     * @return the same in stepped time, which is measured with the service's clock; otherwise real
     *     time, which leaves a slow or busy machine enough of it
     */
    public Duration limit(Duration serviceTime) {
        if (isStepped()) {
            return serviceTime;
        }
        Duration scaled = Duration.ofMillis((long) (serviceTime.toMillis() / speed));
        return scaled.compareTo(SHORTEST_LIMIT) > 0 ? scaled : SHORTEST_LIMIT;
    }
}
