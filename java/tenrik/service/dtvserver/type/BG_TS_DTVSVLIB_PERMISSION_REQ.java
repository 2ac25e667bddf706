package tenrik.service.dtvserver.type;

/**
 * The permission that is asked for.
 *
 * @param permit_type which permission
 * @param task_id names the request; the reply carries it back
 */
public record BG_TS_DTVSVLIB_PERMISSION_REQ(int permit_type, int task_id) {}
