package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/**
 * A channel search has ended.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param broadcast_info the service that was found
 */
public record BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY(
        int handle, int result, BG_TS_DTVSVLIB_BROADCAST_INFO broadcast_info) {}
