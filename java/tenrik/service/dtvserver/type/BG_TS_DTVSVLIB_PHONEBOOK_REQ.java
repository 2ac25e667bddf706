package tenrik.service.dtvserver.type;

/**
 * The phone-book entry to make.
 *
 * @param name name
 * @param name_kana name in kana
 * @param phone_number telephone number
 * @param mail_address mail address
 */
public record BG_TS_DTVSVLIB_PHONEBOOK_REQ(
        String name, String name_kana, String phone_number, String mail_address) {}
