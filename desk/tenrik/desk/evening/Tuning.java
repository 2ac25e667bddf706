package tenrik.desk.evening;

import java.util.ArrayList;
import java.util.List;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ServiceResult;
import tenrik.desk.core.Station;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;

/** The first part of the evening: refusals, and scans for the stations on the air. */
final class Tuning {
    private static final int CHANNELS = 50;
    private static final int FIRST_CHANNEL = 13;

    private final EveningContext context;

    Tuning(EveningContext context) {
        this.context = context;
    }

    /** Sets the planes, sends commands that are refused, and scans. Returns the stations found. */
    List<Station> run() throws DeskException, InterruptedException {
        context.screen().title("Tuning");
        context.commands().ask("Begin with picture and sound, on three surfaces",
                () -> context.service().DtvSvLib_SetFirstComponent(context.session(),
                        context.planes().firstComponents()),
                BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class);
        context.screen().answered("set");
        sendRefusedCommands();
        cancelScans();
        List<Station> stations = scan();
        if (!stations.isEmpty()) {
            context.screen().table(stations.stream().map(Station::label).toList());
        }
        return stations;
    }

    private void sendRefusedCommands() throws DeskException, InterruptedException {
        CheckedCommands commands = context.commands();
        int session = context.session();
        commands.expectRefused("Create with start type 5",
                () -> context.service().DtvSvLib_Create(5, 100), EveningContext.BAD_ARGUMENT);
        commands.expectRefused("Create with a delay of 1000",
                () -> context.service().DtvSvLib_Create(0, 1000), EveningContext.BAD_ARGUMENT);
        commands.expectRefused("Select channel 63",
                () -> context.service().DtvSvLib_SelectChannel(session, Station.firstServiceOf(63)),
                EveningContext.BAD_ARGUMENT);
        commands.expectRefused("Select without a channel",
                () -> context.service().DtvSvLib_SelectChannel(session, null),
                EveningContext.BAD_ARGUMENT);
        commands.expectRefusedByService("Record while nothing is received",
                () -> context.service().DtvSvLib_StartRec(session, 0),
                BG_EV_DTVSV_START_REC_REPLY.class, ServiceResult.NOT_NOW);
        commands.expectSyncRefused("Stop playback while nothing is played",
                () -> context.service().DtvSvLib_TerminatePlay_Sync(session).return_value(),
                ServiceResult.NOT_NOW);
    }

    private void start(String what) throws DeskException, InterruptedException {
        CheckedCommands.need(context.commands().ask(what,
                () -> context.service().DtvSvLib_StartScan(context.session()),
                BG_EV_DTVSV_START_SCAN_REPLY.class));
    }

    private void cancelScans() throws DeskException, InterruptedException {
        start("Scan");
        boolean[] complete = {false};
        // A scan that has ended before it was cancelled sends the same event.
        context.commands().ask("Cancel the scan",
                () -> context.service().DtvSvLib_CancelScan(context.session()),
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class,
                event -> complete[0] |= isLastChannel(event));
        showCancelled(!complete[0]);
        if (complete[0]) {
            context.commands().noteTooLate(
                    "Cancel the scan", BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class);
        }
        start("Scan");
        showCancelled(context.commands().askSyncInTime("Cancel the scan, and wait for the answer",
                () -> context.service().DtvSvLib_CancelScan_Sync(context.session()).return_value(),
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class));
    }

    private static boolean isLastChannel(Record event) {
        return event instanceof BG_EV_DTVSV_SCAN_NOTIFY notice
                && notice.scan_result().channnel() == FIRST_CHANNEL + CHANNELS - 1;
    }

    private void showCancelled(boolean inTime) {
        context.screen().answered(inTime ? "cancelled" : "too late, all channels were scanned");
    }

    /** Scans to the end. Returns the stations found. */
    List<Station> scan() throws DeskException, InterruptedException {
        String what = "Scan to the end";
        start(what);
        List<Station> found = new ArrayList<>();
        BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY end = context.commands().await(what,
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class, any -> true, event -> {
                    if (event instanceof BG_EV_DTVSV_SCAN_NOTIFY notice) {
                        addChannel(notice, found);
                    }
                });
        if (end != null) {
            context.commands().checkEnd(what, end, end.result());
        }
        context.screen().answered(found.size() + " stations found");
        return found;
    }

    private void addChannel(BG_EV_DTVSV_SCAN_NOTIFY notice, List<Station> found) {
        int channel = notice.scan_result().channnel();
        if (notice.result() == 0) {
            found.add(new Station(channel, notice.scan_result().network_info().ts_name()));
        }
        context.screen().progress(channel - FIRST_CHANNEL + 1, CHANNELS, found.size() + " found");
    }
}
