package tenrik.desk;

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

/** Notifications in words. */
final class News {
    private News() {}

    /** What an event tells a person; empty when there is nothing worth reading. */
    static Optional<String> of(Record event) {
        if (event instanceof BG_EV_DTVSV_NETWORK_INFO_NOTIFY news) {
            return Optional.of("network   " + news.network_info().nw_id() + "  "
                    + news.network_info().nw_name());
        }
        if (event instanceof BG_EV_DTVSV_SERVICE_INFO_NOTIFY news) {
            return Optional.of("services  " + Arrays.stream(news.stream_info().service_info())
                    .map(BG_TS_DTVSVLIB_SERVICE_INFO::name).collect(Collectors.joining(", ")));
        }
        if (event instanceof BG_EV_DTVSV_COMPONENT_INFO_NOTIFY news) {
            return Optional.of("streams   " + news.component_info().audio_es_num() + " of sound"
                    + (news.component_info().cap_exist_flg() != 0 ? ", captions" : "")
                    + (news.component_info().bml_exist_flg() != 0 ? ", data" : ""));
        }
        if (event instanceof BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY news) {
            return Optional.of("picture   " + news.video_info().size_h() + " x "
                    + news.video_info().size_v());
        }
        if (event instanceof BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY news) {
            return Optional.of("signal    C/N " + news.cn() / 100 + "." + news.cn() % 100 / 10
                    + " dB");
        }
        if (event instanceof BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY news) {
            return Optional.of(programme("now", news.epg_info().cur_prg_info()) + "\n"
                    + programme("next", news.epg_info().next_prg_info()));
        }
        return Optional.empty();
    }

    private static String programme(String when, BG_TS_DTVSVLIB_PRG_INFO programme) {
        BG_TS_DTVSVLIB_TIME start = programme.start().time();
        return String.format("%-10s%02d:%02d  %s", when, start.hour(), start.min(),
                programme.name());
    }
}
