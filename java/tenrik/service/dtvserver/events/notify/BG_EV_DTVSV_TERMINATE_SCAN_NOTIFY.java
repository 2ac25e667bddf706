package tenrik.service.dtvserver.events.notify;

/**
 * A channel scan has ended.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY(int handle, int result) {}
