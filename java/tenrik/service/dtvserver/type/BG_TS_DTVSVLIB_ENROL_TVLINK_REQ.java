package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * A TV link to keep.
 * <p>The seven values of the expiry date are passed on in the order in which they are sent. The
 * trace names them in the reverse order: what {@code expire_date} calls the year is {@code
 * date_sec} there.
 *
 * @param title title
 * @param uri the page it leads to
 * @param description description
 * @param cpro_bmtype kind of the link
 * @param expire_date when it expires
 * @param network_id the network
 * @param service_id the service
 * @param affiliation_id the broadcaster's affiliation, 6 bytes
 */
public record BG_TS_DTVSVLIB_ENROL_TVLINK_REQ(
        String title, String uri, String description, int cpro_bmtype,
        BG_TS_DTVSVLIB_BML_TIME expire_date, int network_id, int service_id,
        byte[] affiliation_id) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_ENROL_TVLINK_REQ[title=" + title
                + ", uri=" + uri
                + ", description=" + description
                + ", cpro_bmtype=" + cpro_bmtype
                + ", expire_date=" + expire_date
                + ", network_id=" + network_id
                + ", service_id=" + service_id
                + ", affiliation_id=" + Arrays.toString(affiliation_id)
                + "]";
    }
}
