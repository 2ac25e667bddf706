package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PLAY_STATUS_INFO;

/**
 * Playback has reached an event.
 *
 * @param handle the session it belongs to
 * @param play_status_info the state
 * @param play_event the event
 * @param bml_http_flg whether data broadcasting uses the network
 */
public record BG_EV_DTVSV_PLAY_EVENT_NOTIFY(
        int handle, BG_TS_DTVSVLIB_PLAY_STATUS_INFO play_status_info, long play_event,
        int bml_http_flg) {}
