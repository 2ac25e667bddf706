package tenrik.service.dtvserver.type;

/**
 * How far playback skips.
 *
 * @param direction which way
 * @param skipsec how far, in seconds
 */
public record BG_TS_DTVSVLIB_SKIP_PLAY(BG_TE_DTVSVLIB_PLAY_DIRECTION direction, int skipsec) {}
