package tenrik.desk.shell;

import java.util.Locale;

import tenrik.desk.core.NotificationText;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BAD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_END_FEP_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_CAP_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_GOOD_SENS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_ERROR_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_EVENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_PLAY_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_REC_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY;

/** Properties that all events have, and their texts. */
final class Events {
    private static final int END_REACHED = 1;

    private Events() {}

    /** The session that an event, or the result of a command, belongs to. */
    static int handle(Record event) {
        try {
            return (int) event.getClass().getMethod("handle").invoke(event);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(event + " has no handle", failure);
        }
    }

    /** Whether an event is repeated periodically while an action is under way. */
    static boolean isPeriodic(Record event) {
        return event instanceof BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY
                || event instanceof BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY
                || event instanceof BG_EV_DTVSV_PLAY_STATUS_NOTIFY
                || event instanceof BG_EV_DTVSV_REC_INFO_NOTIFY
                || event instanceof BG_EV_DTVSV_SCAN_NOTIFY
                || event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
    }

    /** The kind of a request, as it is typed: mail for BG_EV_DTVSV_BML_MAIL_REQ. */
    static String kind(Record request) {
        return request.getClass().getSimpleName().replaceAll("^BG_EV_DTVSV_BML_|_REQ$", "")
                .toLowerCase(Locale.ROOT);
    }

    /** What an event means; its components where no text is known for it. */
    static String meaning(Record event) {
        if (event instanceof BG_EV_DTVSV_GOOD_SENS_NOTIFY) {
            return "reception is good";
        }
        if (event instanceof BG_EV_DTVSV_BAD_SENS_NOTIFY notice) {
            return "reception is bad, level " + notice.sensitivity_level();
        }
        if (event instanceof BG_EV_DTVSV_CAP_STATUS_NOTIFY notice) {
            return "captions  " + running(notice.change_status());
        }
        if (event instanceof BG_EV_DTVSV_BML_STATUS_NOTIFY notice) {
            return "data      " + running(notice.change_status());
        }
        if (event instanceof BG_EV_DTVSV_BML_END_FEP_NOTIFY) {
            return "the text input is no longer requested";
        }
        if (event instanceof BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY notice) {
            return "the picture is saved, result " + notice.result();
        }
        if (event instanceof BG_EV_DTVSV_REC_STATUS_NOTIFY notice) {
            return "recording, status " + notice.rec_status();
        }
        if (event instanceof BG_EV_DTVSV_PLAY_EVENT_NOTIFY notice) {
            return "playback has reached the " + (notice.play_event() == END_REACHED ? "end"
                    : "beginning");
        }
        if (event instanceof BG_EV_DTVSV_PLAY_ERROR_NOTIFY notice) {
            return "playback has reached a damaged place, error " + notice.play_error();
        }
        return NotificationText.of(event).orElseGet(() -> text(event));
    }

    private static String running(int status) {
        return switch (status) {
            case 0 -> "off";
            case 1 -> "on";
            case 2 -> "suspended";
            default -> "status " + status;
        };
    }

    /** The components of an event, on one line. */
    static String text(Record event) {
        return event.toString().replaceAll("BG_(EV|TS)_DTVSV(LIB)?_", "")
                .replaceFirst("handle=-?\\d+(, )?", "").replaceAll("=[A-Z_]+\\[", "=[");
    }
}
