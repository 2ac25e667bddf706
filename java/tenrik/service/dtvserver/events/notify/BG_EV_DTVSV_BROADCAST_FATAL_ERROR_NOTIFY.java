package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_VIEW_FATAL_ERROR;

/**
 * Reception has failed permanently. The library writes such an error to its log and delivers no
 * event for it yet.
 *
 * @param handle the session it belongs to
 * @param fatal_error the error
 */
public record BG_EV_DTVSV_BROADCAST_FATAL_ERROR_NOTIFY(
        int handle, BG_TS_DTVSVLIB_VIEW_FATAL_ERROR fatal_error) {}
