package tenrik.desk.shell;

import java.time.Duration;
import java.util.Optional;
import java.util.concurrent.atomic.AtomicBoolean;
import java.util.function.Function;
import java.util.function.Predicate;
import java.util.function.Supplier;

import tenrik.desk.core.Desk;
import tenrik.desk.core.DeskException;
import tenrik.desk.core.ServiceResult;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** What every command of the remote control uses: the bridge, and the way to its answers. */
final class RemoteControl implements AutoCloseable {
    /** How long an answer is awaited. */
    static final Duration LIMIT = Duration.ofSeconds(10);

    private static final int DONE = 0;
    private static final int EMPTY = 16;
    private static final Predicate<Record> NOTHING = any -> false;

    private final Desk desk;
    private final ShellOutput output;
    private final Sessions sessions = new Sessions();
    private final PendingRequests requests;
    private final EventPrinter printer;
    /** The events that a command waits for. */
    private volatile Predicate<Record> claim = NOTHING;
    private volatile boolean ended;

    RemoteControl(Desk desk, ShellOutput output) {
        this.desk = desk;
        this.output = output;
        requests = new PendingRequests(desk.service(), output);
        printer = new EventPrinter(output, sessions);
        desk.events().setFilter(this::arrived);
    }

    DtvServerProxy service() {
        return desk.service();
    }

    ShellOutput output() {
        return output;
    }

    Sessions sessions() {
        return sessions;
    }

    PendingRequests requests() {
        return requests;
    }

    EventPrinter printer() {
        return printer;
    }

    /** The shell ends after this command. */
    void end() {
        ended = true;
    }

    boolean hasEnded() {
        return ended;
    }

    /** The current session. */
    SessionState session() throws DeskException {
        SessionState session = sessions.current();
        if (session == null) {
            throw new DeskException("no session is open; \"create\" opens one");
        }
        return session;
    }

    /** On the threads that bring events: notes one, shows it, and says whether to keep it. */
    private boolean arrived(Record event) {
        try {
            boolean claimed = claim.test(event);
            sessions.observe(event);
            requests.observe(event);
            printer.show(event, claimed);
            requests.serve(event);
            return claimed;
        } catch (RuntimeException failure) {
            output.failed(event + ": " + failure);
            return false;
        }
    }

    /**
     * Sends a command about the current session and waits for its answer.
     *
     * @param done what to say when it is done; null when the caller says it
     * @return the answer; empty when it is not waited for
     * @throws DeskException when the bridge or the service refuses it, or when no answer comes
     */
    <T extends Record> Optional<T> ask(
            WaitOption waiting, String done,
            Function<SessionState, BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        SessionState session = session();
        return ask(waiting, done, () -> command.apply(session), reply,
                event -> Events.handle(event) == session.handle());
    }

    /** The same with a command that may be about no session yet. */
    <T extends Record> Optional<T> ask(
            WaitOption waiting, String done, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply,
            Predicate<Record> wanted) throws DeskException, InterruptedException {
        if (waiting.noWait) {
            send(command);
            output.screen().answered("sent");
            return Optional.empty();
        }
        AtomicBoolean taken = new AtomicBoolean();
        try (Subscription answer = subscribe(event -> reply.isInstance(event) && wanted.test(event)
                && taken.compareAndSet(false, true))) {
            send(command);
            T event = reply.cast(answer.next());
            checkAnswer(ServiceResult.of(event));
            if (done != null) {
                output.screen().answered(done);
            }
            return Optional.of(event);
        }
    }

    /** The same with a command that has a twin which waits for the answer itself. */
    void ask(
            SyncOption waiting, String done,
            Function<SessionState, BG_TE_DTVSVLIB_RESULT> command, Class<? extends Record> reply,
            Function<SessionState, Record> exchange) throws DeskException, InterruptedException {
        if (!waiting.sync) {
            ask(waiting.waiting, done, command, reply);
            return;
        }
        Record answer = exchange.apply(session());
        if (answer == null) {
            throw new DeskException("the bridge returned null");
        }
        sessions.observe(answer);
        checkAnswer(firstOf(answer));
        output.screen().answered(done);
    }

    /** Answers nothing more by itself. */
    @Override
    public void close() {
        requests.close();
    }

    /** Sends a command. */
    void send(Supplier<BG_TE_DTVSVLIB_RESULT> command) throws DeskException {
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException("the bridge refused it: " + words(taken));
        }
    }

    /** Says what is wrong when the service has not done what it was asked. */
    static void checkAnswer(int result) throws DeskException {
        if (result != DONE) {
            throw new DeskException("the service answered with " + ServiceResult.text(result)
                    + (result == EMPTY ? ", an empty answer" : ""));
        }
    }

    private static String words(BG_TE_DTVSVLIB_RESULT result) {
        String name = String.valueOf(result).replace("DTVSVLIB_RESULT_", "");
        return name + switch (name) {
            case "NG" -> ", the service did not take it";
            case "PARAM_NG" -> ", an argument is not allowed";
            default -> "";
        };
    }

    /** The result of a command that waits by itself stands first in what it returns. */
    private static int firstOf(Record answer) {
        try {
            return (int) answer.getClass().getRecordComponents()[0].getAccessor().invoke(answer);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(answer + " begins with no result", failure);
        }
    }

    /** From now on events are kept for a command, until it closes the claim. */
    Subscription subscribe(Predicate<Record> wanted) {
        desk.events().clear();
        claim = wanted;
        return new Subscription();
    }

    /** Events that are kept for a command, from before it is sent. */
    final class Subscription implements AutoCloseable {
        private Subscription() {}

        /**
         * Waits for the next of them.
         *
         * @throws DeskException when none comes in time
         */
        Record next() throws DeskException, InterruptedException {
            return desk.events().await(Record.class, any -> true, LIMIT, other -> {})
                    .orElseThrow(() -> new DeskException("no answer came in "
                            + LIMIT.toSeconds() + " s"));
        }

        @Override
        public void close() {
            claim = NOTHING;
            desk.events().clear();
        }
    }
}
