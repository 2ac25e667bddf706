package tenrik.service.dtvserver.events.notify;

/**
 * Data broadcasting has changed its state.
 *
 * @param handle the session it belongs to
 * @param change_status the new state
 */
public record BG_EV_DTVSV_BML_STATUS_NOTIFY(int handle, int change_status) {}
