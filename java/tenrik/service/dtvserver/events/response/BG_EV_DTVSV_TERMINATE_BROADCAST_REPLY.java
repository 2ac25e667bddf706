package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_TerminateBroadcastReceiving}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY(int handle, int result) {}
