package tenrik.desk.evening;

import java.util.List;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.NotificationText;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SELECT_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_BROADCAST_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY;

/** Reception of stations: selection, search, and what is received of a station. */
final class Reception {
    private static final int SEARCH_UP = 0;
    private static final int SEARCH_DOWN = 1;

    private final EveningContext context;
    private final List<Station> stations;

    Reception(EveningContext context, List<Station> stations) {
        this.context = context;
        this.stations = stations;
    }

    /** Selects a station from the middle of the list, searches, and receives that station again. */
    void run() throws DeskException, InterruptedException {
        Station chosen = stations.get(stations.size() / 2);
        context.screen().title("Watching");
        String select = "Select " + chosen.label();
        BG_EV_DTVSV_SELECT_CHANNEL_REPLY selected = CheckedCommands.need(context.commands().ask(
                select, () -> context.service().DtvSvLib_SelectChannel(
                        context.session(), Station.firstServiceOf(chosen.channel())),
                BG_EV_DTVSV_SELECT_CHANNEL_REPLY.class));
        context.screen().answered("receiving channel " + selected.physical_channel() + ", service "
                + selected.service_no());
        showBroadcast(select);
        searchUp(chosen);
        cancelSearch(chosen);
        receive(chosen);
    }

    /** Stops receiving, in both ways. */
    void stop() throws DeskException, InterruptedException {
        stopReceiving();
        receive(stations.get(0));
        context.askSync("Stop receiving, and wait for the answer", "stopped",
                () -> context.service().DtvSvLib_TerminateBroadcastReceiving_Sync(context.session())
                        .return_value());
    }

    private void stopReceiving() throws DeskException, InterruptedException {
        context.commands().ask("Stop receiving",
                () -> context.service().DtvSvLib_TerminateBroadcastReceiving(context.session()),
                BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY.class);
        context.screen().answered("stopped");
    }

    private void searchUp(Station from) throws DeskException, InterruptedException {
        String what = "Search up from channel " + from.channel();
        search(what, from, SEARCH_UP);
        BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY end = context.commands().await(what,
                BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class, any -> true, event -> {
                    if (event instanceof BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY notice) {
                        context.screen().reported(
                                "looking at channel " + notice.physical_channel());
                    }
                });
        context.commands().checkEnd(what, CheckedCommands.need(end), end.result());
        int next = end.broadcast_info().physical_channel();
        context.screen().answered("receiving " + stations.stream()
                .filter(station -> station.channel() == next).map(Station::label)
                .findFirst().orElse("channel " + next));
        showBroadcast(what);
    }

    /** Nothing is received after a search that was cancelled in time. */
    private void cancelSearch(Station from) throws DeskException, InterruptedException {
        search("Search down from channel " + from.channel(), from, SEARCH_DOWN);
        int found = CheckedCommands.need(context.commands().ask("Cancel the search",
                () -> context.service().DtvSvLib_CancelSearchChannel(context.session()),
                BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class))
                .broadcast_info().physical_channel();
        if (found == 0) {
            context.screen().answered("cancelled");
        } else {
            context.screen().answered("too late, channel " + found + " is received");
            context.commands().noteTooLate("Cancel the search",
                    BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY.class);
            stopReceiving();
        }
    }

    private void search(String what, Station from, int operation) throws DeskException,
            InterruptedException {
        CheckedCommands.need(context.commands().ask(what,
                () -> context.service().DtvSvLib_StartSearchChannel(
                        context.session(), Station.firstServiceOf(from.channel()), operation),
                BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY.class));
        context.screen().answered("searching");
    }

    /** Receives a station while nothing is received. */
    private void receive(Station station) throws DeskException, InterruptedException {
        String what = "Receive " + station.label();
        CheckedCommands.need(context.commands().ask(what,
                () -> context.service().DtvSvLib_StartBroadcastReceiving(
                        context.session(), Station.firstServiceOf(station.channel())),
                BG_EV_DTVSV_START_BROADCAST_REPLY.class));
        context.screen().answered("receiving");
        showBroadcast(what);
    }

    /** Shows the notifications about a station whose reception has begun; the guide comes last. */
    private void showBroadcast(String what) throws DeskException, InterruptedException {
        BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY guide = context.commands().await(what,
                BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY.class, any -> true,
                event -> NotificationText.of(event).ifPresent(context.screen()::reported));
        if (guide != null) {
            NotificationText.of(guide).ifPresent(context.screen()::reported);
        }
    }
}
