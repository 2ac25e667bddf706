package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ControlCap}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_CONTROL_CAP_REPLY(int handle, int result) {}
