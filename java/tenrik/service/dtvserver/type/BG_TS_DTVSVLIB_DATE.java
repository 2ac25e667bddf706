package tenrik.service.dtvserver.type;

/**
 * A day.
 *
 * @param year year
 * @param month month
 * @param day day
 */
public record BG_TS_DTVSVLIB_DATE(int year, int month, int day) {}
