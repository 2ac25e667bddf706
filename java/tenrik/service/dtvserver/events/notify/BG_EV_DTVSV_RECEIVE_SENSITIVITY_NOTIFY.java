package tenrik.service.dtvserver.events.notify;

/**
 * How well a channel is received.
 *
 * @param handle the session it belongs to
 * @param ber bit error rate, as the tuner gives it
 * @param cn carrier-to-noise ratio, as the tuner gives it
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY(
        int handle, long ber, long cn, long physical_channel, int service_no) {}
