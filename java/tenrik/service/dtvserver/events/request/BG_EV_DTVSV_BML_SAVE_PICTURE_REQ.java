package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SAVE_PICTURE_REQ;

/**
 * A data-broadcast document asks to save a picture. Answered with {@code
 * DtvSvLib_BMLSavePictureReply}.
 *
 * @param handle the session it belongs to
 * @param save_picture_req the picture
 */
public record BG_EV_DTVSV_BML_SAVE_PICTURE_REQ(
        int handle, BG_TS_DTVSVLIB_SAVE_PICTURE_REQ save_picture_req) {}
