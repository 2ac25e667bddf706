package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_STREAM_INFO;

/**
 * The services of the transport stream that is being received.
 *
 * @param handle the session it belongs to
 * @param stream_info the services
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_SERVICE_INFO_NOTIFY(
        int handle, BG_TS_DTVSVLIB_STREAM_INFO stream_info, long physical_channel,
        int service_no) {}
