package tenrik.service.dtvserver.type;

/**
 * What {@code DtvSvLib_TerminateRec_Sync} returns. The result is the first component, the session
 * handle the second.
 *
 * @param result the service's answer; 1 when the command could not be sent, 5 when an argument was
 *     refused, 16 when the answer was empty
 * @param handle the session it belongs to
 * @param terminate_rec where the recording is kept
 */
public record BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO(
        int result, int handle, BG_TS_DTVSVLIB_TERMINATE_REC_REPLY terminate_rec) {}
