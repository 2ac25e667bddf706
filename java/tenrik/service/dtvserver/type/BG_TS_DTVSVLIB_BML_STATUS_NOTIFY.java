package tenrik.service.dtvserver.type;

/**
 * A state of data broadcasting.
 *
 * @param change_status the state
 */
public record BG_TS_DTVSVLIB_BML_STATUS_NOTIFY(int change_status) {}
