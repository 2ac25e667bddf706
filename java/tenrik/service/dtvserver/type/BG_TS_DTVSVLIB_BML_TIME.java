package tenrik.service.dtvserver.type;

/**
 * A date and time as a data-broadcast document writes it.
 *
 * @param date_year year
 * @param date_month month
 * @param date_day day
 * @param date_dow day of the week
 * @param date_hour hour
 * @param date_min minute
 * @param date_sec second
 */
public record BG_TS_DTVSVLIB_BML_TIME(
        int date_year, int date_month, int date_day, int date_dow, int date_hour, int date_min,
        int date_sec) {}
