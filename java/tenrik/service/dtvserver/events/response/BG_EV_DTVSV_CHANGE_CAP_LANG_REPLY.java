package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_ChangeCapLang}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 */
public record BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY(int handle, int result) {}
