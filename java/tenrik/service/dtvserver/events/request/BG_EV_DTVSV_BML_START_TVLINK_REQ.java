package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_TVLINK_REQ;

/**
 * A data-broadcast document asks to follow a TV link. Answered with {@code
 * DtvSvLib_BMLStartTvlinkReply}.
 *
 * @param handle the session it belongs to
 * @param start_tvlink_req the link
 */
public record BG_EV_DTVSV_BML_START_TVLINK_REQ(
        int handle, BG_TS_DTVSVLIB_START_TVLINK_REQ start_tvlink_req) {}
