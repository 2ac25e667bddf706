package tenrik.service.dtvserver.type;

/**
 * What a scan found on one channel.
 *
 * @param channnel the physical channel; spelt as in the trace
 * @param network_info the network
 */
public record BG_TS_DTVSVLIB_SCAN_RESULT(int channnel, BG_TS_DTVSVLIB_NETWORK_INFO network_info) {}
