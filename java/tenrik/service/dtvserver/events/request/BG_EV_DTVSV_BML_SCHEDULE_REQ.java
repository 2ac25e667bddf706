package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCHEDULE_REQ;

/**
 * A data-broadcast document asks for an entry in the schedule. Answered with {@code
 * DtvSvLib_BMLScheduleReply}.
 *
 * @param handle the session it belongs to
 * @param schedule_req the entry
 */
public record BG_EV_DTVSV_BML_SCHEDULE_REQ(int handle, BG_TS_DTVSVLIB_SCHEDULE_REQ schedule_req) {}
