package tenrik.service.dtvserver.type;

/**
 * The languages that the captions offer.
 *
 * @param valid_lang_num how many languages there are
 * @param cap_lang the language in use
 */
public record BG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY(int valid_lang_num, int cap_lang) {}
