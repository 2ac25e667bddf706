package tenrik.service.dtvserver.events.notify;

import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TUNER_SENS_DATA;

/**
 * What the tuner measures on a channel.
 *
 * @param handle the session it belongs to
 * @param physical_channel the physical UHF channel
 * @param service_no the service's number on the channel
 * @param tuner_sens_data the measurements
 */
public record BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY(
        int handle, long physical_channel, int service_no,
        BG_TS_DTVSVLIB_TUNER_SENS_DATA tuner_sens_data) {}
