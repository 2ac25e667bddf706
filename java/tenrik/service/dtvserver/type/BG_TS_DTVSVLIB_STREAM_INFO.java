package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * The services of a transport stream.
 *
 * @param ts_id the transport stream
 * @param svc_cnt how many there are, at most 8
 * @param service_info the services
 */
public record BG_TS_DTVSVLIB_STREAM_INFO(
        int ts_id, int svc_cnt, BG_TS_DTVSVLIB_SERVICE_INFO[] service_info) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_STREAM_INFO[ts_id=" + ts_id
                + ", svc_cnt=" + svc_cnt
                + ", service_info=" + Arrays.toString(service_info)
                + "]";
    }
}
