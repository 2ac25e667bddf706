package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * The TV link to start data broadcasting with, and where it draws.
 *
 * @param network_id the network
 * @param service_id the service
 * @param affiliation_id the broadcaster's affiliation, at most 6 bytes
 * @param bookmark_url the page, at most 260 bytes of modified UTF-8
 * @param drawing_info where it draws
 */
public record BG_TS_DTVSVLIB_BML_START_INFO(
        int network_id, int service_id, byte[] affiliation_id, String bookmark_url,
        BG_TS_DTVSVLIB_BML_DRAWING_INFO drawing_info) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_BML_START_INFO[network_id=" + network_id
                + ", service_id=" + service_id
                + ", affiliation_id=" + Arrays.toString(affiliation_id)
                + ", bookmark_url=" + bookmark_url
                + ", drawing_info=" + drawing_info
                + "]";
    }
}
