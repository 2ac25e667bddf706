package tenrik.desk.shell;

import tenrik.desk.core.RequestAnswerer;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;

/** Shows events as they come. */
final class EventPrinter {
    /** Which events are shown. */
    enum Choice {
        /** Those that no command waits for, in words, without the ones that come regularly. */
        SOME,
        /** All, with everything they hold. */
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
     * Shows an event, or does not.
     *
     * @param claimed whether a command waits for it, and tells what it says
     */
    void show(Record event, boolean claimed) {
        boolean asks = RequestAnswerer.isRequest(event);
        String mark = (asks ? "? " : "* ") + "[" + Events.handle(event) + "] ";
        if (choice == Choice.ALL) {
            output.news(mark, Events.text(event));
        } else if (choice == Choice.SOME && !claimed && !Events.isRegular(event)
                && !isFound(event)) {
            output.news(mark, asks ? "asks for " + Events.kind(event) + ": "
                    + RequestAnswerer.text(event) : Events.words(event));
        }
    }

    /** While a session scans, the services of every station that it finds come by. */
    private boolean isFound(Record event) {
        return event instanceof BG_EV_DTVSV_SERVICE_INFO_NOTIFY notice
                && sessions.isScanning(notice.handle());
    }
}
