package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_MAIL_REQ;

/**
 * A data-broadcast document asks to write a mail. Answered with {@code DtvSvLib_BMLMailReply}.
 *
 * @param handle the session it belongs to
 * @param mail_req the mail
 */
public record BG_EV_DTVSV_BML_MAIL_REQ(int handle, BG_TS_DTVSVLIB_MAIL_REQ mail_req) {}
