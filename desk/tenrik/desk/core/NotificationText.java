package tenrik.desk.core;

import java.util.Arrays;
import java.util.Optional;
import java.util.stream.Collectors;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_COMPONENT_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_NETWORK_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PRG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SERVICE_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TIME;

/** Notifications about what is received, as text. */
public final class NotificationText {
    private NotificationText() {}

    /**
     * The text of an event.
     *
     * @param event any event
     * @return one or two lines; empty for an event that is not shown
     */
    public static Optional<String> of(Record event) {
        if (event instanceof BG_EV_DTVSV_NETWORK_INFO_NOTIFY notice) {
            return Optional.of("network   " + notice.network_info().nw_id() + "  "
                    + notice.network_info().nw_name());
        }
        if (event instanceof BG_EV_DTVSV_SERVICE_INFO_NOTIFY notice) {
            return Optional.of("services  " + Arrays.stream(notice.stream_info().service_info())
                    .map(BG_TS_DTVSVLIB_SERVICE_INFO::name).collect(Collectors.joining(", ")));
        }
        if (event instanceof BG_EV_DTVSV_COMPONENT_INFO_NOTIFY notice) {
            return Optional.of("streams   " + notice.component_info().audio_es_num() + " of sound"
                    + (notice.component_info().cap_exist_flg() != 0 ? ", captions" : "")
                    + (notice.component_info().bml_exist_flg() != 0 ? ", data" : ""));
        }
        if (event instanceof BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY notice) {
            return Optional.of("picture   " + notice.video_info().size_h() + " x "
                    + notice.video_info().size_v());
        }
        if (event instanceof BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY notice) {
            return Optional.of("signal    C/N " + notice.cn() / 100 + "." + notice.cn() % 100 / 10
                    + " dB");
        }
        if (event instanceof BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY notice) {
            return Optional.of(programme("now", notice.epg_info().cur_prg_info()) + "\n"
                    + programme("next", notice.epg_info().next_prg_info()));
        }
        return Optional.empty();
    }

    private static String programme(String when, BG_TS_DTVSVLIB_PRG_INFO programme) {
        BG_TS_DTVSVLIB_TIME start = programme.start().time();
        return String.format("%-10s%02d:%02d  %s", when, start.hour(), start.min(),
                programme.name());
    }
}
