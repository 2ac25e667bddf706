package tenrik.desk;

import java.util.List;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;

/** From one station to the next, and what is on there. */
final class Watching {
    private static final int SEARCH_UP = 0;
    private static final int SEARCH_DOWN = 1;

    private final Stage stage;
    private final List<Tuning.Station> stations;

    Watching(Stage stage, List<Tuning.Station> stations) {
        this.stage = stage;
        this.stations = stations;
    }

    /** Selects a station from the middle of the list, searches, and begins anew with that station. */
    void run() throws DeskException, InterruptedException {
        Tuning.Station chosen = stations.get(stations.size() / 2);
        stage.screen().title("Watching");
        String select = "Select " + chosen.label();
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY selected = stage.dialogue().ask(select,
                () -> stage.service().DtvSvLib_SelectChannel(
                        stage.session(), Stage.channel(chosen.channel())),
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class);
        stage.screen().answered("receiving channel " + selected.physical_channel() + ", service "
                + selected.service_no());
        tellBroadcast(select);
        searchOnward(chosen);
        cancelSearch(chosen);
        receive(chosen);
    }

    /** Stops receiving, in both ways. */
    void stop() throws DeskException, InterruptedException {
        stopReceiving();
        receive(stations.get(0));
        stage.exchange("Stop receiving, and wait for the answer", "stopped",
                () -> stage.service().DtvSvLib_TerminateBroadcastReceiving_Sync(stage.session())
                        .return_value());
    }

    private void stopReceiving() throws DeskException, InterruptedException {
        stage.dialogue().ask("Stop receiving",
                () -> stage.service().DtvSvLib_TerminateBroadcastReceiving(stage.session()),
                BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY.class);
        stage.screen().answered("stopped");
    }

    private void searchOnward(Tuning.Station from) throws DeskException, InterruptedException {
        String what = "Search onward from channel " + from.channel();
        search(what, from, SEARCH_UP);
        BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY end = stage.dialogue().await(what,
                BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class, any -> true, event -> {
                    if (event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY news) {
                        stage.screen().told("looking at channel " + news.physical_channel());
                    }
                });
        if (end.result() != 0) {
            throw new DeskException(what + ": it ended with result " + end.result() + ".");
        }
        int next = end.broadcast_info().physical_channel();
        stage.screen().answered("receiving " + stations.stream()
                .filter(station -> station.channel() == next).map(Tuning.Station::label)
                .findFirst().orElse("channel " + next));
        tellBroadcast(what);
    }

    /** A search that is cancelled at once leaves nothing received. */
    private void cancelSearch(Tuning.Station from) throws DeskException, InterruptedException {
        search("Search back from channel " + from.channel(), from, SEARCH_DOWN);
        int found = stage.dialogue().ask("Cancel the search",
                () -> stage.service().DtvSvLib_CancelSearchChannel(stage.session()),
                BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class)
                .broadcast_info().physical_channel();
        if (found == 0) {
            stage.screen().answered("cancelled");
        } else {
            stage.screen().answered("too late, channel " + found + " is received");
            stopReceiving();
        }
    }

    private void search(String what, Tuning.Station from, int operation) throws DeskException,
            InterruptedException {
        stage.dialogue().ask(what, () -> stage.service().DtvSvLib_StartSearchChannel(
                        stage.session(), Stage.channel(from.channel()), operation),
                BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY.class);
        stage.screen().answered("searching");
    }

    /** Receives a station while nothing is received. */
    private void receive(Tuning.Station station) throws DeskException, InterruptedException {
        String what = "Receive " + station.label();
        stage.dialogue().ask(what, () -> stage.service().DtvSvLib_StartBroadcastReceiving(
                        stage.session(), Stage.channel(station.channel())),
                BG_EV_DTVSV_START_BROADCAST_REPLY.class);
        stage.screen().answered("receiving");
        tellBroadcast(what);
    }

    /** What the service tells about a station that it has begun to receive; the guide comes last. */
    private void tellBroadcast(String what) throws DeskException, InterruptedException {
        BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY guide = stage.dialogue().await(what,
                BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY.class, any -> true,
                event -> News.of(event).ifPresent(stage.screen()::told));
        News.of(guide).ifPresent(stage.screen()::told);
    }
}
