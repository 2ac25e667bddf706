package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_BMLStartTvLinkReq}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_BML_START_TVLINK_REPLY(int handle, int result) {}
