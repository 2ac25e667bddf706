package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * A network and its transport stream.
 *
 * @param ts_id the transport stream
 * @param ts_name_size length of its name in bytes
 * @param ts_name name of the transport stream
 * @param nw_id the network
 * @param nw_name_size length of its name in bytes
 * @param nw_name name of the network
 * @param remocon_id key on the remote control
 * @param partialsvc_cnt number of partial-reception services
 * @param partialsvc their service ids
 */
public record BG_TS_DTVSVLIB_NETWORK_INFO(
        int ts_id, int ts_name_size, String ts_name, int nw_id, int nw_name_size, String nw_name,
        int remocon_id, int partialsvc_cnt, int[] partialsvc) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_NETWORK_INFO[ts_id=" + ts_id
                + ", ts_name_size=" + ts_name_size
                + ", ts_name=" + ts_name
                + ", nw_id=" + nw_id
                + ", nw_name_size=" + nw_name_size
                + ", nw_name=" + nw_name
                + ", remocon_id=" + remocon_id
                + ", partialsvc_cnt=" + partialsvc_cnt
                + ", partialsvc=" + Arrays.toString(partialsvc)
                + "]";
    }
}
