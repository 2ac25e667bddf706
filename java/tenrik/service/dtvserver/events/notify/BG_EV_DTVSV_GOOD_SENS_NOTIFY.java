package tenrik.service.dtvserver.events.notify;

/**
 * The reception has become good.
 *
 * @param handle the session it belongs to
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_GOOD_SENS_NOTIFY(int handle, int physical_channel, int service_no) {}
