package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CALL_REQ;

/**
 * A data-broadcast document asks for a telephone call. Answered with {@code DtvSvLib_BMLCallReply}.
 *
 * @param handle the session it belongs to
 * @param call_req the call
 */
public record BG_EV_DTVSV_BML_CALL_REQ(int handle, BG_TS_DTVSVLIB_CALL_REQ call_req) {}
