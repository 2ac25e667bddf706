package tenrik.service.dtvserver.events.request;

/**
 * A data-broadcast document asks for a user and a password. Answered with {@code
 * DtvSvLib_BMLAuthReply}.
 *
 * @param handle the session it belongs to
 * @param task_id identifies the request; the reply returns it
 */
public record BG_EV_DTVSV_BML_AUTH_REQ(int handle, int task_id) {}
