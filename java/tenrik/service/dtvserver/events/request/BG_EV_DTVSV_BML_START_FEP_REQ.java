package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_FEP_REQ;

/**
 * A data-broadcast document asks for a text input. Answered with {@code DtvSvLib_BMLFepReply}.
 *
 * @param handle the session it belongs to
 * @param start_fep_req the input
 */
public record BG_EV_DTVSV_BML_START_FEP_REQ(
        int handle, BG_TS_DTVSVLIB_START_FEP_REQ start_fep_req) {}
