package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_BMLEndTvLinkReq}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_BML_END_TVLINK_REPLY(int handle, int result) {}
