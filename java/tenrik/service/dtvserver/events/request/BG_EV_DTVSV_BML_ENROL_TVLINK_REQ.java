package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_ENROL_TVLINK_REQ;

/**
 * A data-broadcast document asks to keep a TV link. Answered with {@code
 * DtvSvLib_BMLEnrolTvlinkReply}.
 *
 * @param handle the session it belongs to
 * @param enrol_tvlink_req the link
 */
public record BG_EV_DTVSV_BML_ENROL_TVLINK_REQ(
        int handle, BG_TS_DTVSVLIB_ENROL_TVLINK_REQ enrol_tvlink_req) {}
