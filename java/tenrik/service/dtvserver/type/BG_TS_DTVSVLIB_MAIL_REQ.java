package tenrik.service.dtvserver.type;

/**
 * The mail to write.
 *
 * @param title title
 * @param send_address the address it is sent to
 * @param data the text
 */
public record BG_TS_DTVSVLIB_MAIL_REQ(String title, String send_address, String data) {}
