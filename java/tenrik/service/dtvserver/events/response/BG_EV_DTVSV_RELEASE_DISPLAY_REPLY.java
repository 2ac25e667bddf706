package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ReleaseDisplay}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param drawing_destination which plane
 */
public record BG_EV_DTVSV_RELEASE_DISPLAY_REPLY(int handle, int result, int drawing_destination) {}
