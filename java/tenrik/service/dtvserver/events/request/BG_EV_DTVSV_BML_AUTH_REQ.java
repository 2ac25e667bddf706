package tenrik.service.dtvserver.events.request;

/**
 * A data-broadcast document asks for a user and a password. Answered with {@code
 * DtvSvLib_BMLAuthReply}.
 *
 * @param handle the session it belongs to
 * @param task_id names the request; the reply carries it back
 */
public record BG_EV_DTVSV_BML_AUTH_REQ(int handle, int task_id) {}
