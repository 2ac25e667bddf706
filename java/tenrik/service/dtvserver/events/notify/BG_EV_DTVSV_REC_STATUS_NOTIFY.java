package tenrik.service.dtvserver.events.notify;

/**
 * A recording has changed its state.
 *
 * @param handle the session it belongs to
 * @param rec_status the new state
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_REC_STATUS_NOTIFY(
        int handle, int rec_status, long physical_channel, int service_no) {}
