package tenrik.service.dtvserver.events.notify;

/**
 * What may be copied from a channel.
 *
 * @param handle the session it belongs to
 * @param copy_mode what may be copied
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY(
        int handle, int copy_mode, long physical_channel, int service_no) {}
