package tenrik.service.dtvserver.events.notify;

/**
 * A picture of a data-broadcast document was saved, or could not be.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY(int handle, int result) {}
