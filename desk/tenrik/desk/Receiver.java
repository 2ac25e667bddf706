package tenrik.desk;

import java.time.Duration;
import java.util.ArrayList;
import java.util.List;

import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BROADCAST_INFO;

/** One evening with the receiver: a session from its creation to its release. */
final class Receiver {
    /** A scan of all channels, and a search all around, end long before this. */
    private static final Duration SCAN_LIMIT = Duration.ofSeconds(30);
    /** All about a station is told within a second. */
    private static final Duration NEWS_LIMIT = Duration.ofSeconds(10);
    private static final int SEARCH_UP = 0;
    private static final int SESSION_START = 0;
    private static final int MAX_DELAY = 100;

    private final DtvServerProxy service = new DtvServerProxy();
    private final Dialogue dialogue;
    private final Screen screen;
    private final boolean tour;

    /** A station that the scan found. */
    private record Found(int channel, String name) {}

    /**
     * @param tour whether the rest of the receiver is shown as well
     */
    Receiver(Dialogue dialogue, Screen screen, boolean tour) {
        this.dialogue = dialogue;
        this.screen = screen;
        this.tour = tour;
    }

    /** Creates a session, scans, selects, searches onward, stops, releases. */
    void run() throws DeskException, InterruptedException {
        int session = dialogue.ask("Create a session",
                () -> service.DtvSvLib_Create(SESSION_START, MAX_DELAY),
                BG_EV_DTVSV_CREATE_REPLY.class, BG_EV_DTVSV_CREATE_REPLY::result).handle();
        screen.answered("session " + session);

        List<Found> stations = scan(session);
        if (stations.isEmpty()) {
            screen.told("Nothing is on the air there, so there is nothing to select.");
        } else {
            watch(session, stations);
        }

        dialogue.ask("Release the session", () -> service.DtvSvLib_Release(session),
                BG_EV_DTVSV_RELEASE_REPLY.class, BG_EV_DTVSV_RELEASE_REPLY::result);
        screen.answered("released");
    }

    private List<Found> scan(int session) throws DeskException, InterruptedException {
        String what = "Scan UHF 13 to 62";
        int channels = dialogue.ask(what, () -> service.DtvSvLib_StartScan(session),
                BG_EV_DTVSV_START_SCAN_REPLY.class, BG_EV_DTVSV_START_SCAN_REPLY::result)
                .channnel_num();
        screen.answered("scanning " + channels + " channels");

        List<Found> stations = new ArrayList<>();
        BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY end = dialogue.await(what,
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class, any -> true, SCAN_LIMIT, event -> {
                    if (event instanceof BG_EV_DTVSV_SCAN_NOTIFY channel
                            && channel.result() == 0) {
                        stations.add(new Found(channel.scan_result().channnel(),
                                channel.scan_result().network_info().ts_name()));
                    }
                });
        if (end.result() != 0) {
            throw new DeskException(what + ": the scan ended with result " + end.result() + ".");
        }
        screen.answered(stations.size() + " stations found");
        screen.table(stations.stream().map(Receiver::label).toList());
        return stations;
    }

    /** Selects a station from the middle of the list, and searches onward from it. */
    private void watch(int session, List<Found> stations)
            throws DeskException, InterruptedException {
        Found chosen = stations.get(stations.size() / 2);
        String select = "Select " + label(chosen);
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY selected = dialogue.ask(select, () -> service.DtvSvLib_SelectChannel(session, service(chosen.channel())),
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class, BG_EV_DTVSV_SELECT_CHANNEL_REPLY::result);
        screen.answered("receiving channel " + selected.physical_channel() + ", service "
                + selected.service_no());
        tellBroadcast(select);

        String search = "Search onward from channel " + chosen.channel();
        dialogue.ask(search, () -> service.DtvSvLib_StartSearchChannel(
                        session, service(chosen.channel()), SEARCH_UP),
                BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY.class,
                BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY::result);
        screen.answered("searching");
        BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY end = dialogue.await(search,
                BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class, any -> true, SCAN_LIMIT,
                event -> {});
        if (end.result() != 0) {
            throw new DeskException(search + ": it ended with result " + end.result() + ".");
        }
        int next = end.broadcast_info().physical_channel();
        screen.answered("receiving " + stations.stream()
                .filter(found -> found.channel() == next).map(Receiver::label).findFirst()
                .orElse("channel " + next));
        tellBroadcast(search);

        Tour rest = tour ? new Tour(dialogue, screen, session) : null;
        int program = rest != null ? rest.receiving() : 0;
        dialogue.ask("Stop receiving",
                () -> service.DtvSvLib_TerminateBroadcastReceiving(session),
                BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY.class,
                BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY::result);
        screen.answered("stopped");
        if (rest != null) {
            rest.playing(program);
        }
    }

    /** What the service tells about a station that it has begun to receive; the guide comes last. */
    private void tellBroadcast(String what) throws DeskException, InterruptedException {
        BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY guide = dialogue.await(what,
                BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY.class, any -> true, NEWS_LIMIT,
                event -> News.of(event).ifPresent(screen::told));
        News.of(guide).ifPresent(screen::told);
    }

    private static BG_TS_DTVSVLIB_BROADCAST_INFO service(int channel) {
        return new BG_TS_DTVSVLIB_BROADCAST_INFO(channel, 0);
    }

    private static String label(Found station) {
        return station.channel() + "  " + (station.name().isEmpty() ? "-" : station.name());
    }
}
