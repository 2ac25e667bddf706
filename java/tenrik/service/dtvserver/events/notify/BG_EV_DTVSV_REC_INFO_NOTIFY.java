package tenrik.service.dtvserver.events.notify;

/**
 * The progress of a recording.
 *
 * @param handle the session it belongs to
 * @param rec_time the time recorded
 * @param rec_cap the capacity left, as the service counts it
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_REC_INFO_NOTIFY(
        int handle, long rec_time, int rec_cap, long physical_channel, int service_no) {}
