package tenrik.service.dtvserver.type;

/**
 * What the tuner measures.
 *
 * @param lna_mode mode of the low-noise amplifier
 * @param cn_value carrier-to-noise ratio
 * @param ber bit error rate, as the tuner gives it
 * @param ifagc gain at intermediate frequency
 * @param rfagc gain at radio frequency
 * @param lnag gain of the low-noise amplifier
 * @param bpfg gain of the band-pass filter
 */
public record BG_TS_DTVSVLIB_TUNER_SENS_DATA(
        int lna_mode, int cn_value, int ber, int ifagc, int rfagc, int lnag, int bpfg) {}
