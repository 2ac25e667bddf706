package tenrik.service.dtvserver.type;

/**
 * How a recording ends.
 *
 * @param save_data whether the recording is kept
 * @param title_size not used: the library counts the title itself
 * @param title_name its title, at most 196 bytes of modified UTF-8
 */
public record BG_TS_DTVSVLIB_TERMINATE_REC_REQ(
        BG_TE_DTVSVLIB_ONOFF save_data, int title_size, String title_name) {
    /**
     * A recording with this title, whose size the library finds out by itself.
     *
     * @param save_data whether the recording is kept
     * @param title_name its title, at most 196 bytes of modified UTF-8
     */
    public BG_TS_DTVSVLIB_TERMINATE_REC_REQ(BG_TE_DTVSVLIB_ONOFF save_data, String title_name) {
        this(save_data, 0, title_name);
    }
}
