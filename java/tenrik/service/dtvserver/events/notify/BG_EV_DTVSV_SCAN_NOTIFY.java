package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCAN_RESULT;

/**
 * What a channel scan has found on one channel.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param scan_result the channel and its network
 * @param result_channnel_num how many channels were found so far; spelt as in the trace
 */
public record BG_EV_DTVSV_SCAN_NOTIFY(
        int handle, int result, BG_TS_DTVSVLIB_SCAN_RESULT scan_result, int result_channnel_num) {}
