package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_StartSearchChannel}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY(int handle, int result) {}
