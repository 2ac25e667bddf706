package tenrik.desk.evening;

import java.time.Duration;
import java.util.function.BooleanSupplier;
import java.util.function.Consumer;
import java.util.function.IntSupplier;
import java.util.function.Predicate;
import java.util.function.Supplier;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EventQueue;
import tenrik.desk.core.Pace;
import tenrik.desk.core.Screen;
import tenrik.desk.core.ServiceResult;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/**
 * Sends commands to the service, waits for the events that answer them, and checks what they say.
 * A command that is not answered as expected ends the evening.
 */
final class CheckedCommands {
    /** Longer than the service takes for anything on its clock, a recording included. */
    private static final Duration LONGEST = Duration.ofSeconds(90);
    /** Longer than the delivery of an event takes that was sent already. */
    private static final Duration DELIVERY = Duration.ofSeconds(10);

    private final EventQueue events;
    private final Pace pace;
    private final Screen screen;
    private final Summary summary;
    private final boolean refusals;

    /** @param refusals whether the commands are sent that have to be refused */
    CheckedCommands(EventQueue events, Pace pace, Screen screen, Summary summary,
            boolean refusals) {
        this.events = events;
        this.pace = pace;
        this.screen = screen;
        this.summary = summary;
        this.refusals = refusals;
    }

    /**
     * Sends a command and waits for the event that answers it.
     *
     * @param the command, for people
     * @param command sends it
     * @param reply the event that answers it, with a result
     * @return the event
     * @throws DeskException when the command was not taken, when no reply came in time, or when its
     *     result is not 0
     */
    <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        return ask(what, command, reply, other -> {});
    }

    /**
     * The same, and passes on the events that come before the reply.
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
     * The same with a command that the service refuses when the action that it is about has ended
     * by itself: a fast clock does not wait for the program. That cannot be in stepped time.
     *
     * @param ended called when the command is refused: whether an earlier event says that the
     *     action has ended
     * @return whether the command came in time
     */
    <T extends Record> boolean askInTime(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply,
            Consumer<Record> others, BooleanSupplier ended)
            throws DeskException, InterruptedException {
        send(what, command);
        T answer = await(what, reply, any -> true, others);
        if (ServiceResult.of(answer) == ServiceResult.NOT_NOW && isLive() && ended.getAsBoolean()) {
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

    /** Checks that the result of a reply is 0. */
    private <T extends Record> T accepted(String what, T reply) throws DeskException {
        if (ServiceResult.of(reply) != ServiceResult.DONE) {
            throw new DeskException(what + ": the service answered with result "
                    + ServiceResult.of(reply) + ".");
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

    /** Calls a synchronous native and checks that it returns 0. */
    void askSync(String what, IntSupplier command) throws DeskException {
        screen.asked(what);
        accepted(what, command.getAsInt());
    }

    /**
     * The same with a command that may come too late; see {@link #askInTime}.
     *
     * @param end the event that says that the action has ended by itself
     * @return whether the command came in time
     */
    boolean askSyncInTime(String what, IntSupplier command, Class<? extends Record> end)
            throws DeskException, InterruptedException {
        screen.asked(what);
        int result = command.getAsInt();
        // The event was sent before the refusal, but is delivered on another thread.
        if (result == ServiceResult.NOT_NOW && isLive()
                && events.await(end, any -> true, DELIVERY, other -> {}).isPresent()) {
            return false;
        }
        accepted(what, result);
        return true;
    }

    private void accepted(String what, int result) throws DeskException {
        if (result != ServiceResult.DONE) {
            throw new DeskException(what + ": the service answered with " + result + ".");
        }
        summary.replied();
    }

    /**
     * Waits for an event.
     *
     * @param what the command it belongs to, in words
     * @param others gets the events before it
     * @return the event
     * @throws DeskException when it does not come in time
     */
    <T extends Record> T await(
            String what, Class<T> type, Predicate<T> wanted, Consumer<Record> others)
            throws DeskException, InterruptedException {
        return events.await(type, wanted, pace.limit(LONGEST), others)
                .orElseThrow(() -> new DeskException(
                        what + ": no " + type.getSimpleName() + " came."));
    }

    /** Sends a command that the bridge has to refuse, or cannot send, if such are wanted. */
    void expectRefused(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, BG_TE_DTVSVLIB_RESULT wanted)
            throws DeskException {
        if (!refusals) {
            return;
        }
        BG_TE_DTVSVLIB_RESULT result = command.get();
        checkRefusal(what, name(result), name(wanted));
    }

    /** The same with a command that the service has to refuse, in the event that answers it. */
    <T extends Record> void expectRefusedByService(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply, int wanted)
            throws DeskException, InterruptedException {
        if (!refusals) {
            return;
        }
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException(what + ": the command was not taken (" + taken + ").");
        }
        T answer = await(what, reply, any -> true, other -> {});
        checkRefusal(what, ServiceResult.text(ServiceResult.of(answer)),
                ServiceResult.text(wanted));
    }

    /** The same with a synchronous native that the service has to refuse. */
    void expectSyncRefused(String what, IntSupplier command, int wanted) throws DeskException {
        if (!refusals) {
            return;
        }
        checkRefusal(what, ServiceResult.text(command.getAsInt()), ServiceResult.text(wanted));
    }

    private static String name(BG_TE_DTVSVLIB_RESULT result) {
        return String.valueOf(result).replace("DTVSVLIB_RESULT_", "");
    }

    private void checkRefusal(String what, String came, String wanted) throws DeskException {
        screen.refused(what, came);
        summary.refused(what, came);
        if (!came.equals(wanted)) {
            throw new DeskException(what + ": refused with " + came + " instead of " + wanted
                    + ".");
        }
    }
}
