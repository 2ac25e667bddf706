package tenrik.desk;

import java.util.ArrayList;
import java.util.List;

import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_REC_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_SCAN_REPLY;

/** The evening's first part: what is on the air. */
final class Tuning {
    private static final int CHANNELS = 50;
    private static final int FIRST_CHANNEL = 13;

    private final Stage stage;

    /** A station that the scan found. */
    record Station(int channel, String name) {
        String label() {
            return channel + "  " + (name.isEmpty() ? "-" : name);
        }
    }

    Tuning(Stage stage) {
        this.stage = stage;
    }

    /** Says where to draw, tries what cannot work, scans. The stations that were found. */
    List<Station> run() throws DeskException, InterruptedException {
        stage.screen().title("Tuning");
        stage.dialogue().ask("Begin with picture and sound, on three surfaces",
                () -> stage.service().DtvSvLib_SetFirstComponent(stage.session(),
                        stage.planes().firstComponents()),
                BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY.class);
        stage.screen().answered("set");
        refusals();
        cancelledScans();
        List<Station> stations = scan();
        if (!stations.isEmpty()) {
            stage.screen().table(stations.stream().map(Station::label).toList());
        }
        return stations;
    }

    private void refusals() throws DeskException, InterruptedException {
        Dialogue dialogue = stage.dialogue();
        int session = stage.session();
        dialogue.refused("Create with start type 5",
                () -> stage.service().DtvSvLib_Create(5, 100), Stage.BAD_ARGUMENT);
        dialogue.refused("Create with a delay of 1000",
                () -> stage.service().DtvSvLib_Create(0, 1000), Stage.BAD_ARGUMENT);
        dialogue.refused("Select channel 63",
                () -> stage.service().DtvSvLib_SelectChannel(session, Stage.channel(63)),
                Stage.BAD_ARGUMENT);
        dialogue.refused("Select without saying what",
                () -> stage.service().DtvSvLib_SelectChannel(session, null), Stage.BAD_ARGUMENT);
        dialogue.refusedByService("Record while nothing is received",
                () -> stage.service().DtvSvLib_StartRec(session, 0),
                BG_EV_DTVSV_START_REC_REPLY.class, Stage.NOT_NOW);
        dialogue.exchangeRefused("Stop a playback that there is not",
                () -> stage.service().DtvSvLib_TerminatePlay_Sync(session).return_value(),
                Stage.NOT_NOW);
    }

    private void start(String what) throws DeskException, InterruptedException {
        stage.dialogue().ask(what, () -> stage.service().DtvSvLib_StartScan(stage.session()),
                BG_EV_DTVSV_START_SCAN_REPLY.class);
    }

    private void cancelledScans() throws DeskException, InterruptedException {
        start("Scan");
        boolean[] complete = {false};
        // A scan that has ended before it was cancelled says so with the same event.
        stage.dialogue().ask("Cancel the scan",
                () -> stage.service().DtvSvLib_CancelScan(stage.session()),
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class,
                event -> complete[0] |= isLastChannel(event));
        tellCancelled(!complete[0]);
        start("Scan");
        tellCancelled(stage.dialogue().exchangeInTime("Cancel the scan, and wait for the answer",
                () -> stage.service().DtvSvLib_CancelScan_Sync(stage.session()).return_value(),
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class));
    }

    private static boolean isLastChannel(Record event) {
        return event instanceof BG_EV_DTVSV_SCAN_NOTIFY news
                && news.scan_result().channnel() == FIRST_CHANNEL + CHANNELS - 1;
    }

    private void tellCancelled(boolean inTime) {
        stage.screen().answered(inTime ? "cancelled" : "too late, all channels were scanned");
    }

    private List<Station> scan() throws DeskException, InterruptedException {
        String what = "Scan to the end";
        start(what);
        List<Station> found = new ArrayList<>();
        BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY end = stage.dialogue().await(what,
                BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY.class, any -> true, event -> {
                    if (event instanceof BG_EV_DTVSV_SCAN_NOTIFY news) {
                        look(news, found);
                    }
                });
        if (end.result() != 0) {
            throw new DeskException(what + ": it ended with result " + end.result() + ".");
        }
        stage.screen().answered(found.size() + " stations found");
        return found;
    }

    private void look(BG_EV_DTVSV_SCAN_NOTIFY news, List<Station> found) {
        int channel = news.scan_result().channnel();
        if (news.result() == 0) {
            found.add(new Station(channel, news.scan_result().network_info().ts_name()));
        }
        stage.screen().progress(channel - FIRST_CHANNEL + 1, CHANNELS, found.size() + " found");
    }
}
