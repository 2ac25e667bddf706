package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ControlDisplayModeReq}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY(int handle, int result) {}
