package tenrik.service.dtvserver.events.notify;

/**
 * The data-broadcast document no longer waits for the text input.
 *
 * @param handle the session it belongs to
 */
public record BG_EV_DTVSV_BML_END_FEP_NOTIFY(int handle) {}
