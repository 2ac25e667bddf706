package tenrik.service.dtvserver.events.notify;

/**
 * The reception has become bad.
 *
 * @param handle the session it belongs to
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 * @param sensitivity_level how bad
 */
public record BG_EV_DTVSV_BAD_SENS_NOTIFY(
        int handle, long physical_channel, int service_no, int sensitivity_level) {}
