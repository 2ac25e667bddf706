package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_StartRec}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_START_REC_REPLY(
        int handle, int result, long physical_channel, int service_no) {}
