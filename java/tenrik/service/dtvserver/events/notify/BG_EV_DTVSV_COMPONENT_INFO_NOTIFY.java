package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_COMPONENT_INFO;

/**
 * Which components the programme of a channel carries.
 *
 * @param handle the session it belongs to
 * @param component_info the components
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_COMPONENT_INFO_NOTIFY(
        int handle, BG_TS_DTVSVLIB_COMPONENT_INFO component_info, long physical_channel,
        int service_no) {}
