package tenrik.desk.core;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/**
 * A station that a scan has found.
 *
 * @param channel the physical channel, 13 to 62
 * @param name the name of the transport stream; may be empty
 */
public record Station(int channel, String name) {
    /**
     * How the station is shown.
     *
     * @return the channel and the name
     */
    public String label() {
        return channel + "  " + (name.isEmpty() ? "-" : name);
    }

    /**
     * The argument that selects the first service of a physical channel.
     *
     * @param physicalChannel the channel
     * @return a new object
     */
    public static BG_TS_DTVSVLIB_BROADCAST_INFO firstServiceOf(int physicalChannel) {
        return new BG_TS_DTVSVLIB_BROADCAST_INFO(physicalChannel, 0);
    }
}
