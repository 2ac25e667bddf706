package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_StartScan}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param channnel_num how many channels the scan tries; spelt as in the trace
 */
public record BG_EV_DTVSV_START_SCAN_REPLY(int handle, int result, int channnel_num) {}
