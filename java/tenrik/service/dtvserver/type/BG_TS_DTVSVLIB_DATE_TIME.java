package tenrik.service.dtvserver.type;

/**
 * A day and a time of day.
 *
 * @param date the day
 * @param time the time of day
 */
public record BG_TS_DTVSVLIB_DATE_TIME(BG_TS_DTVSVLIB_DATE date, BG_TS_DTVSVLIB_TIME time) {}
