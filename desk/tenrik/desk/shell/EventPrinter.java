package tenrik.desk.shell;

import tenrik.desk.core.RequestAnswerer;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;

/** Shows events as they come. */
final class EventPrinter {
    /** Which events are shown. */
    enum Choice {
        /** Those that no command waits for, by their meaning, without the periodic ones. */
        SOME,
        /** All, with all their components. */
        ALL,
        NONE
    }

    private final ShellOutput output;
    private final Sessions sessions;
    private volatile Choice choice = Choice.SOME;

    EventPrinter(ShellOutput output, Sessions sessions) {
        this.output = output;
        this.sessions = sessions;
    }

    void choose(Choice shown) {
        choice = shown;
    }

    /**
     * Shows an event, if it is one of those that are shown.
     *
     * @param subscribed whether a command waits for it, and shows its answer itself
     */
    void show(Record event, boolean subscribed) {
        boolean request = RequestAnswerer.isRequest(event);
        String mark = (request ? "? " : "* ") + "[" + Events.handle(event) + "] ";
        if (choice == Choice.ALL) {
            output.event(mark, Events.text(event));
        } else if (choice == Choice.SOME && !subscribed && !Events.isPeriodic(event)
                && !isOfScan(event)) {
            output.event(mark, request ? "asks for " + Events.kind(event) + ": "
                    + RequestAnswerer.text(event) : Events.meaning(event));
        }
    }

    /** Whether an event reports the services of a station that a scan has found. */
    private boolean isOfScan(Record event) {
        return event instanceof BG_EV_DTVSV_SERVICE_INFO_NOTIFY notice
                && sessions.isScanning(notice.handle());
    }
}
