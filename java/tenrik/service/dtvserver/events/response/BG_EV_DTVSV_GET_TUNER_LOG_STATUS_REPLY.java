package tenrik.service.dtvserver.events.response;

/**
 * Answer to {@code DtvSvLib_GetTunerLogStatus}.
 *
 * @param handle the session it belongs to
 * @param result the service's result code
 * @param log_status whether the tuner's log runs
 */
public record BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY(int handle, int result, int log_status) {}
