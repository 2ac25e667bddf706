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

/** What data-broadcast documents have asked for and nobody has answered. */
final class PendingRequests implements AutoCloseable {
    private static final int OFF = 0;

    private final RequestAnswerer application;
    private final ShellOutput output;
    private final List<Record> pending = new ArrayList<>();
    /** Answers by itself; not on the threads that bring the requests. */
    private final ExecutorService answers = Executors.newSingleThreadExecutor(
            task -> new Thread(task, "desk-answers"));
    private volatile boolean automatic;
    private volatile boolean willing;

    PendingRequests(DtvServerProxy service, ShellOutput output) {
        // What is asked for has been shown when it came.
        application = new RequestAnswerer(service, new Screen(new PrintStream(
                OutputStream.nullOutputStream(), false, StandardCharsets.UTF_8), false));
        this.output = output;
    }

    /** What is unanswered, the oldest first. */
    synchronized List<Record> pending() {
        return List.copyOf(pending);
    }

    /**
     * Whether requests are answered as they come.
     *
     * @param agree whether what they ask for is done
     */
    void answerAll(boolean on, boolean agree) {
        willing = agree;
        automatic = on;
    }

    /** Takes note of a request, and of what puts an end to one. */
    void observe(Record event) {
        if (RequestAnswerer.isRequest(event)) {
            add(event);
        } else if (event instanceof BG_EV_DTVSV_BML_END_FEP_NOTIFY notice) {
            drop(notice.handle(), BG_EV_DTVSV_BML_START_FEP_REQ.class);
        } else if (event instanceof BG_EV_DTVSV_BML_STATUS_NOTIFY notice
                && notice.change_status() == OFF || event instanceof BG_EV_DTVSV_RELEASE_REPLY) {
            drop(Events.handle(event), Record.class);
        }
    }

    /** Answers a request that was observed, if requests are to be answered as they come. */
    void serve(Record event) {
        if (automatic && RequestAnswerer.isRequest(event)) {
            answers.execute(() -> answerAlone(event));
        }
    }

    /** A document asks for one thing of a kind at a time: the new takes the old one's place. */
    private synchronized void add(Record request) {
        drop(Events.handle(request), request.getClass());
        pending.add(request);
    }

    private synchronized void drop(int handle, Class<?> kind) {
        pending.removeIf(old -> kind.isInstance(old) && Events.handle(old) == handle);
    }

    /**
     * Answers a request, which is pending no longer, even if the answer is not taken.
     *
     * @param agree whether what it asks for is done
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
