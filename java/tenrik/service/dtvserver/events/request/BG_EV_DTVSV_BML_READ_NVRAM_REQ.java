package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_READ_NVRAM_REQ;

/**
 * A data-broadcast document reads a block of the broadcaster's memory. Answered with {@code
 * DtvSvLib_BMLReadNvramReply}.
 *
 * @param handle the session it belongs to
 * @param read_nvram_req the block
 */
public record BG_EV_DTVSV_BML_READ_NVRAM_REQ(
        int handle, BG_TS_DTVSVLIB_READ_NVRAM_REQ read_nvram_req) {}
