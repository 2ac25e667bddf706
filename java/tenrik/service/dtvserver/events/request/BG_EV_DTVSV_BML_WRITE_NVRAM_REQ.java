package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_WRITE_NVRAM_REQ;

/**
 * A data-broadcast document writes a block of the broadcaster's memory. Answered with {@code
 * DtvSvLib_BMLWriteNvramReply}.
 *
 * @param handle the session it belongs to
 * @param write_nvram_req the block and its content
 */
public record BG_EV_DTVSV_BML_WRITE_NVRAM_REQ(
        int handle, BG_TS_DTVSVLIB_WRITE_NVRAM_REQ write_nvram_req) {}
