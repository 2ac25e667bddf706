package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_NETWORK_INFO;

/**
 * The network that is being received.
 *
 * @param handle the session it belongs to
 * @param network_info the network
 * @param physical_channel the physical channel it is received on
 */
public record BG_EV_DTVSV_NETWORK_INFO_NOTIFY(
        int handle, BG_TS_DTVSVLIB_NETWORK_INFO network_info, long physical_channel) {}
