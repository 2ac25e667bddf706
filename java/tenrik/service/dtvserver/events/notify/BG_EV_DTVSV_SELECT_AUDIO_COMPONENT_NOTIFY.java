package tenrik.service.dtvserver.events.notify;

/**
 * A sound stream was chosen.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY(int handle, int result) {}
