package tenrik.service.dtvserver.events.request;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PERMISSION_REQ;

/**
 * A data-broadcast document asks for a permission. Answered with {@code
 * DtvSvLib_BMLPermissionReply}.
 *
 * @param handle the session it belongs to
 * @param permission_req the permission
 */
public record BG_EV_DTVSV_BML_PERMISSION_REQ(
        int handle, BG_TS_DTVSVLIB_PERMISSION_REQ permission_req) {}
