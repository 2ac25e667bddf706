package tenrik.service.dtvserver.events.notify;

/**
 * A channel search tries a channel.
 *
 * @param handle the session it belongs to
 * @param physical_channel the physical UHF channel
 */
public record BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY(int handle, int physical_channel) {}
