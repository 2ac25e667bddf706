package tenrik.service.dtvserver.events.notify;

/**
 * The sound of a channel has changed.
 *
 * @param handle the session it belongs to
 * @param dualmono which kind of dual mono it is
 * @param audio_mode the audio mode
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY(
        int handle, int dualmono, int audio_mode, long physical_channel, int service_no) {}
