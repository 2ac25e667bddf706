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

/** What every command of the shell uses: sends commands to the bridge and waits for answers. */
final class RemoteControl implements AutoCloseable {
    /** The longest wait for an answer. */
    static final Duration LIMIT = Duration.ofSeconds(10);

    private static final int DONE = 0;
    private static final int EMPTY = 16;
    private static final Predicate<Record> NOTHING = any -> false;

    private final Desk desk;
    private final ShellOutput output;
    private final Sessions sessions = new Sessions();
    private final PendingRequests requests;
    private final EventPrinter printer;
    /** Selects the events that the running command waits for. */
    private volatile Predicate<Record> subscription = NOTHING;
    private volatile boolean ended;

    RemoteControl(Desk desk, ShellOutput output) {
        this.desk = desk;
        this.output = output;
        requests = new PendingRequests(desk.service(), output);
        printer = new EventPrinter(output, sessions);
        desk.events().setFilter(this::process);
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

    /** Ends the shell after the running command. */
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

    /** Processes an event, on the thread that delivers it. True when the event is kept. */
    private boolean process(Record event) {
        try {
            boolean subscribed = subscription.test(event);
            sessions.update(event);
            requests.update(event);
            printer.show(event, subscribed);
            requests.answerIfAutomatic(event);
            return subscribed;
        } catch (RuntimeException failure) {
            output.failed(event + ": " + failure);
            return false;
        }
    }

    /**
     * Sends a command about the current session and waits for its answer.
     *
     * @param done what is shown when it is done; null when the caller shows it
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

    /** The same for a command that needs no session. */
    <T extends Record> Optional<T> ask(
            WaitOption waiting, String done, Supplier<BG_TE_DTVSVLIB_RESULT> command,
            Class<T> reply, Predicate<Record> wanted) throws DeskException, InterruptedException {
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

    /** The same for a command that also has a synchronous native. */
    void ask(
            SyncOption waiting, String done,
            Function<SessionState, BG_TE_DTVSVLIB_RESULT> command, Class<? extends Record> reply,
            Function<SessionState, Record> syncCommand) throws DeskException, InterruptedException {
        if (!waiting.sync) {
            ask(waiting.waiting, done, command, reply);
            return;
        }
        Record answer = syncCommand.apply(session());
        if (answer == null) {
            throw new DeskException("the bridge returned null");
        }
        sessions.update(answer);
        checkAnswer(resultOf(answer));
        output.screen().answered(done);
    }

    /** Stops answering requests automatically. */
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

    /** Checks the result of a command. */
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

    /** The result of a synchronous command is the first component of what it returns. */
    private static int resultOf(Record answer) {
        try {
            return (int) answer.getClass().getRecordComponents()[0].getAccessor().invoke(answer);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(answer + " begins with no result", failure);
        }
    }

    /** Keeps events for a command, until the subscription is closed. */
    Subscription subscribe(Predicate<Record> wanted) {
        desk.events().clear();
        subscription = wanted;
        return new Subscription();
    }

    /** The events that a command waits for; begun before the command is sent. */
    final class Subscription implements AutoCloseable {
        private Subscription() {}

        /**
         * Waits for the next event.
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
            subscription = NOTHING;
            desk.events().clear();
        }
    }
}
