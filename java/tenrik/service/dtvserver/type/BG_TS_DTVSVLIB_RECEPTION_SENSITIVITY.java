package tenrik.service.dtvserver.type;

/**
 * How well a channel is received.
 *
 * @param ber bit error rate, as the tuner gives it
 * @param cn carrier-to-noise ratio, as the tuner gives it
 */
public record BG_TS_DTVSVLIB_RECEPTION_SENSITIVITY(int ber, int cn) {}
