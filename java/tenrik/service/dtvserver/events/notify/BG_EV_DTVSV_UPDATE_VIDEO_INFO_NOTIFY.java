package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_VIDEO_INFO;

/**
 * The picture of a channel has changed.
 *
 * @param handle the session it belongs to
 * @param video_info the picture
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 */
public record BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY(
        int handle, BG_TS_DTVSVLIB_VIDEO_INFO video_info, long physical_channel, int service_no) {}
