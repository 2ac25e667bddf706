package tenrik.service.dtvserver.type;

/**
 * The text input that is asked for.
 *
 * @param input_type which characters
 * @param input_max how many at most
 * @param password_flg whether it is a password
 * @param data the text to begin with
 */
public record BG_TS_DTVSVLIB_START_FEP_REQ(
        int input_type, int input_max, int password_flg, String data) {}
