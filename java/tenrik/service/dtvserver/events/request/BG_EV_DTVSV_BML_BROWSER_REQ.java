package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROWSER_REQ;

/**
 * A data-broadcast document asks for a browser. Answered with {@code DtvSvLib_BMLBrowserReply}.
 *
 * @param handle the session it belongs to
 * @param browser_req the page
 */
public record BG_EV_DTVSV_BML_BROWSER_REQ(int handle, BG_TS_DTVSVLIB_BROWSER_REQ browser_req) {}
