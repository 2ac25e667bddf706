package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_SetSoundVideoDelay}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY(int handle, int result) {}
