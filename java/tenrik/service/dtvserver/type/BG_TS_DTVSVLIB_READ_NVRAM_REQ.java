package tenrik.service.dtvserver.type;

/**
 * The block of the broadcaster's memory to read.
 *
 * @param affiliation_id the affiliation whose memory it is
 * @param network_id the network
 * @param block_no number of the block
 */
public record BG_TS_DTVSVLIB_READ_NVRAM_REQ(int affiliation_id, int network_id, int block_no) {}
