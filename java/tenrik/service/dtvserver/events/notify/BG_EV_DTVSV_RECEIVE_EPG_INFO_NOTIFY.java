package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_EPG_INFO;

/**
 * The programme guide of a service.
 *
 * @param handle the session it belongs to
 * @param epg_info the programmes
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(
        int handle, BG_TS_DTVSVLIB_EPG_INFO epg_info, long physical_channel, int service_no) {}
