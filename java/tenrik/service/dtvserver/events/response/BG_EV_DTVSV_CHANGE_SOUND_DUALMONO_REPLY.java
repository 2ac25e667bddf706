package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ChangeSoundDualMono}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY(int handle, int result) {}
