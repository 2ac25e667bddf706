package tenrik.service.dtvserver.type;

/**
 * A time of day, or a length of time.
 *
 * @param hour hours
 * @param min minutes
 * @param sec seconds
 * @param mil_sec milliseconds
 */
public record BG_TS_DTVSVLIB_TIME(int hour, int min, int sec, int mil_sec) {}
