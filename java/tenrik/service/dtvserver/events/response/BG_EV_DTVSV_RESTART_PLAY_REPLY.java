package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ReStartPlay}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_RESTART_PLAY_REPLY(int handle, int result) {}
