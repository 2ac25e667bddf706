package tenrik.service.dtvserver.type;

/**
 * Whether and where a picture of a data-broadcast document is saved.
 *
 * @param save_flag whether it is saved
 * @param medium where it is saved
 * @param change_filename whether the viewer gave it another name
 * @param filename name of its file, at most 779 bytes of modified UTF-8
 */
public record BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY(
        BG_TE_DTVSVLIB_ONOFF save_flag, BG_TE_DTVSVLIB_RECORDING_MEDIUM medium,
        BG_TE_DTVSVLIB_ONOFF change_filename, String filename) {}
