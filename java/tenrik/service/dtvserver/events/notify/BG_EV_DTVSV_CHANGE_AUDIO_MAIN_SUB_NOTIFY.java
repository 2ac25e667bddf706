package tenrik.service.dtvserver.events.notify;

/**
 * The sound was switched between main and sub.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY(int handle, int result) {}
