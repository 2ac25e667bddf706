package tenrik.desk.shell;

import java.io.OutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.RequestAnswerer;
import tenrik.desk.core.Screen;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_END_FEP_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_BML_STATUS_NOTIFY;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_START_FEP_REQ;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RELEASE_REPLY;

/** The requests of data-broadcast documents that are not answered yet. */
final class PendingRequests implements AutoCloseable {
    private static final int OFF = 0;

    private final RequestAnswerer application;
    private final ShellOutput output;
    private final List<Record> pending = new ArrayList<>();
    /** Sends automatic answers: not on the threads that deliver the requests. */
    private final ExecutorService answers = Executors.newSingleThreadExecutor(
            task -> new Thread(task, "desk-answers"));
    private volatile boolean automatic;
    private volatile boolean willing;

    PendingRequests(DtvServerProxy service, ShellOutput output) {
        // A request was shown when it came.
        application = new RequestAnswerer(service, new Screen(new PrintStream(
                OutputStream.nullOutputStream(), false, StandardCharsets.UTF_8), false));
        this.output = output;
    }

    /** The unanswered requests, the oldest first. */
    synchronized List<Record> pending() {
        return List.copyOf(pending);
    }

    /**
     * Sets whether requests are answered automatically, as they come.
     *
     * @param agree whether they are carried out; otherwise they are refused
     */
    void setAutomatic(boolean on, boolean agree) {
        willing = agree;
        automatic = on;
    }

    /** Adds a request, or removes those that an event ends. */
    void update(Record event) {
        if (RequestAnswerer.isRequest(event)) {
            add(event);
        } else if (event instanceof BG_EV_DTVSV_BML_END_FEP_NOTIFY notice) {
            drop(notice.handle(), BG_EV_DTVSV_BML_START_FEP_REQ.class);
        } else if (event instanceof BG_EV_DTVSV_BML_STATUS_NOTIFY notice
                && notice.change_status() == OFF || event instanceof BG_EV_DTVSV_RELEASE_REPLY) {
            drop(Events.handle(event), Record.class);
        }
    }

    /** Answers a request, if requests are answered automatically. */
    void answerIfAutomatic(Record event) {
        if (automatic && RequestAnswerer.isRequest(event)) {
            answers.execute(() -> answerAlone(event));
        }
    }

    /** A document has one open request of a kind: a new one replaces the old one. */
    private synchronized void add(Record request) {
        drop(Events.handle(request), request.getClass());
        pending.add(request);
    }

    private synchronized void drop(int handle, Class<?> kind) {
        pending.removeIf(old -> kind.isInstance(old) && Events.handle(old) == handle);
    }

    /**
     * Answers a request and removes it, even if the answer is not taken.
     *
     * @param agree whether it is carried out; otherwise it is refused
     */
    void answer(Record request, boolean agree) throws DeskException {
        synchronized (this) {
            pending.removeIf(old -> old == request);
        }
        synchronized (application) {
            application.answer(request, agree);
        }
        output.screen().answered(Events.kind(request) + (agree ? " answered" : " refused"));
    }

    private void answerAlone(Record request) {
        try {
            answer(request, willing);
        } catch (DeskException failure) {
            output.failed(failure.getMessage());
        }
    }

    @Override
    public void close() {
        answers.shutdownNow();
    }
}
