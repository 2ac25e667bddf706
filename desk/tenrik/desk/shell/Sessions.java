package tenrik.desk.shell;

import java.util.Comparator;
import java.util.List;
import java.util.Map;
import java.util.concurrent.ConcurrentSkipListMap;
import java.util.concurrent.CopyOnWriteArrayList;

import tenrik.desk.core.Station;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CANCEL_SCAN_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO;

/** The open sessions, the stations found and the recordings made, as events report them. */
final class Sessions {
    private static final int DONE = 0;

    private final Map<Integer, SessionState> open = new ConcurrentSkipListMap<>();
    private final List<Station> stations = new CopyOnWriteArrayList<>();
    private final List<Recording> recordings = new CopyOnWriteArrayList<>();
    private volatile SessionState current;

    /** A recording that was kept. */
    record Recording(int programme, BG_TE_DTVSVLIB_RECORDING_MEDIUM medium, String title) {}

    List<SessionState> all() {
        return List.copyOf(open.values());
    }

    /** The current session, to which commands go; null when none is open. */
    SessionState current() {
        return current;
    }

    /** Makes a session the current one. False when no such session is open. */
    boolean use(int handle) {
        SessionState session = open.get(handle);
        if (session != null) {
            current = session;
        }
        return session != null;
    }

    /** Whether a session is scanning. */
    boolean isScanning(int handle) {
        SessionState session = open.get(handle);
        return session != null && session.isScanning();
    }

    /** The stations that the last scan has found so far. */
    List<Station> stations() {
        return List.copyOf(stations);
    }

    /** The label of a station that the last scan has found; else its channel. */
    String label(long channel) {
        return stations.stream().filter(station -> station.channel() == channel)
                .map(Station::label).findFirst().orElse("channel " + channel);
    }

    List<Recording> recordings() {
        return List.copyOf(recordings);
    }

    /** Updates the state with an event, or with what a synchronous native has returned. */
    void update(Record event) {
        if (event instanceof BG_EV_DTVSV_CREATE_REPLY reply && reply.result() == DONE) {
            current = new SessionState(reply.handle());
            open.put(reply.handle(), current);
        } else if (event instanceof BG_EV_DTVSV_RELEASE_REPLY reply && reply.result() == DONE) {
            released(reply.handle());
        } else if (event instanceof BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO info
                && info.return_value() == DONE) {
            released(info.handle());
        } else if (event instanceof BG_EV_DTVSV_SCAN_NOTIFY notice && notice.result() == DONE) {
            found(new Station(notice.scan_result().channnel(),
                    notice.scan_result().network_info().ts_name()));
        } else {
            SessionState session = open.get(Events.handle(event));
            if (session != null) {
                update(session, event);
            }
        }
    }

    private void update(SessionState session, Record event) {
        if (event instanceof BG_EV_DTVSV_START_SCAN_REPLY reply && reply.result() == DONE) {
            stations.clear();
            session.setScanning(true);
        } else if (event instanceof BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY
                || event instanceof BG_TS_DTVSVLIB_CANCEL_SCAN_SYNC_INFO) {
            session.setScanning(false);
        } else if (event instanceof BG_EV_DTVSV_SELECT_CHANNEL_REPLY reply
                && reply.result() == DONE) {
            setReceiving(session, reply.physical_channel(), reply.service_no());
        } else if (event instanceof BG_EV_DTVSV_START_BROADCAST_REPLY reply
                && reply.result() == DONE) {
            setReceiving(session, reply.physical_channel(), reply.service_no());
        } else if (event instanceof BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY notice
                && notice.result() == DONE && notice.broadcast_info().physical_channel() != 0) {
            session.setReceiving(notice.broadcast_info());
        } else if (event instanceof BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY notice) {
            session.setGuide(notice.epg_info());
        } else if (endsReception(event)) {
            session.setStopped();
        } else if (event instanceof BG_EV_DTVSV_TERMINATE_REC_REPLY reply
                && reply.result() == DONE) {
            recorded(session, reply.terminate_rec());
        } else if (event instanceof BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO info
                && info.result() == DONE) {
            recorded(session, info.terminate_rec());
        }
    }

    private static boolean endsReception(Record event) {
        return event instanceof BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY reply
                && reply.result() == DONE
                || event instanceof BG_TS_DTVSVLIB_TERMINATE_BROADCAST_RECEIVING_REPLY_SYNC_INFO it
                && it.return_value() == DONE
                || event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY search
                && search.result() == DONE;
    }

    private static void setReceiving(SessionState session, long channel, int service) {
        session.setReceiving(new BG_TS_DTVSVLIB_BROADCAST_INFO((int) channel, service));
    }

    /** A channel that is scanned again is listed once. */
    private void found(Station station) {
        stations.removeIf(known -> known.channel() == station.channel());
        stations.add(station);
    }

    /** A recording that was discarded has no number. */
    private void recorded(SessionState session, BG_TS_DTVSVLIB_TERMINATE_REC_REPLY where) {
        if (where != null && where.program_no() != 0) {
            recordings.add(new Recording(where.program_no(), session.medium(), session.title()));
        }
    }

    private void released(int handle) {
        SessionState session = open.remove(handle);
        if (session != null && session == current) {
            current = open.values().stream()
                    .min(Comparator.comparingInt(SessionState::handle)).orElse(null);
        }
    }
}
