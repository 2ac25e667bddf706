package tenrik.service.dtvserver.type;

/**
 * The permission that is asked for.
 *
 * @param permit_type which permission
 * @param task_id identifies the request; the reply returns it
 */
public record BG_TS_DTVSVLIB_PERMISSION_REQ(int permit_type, int task_id) {}
