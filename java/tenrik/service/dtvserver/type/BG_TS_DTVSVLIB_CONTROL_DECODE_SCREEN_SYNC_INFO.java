package tenrik.service.dtvserver.type;

/**
 * What {@code DtvSvLib_ControlDecodeScreen_Sync} returns. The result is the first component, the
 * session handle the second.
 *
 * @param return_value the service's answer; 1 when the command could not be sent, 16 when the
 *     answer was empty
 * @param handle the session it belongs to
 */
public record BG_TS_DTVSVLIB_CONTROL_DECODE_SCREEN_SYNC_INFO(int return_value, int handle) {}
