package tenrik.service.dtvserver.type;

/**
 * Which recording is played, and how it starts.
 *
 * @param medium where the recording is kept
 * @param program_number number of the recording, 0 to 65535
 * @param resume whether it continues where it was stopped
 * @param interval how often the state is notified, 0 to 65535
 * @param pause whether it starts paused
 */
public record BG_TS_DTVSVLIB_START_PLAY(
        BG_TE_DTVSVLIB_RECORDING_MEDIUM medium, int program_number, BG_TE_DTVSVLIB_ONOFF resume,
        int interval, BG_TE_DTVSVLIB_ONOFF pause) {}
