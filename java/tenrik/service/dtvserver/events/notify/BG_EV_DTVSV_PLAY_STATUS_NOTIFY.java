package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PLAY_STATUS_INFO;

/**
 * The state of playback.
 *
 * @param handle the session it belongs to
 * @param play_status_info the state
 */
public record BG_EV_DTVSV_PLAY_STATUS_NOTIFY(
        int handle, BG_TS_DTVSVLIB_PLAY_STATUS_INFO play_status_info) {}
