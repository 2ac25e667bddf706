package tenrik.service.dtvserver.events.notify;

/**
 * The captions have changed their state.
 *
 * @param handle the session it belongs to
 * @param change_status the new state
 */
public record BG_EV_DTVSV_CAP_STATUS_NOTIFY(int handle, int change_status) {}
