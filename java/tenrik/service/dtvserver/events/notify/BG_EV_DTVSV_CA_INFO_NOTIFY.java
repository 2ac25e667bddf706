package tenrik.service.dtvserver.events.notify;

/**
 * The state of conditional access on a channel.
 *
 * @param handle the session it belongs to
 * @param ca_status the state of conditional access
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_CA_INFO_NOTIFY(
        int handle, int ca_status, long physical_channel, int service_no) {}
