package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * A programme of the guide.
 *
 * @param evtId the programme's event id
 * @param start when it starts
 * @param start_day_of_week on which day of the week
 * @param duration how long it lasts
 * @param freeca whether it is scrambled
 * @param nibble_cnt number of genres, at most 7
 * @param content_nibble the genres
 * @param user_nibble the broadcaster's own part of each genre
 * @param name_size length of the name in bytes
 * @param name name
 * @param text_size length of the text in bytes
 * @param text text
 */
public record BG_TS_DTVSVLIB_PRG_INFO(
        int evtId, BG_TS_DTVSVLIB_DATE_TIME start, int start_day_of_week,
        BG_TS_DTVSVLIB_TIME duration, int freeca, int nibble_cnt, byte[] content_nibble,
        byte[] user_nibble, int name_size, String name, int text_size, String text) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_PRG_INFO[evtId=" + evtId
                + ", start=" + start
                + ", start_day_of_week=" + start_day_of_week
                + ", duration=" + duration
                + ", freeca=" + freeca
                + ", nibble_cnt=" + nibble_cnt
                + ", content_nibble=" + Arrays.toString(content_nibble)
                + ", user_nibble=" + Arrays.toString(user_nibble)
                + ", name_size=" + name_size
                + ", name=" + name
                + ", text_size=" + text_size
                + ", text=" + text
                + "]";
    }
}
