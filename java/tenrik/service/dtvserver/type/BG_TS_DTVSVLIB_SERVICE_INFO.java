package tenrik.service.dtvserver.type;

/**
 * A service of a transport stream.
 *
 * @param service_id the service
 * @param name_size length of the name in bytes
 * @param name name
 */
public record BG_TS_DTVSVLIB_SERVICE_INFO(int service_id, int name_size, String name) {}
