package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_MovePausePosition}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY(int handle, int result) {}
