package tenrik.service.dtvserver.events.notify;

/**
 * Playback has failed.
 *
 * @param handle the session it belongs to
 * @param play_error the error
 */
public record BG_EV_DTVSV_PLAY_ERROR_NOTIFY(int handle, int play_error) {}
