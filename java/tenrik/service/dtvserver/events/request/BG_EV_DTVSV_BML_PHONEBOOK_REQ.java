package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PHONEBOOK_REQ;

/**
 * A data-broadcast document asks for a phone-book entry. Answered with {@code
 * DtvSvLib_BMLPhonebookReply}.
 *
 * @param handle the session it belongs to
 * @param phonebook_req the entry
 */
public record BG_EV_DTVSV_BML_PHONEBOOK_REQ(
        int handle, BG_TS_DTVSVLIB_PHONEBOOK_REQ phonebook_req) {}
