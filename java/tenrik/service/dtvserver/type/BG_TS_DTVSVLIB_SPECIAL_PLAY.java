package tenrik.service.dtvserver.type;

/**
 * A speed of playback: numerator / denominator must be 2, 10, 30 or 120, without a remainder.
 *
 * @param direction which way
 * @param numerator numerator of the speed, not negative
 * @param denominator denominator of the speed, above 0
 */
public record BG_TS_DTVSVLIB_SPECIAL_PLAY(
        BG_TE_DTVSVLIB_PLAY_DIRECTION direction, int numerator, int denominator) {}
