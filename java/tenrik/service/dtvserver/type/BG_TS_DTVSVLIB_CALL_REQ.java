package tenrik.service.dtvserver.type;

/**
 * The telephone call that is asked for.
 *
 * @param phone_number telephone number
 */
public record BG_TS_DTVSVLIB_CALL_REQ(String phone_number) {}
