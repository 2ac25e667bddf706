package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * The block of the broadcaster's memory to write.
 *
 * @param affiliation_id the affiliation whose memory it is
 * @param network_id the network
 * @param ts_name name of the transport stream
 * @param block_no number of the block
 * @param data its 64 bytes
 */
public record BG_TS_DTVSVLIB_WRITE_NVRAM_REQ(
        int affiliation_id, int network_id, String ts_name, int block_no, byte[] data) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_WRITE_NVRAM_REQ[affiliation_id=" + affiliation_id
                + ", network_id=" + network_id
                + ", ts_name=" + ts_name
                + ", block_no=" + block_no
                + ", data=" + Arrays.toString(data)
                + "]";
    }
}
