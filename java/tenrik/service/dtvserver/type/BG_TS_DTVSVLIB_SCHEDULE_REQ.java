package tenrik.service.dtvserver.type;

/**
 * The entry to make in the schedule.
 *
 * @param time when
 * @param title title
 * @param text text
 * @param alarm_flag whether an alarm is set
 */
public record BG_TS_DTVSVLIB_SCHEDULE_REQ(
        BG_TS_DTVSVLIB_BML_TIME time, String title, String text, int alarm_flag) {}
