package tenrik.service.dtvserver.type;

/**
 * The state of playback.
 *
 * @param status the state
 * @param current_time position in the recording
 * @param eof_flag whether its end is reached
 */
public record BG_TS_DTVSVLIB_PLAY_STATUS_INFO(int status, long current_time, int eof_flag) {}
