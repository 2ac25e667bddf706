package tenrik.service.dtvserver.events.response;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REPLY;

/**
 * Answer to {@code DtvSvLib_TerminateRec}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param terminate_rec where the recording is kept
 */
public record BG_EV_DTVSV_TERMINATE_REC_REPLY(
        int handle, int result, BG_TS_DTVSVLIB_TERMINATE_REC_REPLY terminate_rec) {}
