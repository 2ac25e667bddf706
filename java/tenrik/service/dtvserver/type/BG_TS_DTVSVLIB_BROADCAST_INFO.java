package tenrik.service.dtvserver.type;

/**
 * A one-segment service, by its channel and its number on that channel.
 *
 * @param physical_channel the physical UHF channel, at most 62
 * @param service_no the service's number on the channel, at most 2
 */
public record BG_TS_DTVSVLIB_BROADCAST_INFO(int physical_channel, int service_no) {}
