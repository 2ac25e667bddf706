package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY;

/**
 * Caption data has arrived.
 *
 * @param handle the session it belongs to
 * @param caption_data the languages
 */
public record BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY(
        int handle, BG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY caption_data) {}
