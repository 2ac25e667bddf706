package tenrik.desk;

import java.time.Duration;
import java.util.function.BooleanSupplier;
import java.util.function.Consumer;
import java.util.function.IntSupplier;
import java.util.function.Predicate;
import java.util.function.Supplier;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** Commands to the service and the events that answer them, one after the other. */
final class Dialogue {
    /** Longer than the service takes for anything on its clock, a recording included. */
    private static final Duration LONGEST = Duration.ofSeconds(90);
    /** Longer than the delivery of an event takes that was sent already. */
    private static final Duration DELIVERY = Duration.ofSeconds(10);
    private static final int DONE = 0;

    private final Mailbox mailbox;
    private final Pace pace;
    private final Screen screen;
    private final Summary summary;

    Dialogue(Mailbox mailbox, Pace pace, Screen screen, Summary summary) {
        this.mailbox = mailbox;
        this.pace = pace;
        this.screen = screen;
        this.summary = summary;
    }

    /**
     * Sends a command and waits for the event that answers it.
     *
     * @param what the command, in words
     * @param command sends it
     * @param reply the event that answers it, with a result
     * @throws DeskException when the command was not taken, or when no reply came in time, or one
     *     that says anything but 0
     */
    <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return ask(what, command, reply, other -> {});
    }

    /**
     * The same with a consumer.
     *
     * @param others gets the events before the reply
     */
    <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply,
            Consumer<Record> others) throws DeskException, InterruptedException {
        send(what, command);
        return accepted(what, await(what, reply, any -> true, others));
    }

    /**
     * The same with a command that the service refuses when what it is about has ended by itself:
     * a fast clock does not wait for the program. In stepped time that cannot be.
     *
     * @param ended whether an event that was awaited or that {@code others} got says that it has
     *     ended; asked when the command is refused
     * @return whether the command came in time
     */
    <T extends Record> boolean askInTime(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply,
            Consumer<Record> others, BooleanSupplier ended)
            throws DeskException, InterruptedException {
        send(what, command);
        T answer = await(what, reply, any -> true, others);
        if (resultOf(answer) == Stage.NOT_NOW && isLive() && ended.getAsBoolean()) {
            return false;
        }
        accepted(what, answer);
        return true;
    }

    /** Waits for the event that answers a command that was sent. */
    <T extends Record> T reply(String what, Class<T> type, Predicate<T> wanted)
            throws DeskException, InterruptedException {
        return accepted(what, await(what, type, wanted, other -> {}));
    }

    /** A reply that has to say 0. */
    private <T extends Record> T accepted(String what, T reply) throws DeskException {
        if (resultOf(reply) != DONE) {
            throw new DeskException(what + ": the service answered with result " + resultOf(reply)
                    + ".");
        }
        summary.replied();
        return reply;
    }

    /** Whether the service's time passes while the program does something else. */
    boolean isLive() {
        return !pace.isStepped();
    }

    /** Sends a command without waiting. */
    void send(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command) throws DeskException {
        screen.asked(what);
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException(what + ": the command was not taken (" + taken + ").");
        }
    }

    /** Sends a command that waits for its answer itself; what it returns has to be 0. */
    void exchange(String what, IntSupplier command) throws DeskException {
        screen.asked(what);
        accepted(what, command.getAsInt());
    }

    /**
     * The same with a command that the service refuses when what it is about has ended by itself;
     * see {@link #askInTime}.
     *
     * @param end the event that says so
     * @return whether the command came in time
     */
    boolean exchangeInTime(String what, IntSupplier command, Class<? extends Record> end)
            throws DeskException, InterruptedException {
        screen.asked(what);
        int result = command.getAsInt();
        // The event was sent before the refusal, and is delivered on another thread.
        if (result == Stage.NOT_NOW && isLive()
                && mailbox.await(end, any -> true, DELIVERY, other -> {}).isPresent()) {
            return false;
        }
        accepted(what, result);
        return true;
    }

    private void accepted(String what, int result) throws DeskException {
        if (result != DONE) {
            throw new DeskException(what + ": the service answered with " + result + ".");
        }
        summary.replied();
    }

    /**
     * Waits for an event.
     *
     * @param what the command it belongs to, in words
     * @param others gets the events before it
     * @throws DeskException when it does not come in time
     */
    <T extends Record> T await(
            String what, Class<T> type, Predicate<T> wanted, Consumer<Record> others)
            throws DeskException, InterruptedException {
        return mailbox.await(type, wanted, pace.limit(LONGEST), others).orElseThrow(() -> new DeskException(
                what + ": no " + type.getSimpleName() + " came."));
    }

    /** Sends what the bridge has to refuse, or cannot deliver. */
    void refused(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, BG_TE_DTVSVLIB_RESULT wanted)
            throws DeskException {
        BG_TE_DTVSVLIB_RESULT result = command.get();
        judge(what, words(result), words(wanted));
    }

    /** Sends what the service has to refuse in the event that answers it. */
    <T extends Record> void refusedByService(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply, int wanted)
            throws DeskException, InterruptedException {
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException(what + ": the command was not taken (" + taken + ").");
        }
        T answer = await(what, reply, any -> true, other -> {});
        judge(what, Stage.words(resultOf(answer)), Stage.words(wanted));
    }

    /** Sends what the service has to refuse while the sender waits. */
    void exchangeRefused(String what, IntSupplier command, int wanted) throws DeskException {
        judge(what, Stage.words(command.getAsInt()), Stage.words(wanted));
    }

    private static String words(BG_TE_DTVSVLIB_RESULT result) {
        return String.valueOf(result).replace("DTVSVLIB_RESULT_", "");
    }

    private void judge(String what, String came, String wanted) throws DeskException {
        screen.refused(what, came);
        summary.refused(what, came);
        if (!came.equals(wanted)) {
            throw new DeskException(what + ": refused with " + came + " instead of " + wanted
                    + ".");
        }
    }

    /** The result that every reply carries. */
    static int resultOf(Record reply) {
        try {
            return (int) reply.getClass().getMethod("result").invoke(reply);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(reply + " is no reply", failure);
        }
    }
}
