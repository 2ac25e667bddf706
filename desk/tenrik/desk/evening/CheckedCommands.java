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
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/**
 * Sends commands to the service, waits for the events that answer them, and checks what they say.
 * A command that is not answered as expected ends the evening with an exception; in an evening that
 * is continued all the same it is noted, and the answer is null.
 */
final class CheckedCommands {
    /** Longer than the service takes for anything on its clock, a recording included. */
    private static final Duration LONGEST = Duration.ofSeconds(90);
    /** Longer than the delivery of an event takes that was sent already. */
    private static final Duration DELIVERY = Duration.ofSeconds(10);
    /** Longer than any answer takes on the service's clock, in milliseconds. */
    private static final long LATE = 1000;

    private final EventQueue events;
    private final Pace pace;
    private final Screen screen;
    private final Summary summary;
    private final boolean refusals;
    /** Null when the first difference ends the evening. */
    private final Differences differences;
    private final EventCheck eventCheck;
    /** The session that replies are about; 0: any. In an evening that is continued. */
    private int session;
    private final LastCommand lastCommand = new LastCommand();

    /**
     * @param refusals whether the commands are sent that have to be refused
     * @param differences takes what comes otherwise; null when the first difference ends the evening
     */
    CheckedCommands(EventQueue events, Pace pace, Screen screen, Summary summary,
            boolean refusals, Differences differences) {
        this.events = events;
        this.pace = pace;
        this.screen = screen;
        this.summary = summary;
        this.refusals = refusals;
        this.differences = differences;
        this.eventCheck = differences != null ? new EventCheck(events) : null;
    }

    /** Whether the evening is continued after a difference. */
    boolean keepsGoing() {
        return differences != null;
    }

    /** What came otherwise; null when the first difference ends the evening. */
    Differences differences() {
        return differences;
    }

    /** A session was opened, and is that of the commands from now on. */
    void sessionOpened(int handle) {
        if (keepsGoing()) {
            session = handle;
            eventCheck.opened(handle);
        }
    }

    /** A further session was opened. */
    void furtherSessionOpened(int handle) {
        if (keepsGoing()) {
            eventCheck.opened(handle);
        }
    }

    /** After the last command: adds what came otherwise among all events. */
    void checkEvents() {
        if (keepsGoing()) {
            eventCheck.finish(differences);
        }
    }

    /**
     * What the rest of a part cannot do without.
     *
     * @param answer the answer to a command, or null
     * @return the answer
     * @throws Differences.PartLost when it is null
     */
    static <T> T need(T answer) {
        if (answer == null) {
            throw new Differences.PartLost();
        }
        return answer;
    }

    /**
     * Something came otherwise.
     *
     * @param what the command, for people
     * @param event the class of the event that is concerned, or null
     * @param expected what should have come
     * @param came what came
     * @param message the same in a sentence
     * @throws DeskException with that sentence, unless the evening is continued
     */
    void differ(String what, Class<?> event, String expected, String came, String message)
            throws DeskException {
        if (!keepsGoing()) {
            throw new DeskException(message);
        }
        screen.differed(expected + " should have come, and " + came + " came");
        differences.add(what, lastCommand.name(), event == null ? "" : event.getSimpleName(), expected,
                came);
    }

    /** Something that may end with an exception whose message says what came otherwise. */
    interface Step {
        void run() throws DeskException, InterruptedException;
    }

    /** Does a step that sends a command in its own way. */
    void step(String what, Step step) throws DeskException, InterruptedException {
        sends();
        try {
            step.run();
        } catch (DeskException failure) {
            differ(what, null, "that it is taken", failure.getMessage(), failure.getMessage());
        }
    }

    /** A command is about to be sent. */
    private void sends() {
        if (keepsGoing()) {
            lastCommand.sends();
        }
    }

    /** Checks in stepped time that the answer to the last command was not late. */
    private void checkTime(String what, Class<?> event) {
        long taken = keepsGoing() ? lastCommand.age() : 0;
        if (taken > LATE && pace.isStepped()) {
            String late = "one after " + taken + " ms";
            screen.reported("late: " + late);
            differences.addHarmless(what, lastCommand.name(), event == null ? "" : event.getSimpleName(),
                    "an answer within " + LATE + " ms", late);
        }
    }

    /**
     * Notes in stepped time that the action which a command was to cancel had ended by itself: a
     * command cannot come too late there.
     *
     * @param event the event that says so
     */
    void noteTooLate(String what, Class<?> event) {
        if (keepsGoing() && !isLive()) {
            differences.addHarmless(what, lastCommand.name(), event.getSimpleName(),
                    "that it is in time", "an end without it");
        }
    }

    /** Whether an event that answers a command is about the session of the commands. */
    private boolean isOwn(Record reply) {
        return session == 0 || reply instanceof BG_EV_DTVSV_CREATE_REPLY
                || EventCheck.handleOf(reply) == session;
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
        return send(what, command) ? accepted(what, awaitReply(what, reply, others)) : null;
    }

    private <T extends Record> T awaitReply(String what, Class<T> reply, Consumer<Record> others)
            throws DeskException, InterruptedException {
        T answer = await(what, reply, this::isOwn, others);
        if (answer != null) {
            checkTime(what, reply);
        }
        return answer;
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
        if (!send(what, command)) {
            return true;
        }
        T answer = awaitReply(what, reply, others);
        if (answer != null && ServiceResult.of(answer) == ServiceResult.NOT_NOW && isLive()
                && ended.getAsBoolean()) {
            return false;
        }
        accepted(what, answer);
        return true;
    }

    /** The same about another session than that of the other commands. */
    <T extends Record> T askAbout(int other, String what,
            Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply)
            throws DeskException, InterruptedException {
        int own = session;
        session = keepsGoing() ? other : 0;
        try {
            return ask(what, command, reply);
        } finally {
            session = own;
        }
    }

    /** Waits for the event that answers a command that was sent. */
    <T extends Record> T reply(String what, Class<T> type, Predicate<T> wanted)
            throws DeskException, InterruptedException {
        T answer = await(what, type, wanted, other -> {});
        if (answer != null) {
            checkTime(what, type);
        }
        return accepted(what, answer);
    }

    /** Checks that the result of a reply is 0. Null when it is not, or when there is no reply. */
    private <T extends Record> T accepted(String what, T reply) throws DeskException {
        if (reply == null) {
            return null;
        }
        if (ServiceResult.of(reply) != ServiceResult.DONE) {
            differ(what, reply.getClass(), "result 0", "result " + ServiceResult.of(reply),
                    what + ": the service answered with result " + ServiceResult.of(reply) + ".");
            return null;
        }
        summary.replied();
        return reply;
    }

    /** Whether the service's time passes while the program does something else. */
    boolean isLive() {
        return !pace.isStepped();
    }

    /** Sends a command without waiting. Whether it was taken. */
    boolean send(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command) throws DeskException {
        screen.asked(what);
        sends();
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        return checkTaken(what, taken);
    }

    private boolean checkTaken(String what, BG_TE_DTVSVLIB_RESULT taken) throws DeskException {
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            differ(what, null, "that it is taken", String.valueOf(taken),
                    what + ": the command was not taken (" + taken + ").");
            return false;
        }
        return true;
    }

    /** Calls a synchronous native and checks that it returns 0. */
    void askSync(String what, IntSupplier command) throws DeskException {
        screen.asked(what);
        sends();
        int result = command.getAsInt();
        checkTime(what, null);
        accepted(what, result);
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
        sends();
        int result = command.getAsInt();
        checkTime(what, null);
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
            differ(what, null, "0", String.valueOf(result),
                    what + ": the service answered with " + result + ".");
            return;
        }
        summary.replied();
    }

    /**
     * Waits for an event.
     *
     * @param what the command it belongs to, in words
     * @param others gets the events before it
     * @return the event; null when it does not come in time and the evening is continued
     * @throws DeskException when it does not come in time
     */
    <T extends Record> T await(
            String what, Class<T> type, Predicate<? super T> wanted, Consumer<Record> others)
            throws DeskException, InterruptedException {
        T event = events.await(type, wanted::test, pace.limit(LONGEST), others).orElse(null);
        if (event == null) {
            differ(what, type, type.getSimpleName(), "none",
                    what + ": no " + type.getSimpleName() + " came.");
        }
        return event;
    }

    /** Checks that an action has ended with the result 0. */
    void checkEnd(String what, Record end, int result) throws DeskException {
        if (result != ServiceResult.DONE) {
            differ(what, end.getClass(), "an end with result 0", "result " + result,
                    what + ": it ended with result " + result + ".");
        }
    }

    /** Sends a command that the bridge has to refuse, or cannot send, if such are wanted. */
    void expectRefused(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, BG_TE_DTVSVLIB_RESULT wanted)
            throws DeskException {
        if (!refusals) {
            return;
        }
        sends();
        BG_TE_DTVSVLIB_RESULT result = command.get();
        checkRefusal(what, null, name(result), name(wanted));
    }

    /** The same with a command that the service has to refuse, in the event that answers it. */
    <T extends Record> void expectRefusedByService(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply, int wanted)
            throws DeskException, InterruptedException {
        if (!refusals) {
            return;
        }
        sends();
        if (!checkTaken(what, command.get())) {
            return;
        }
        T answer = awaitReply(what, reply, other -> {});
        if (answer == null) {
            return;
        }
        checkRefusal(what, reply, ServiceResult.text(ServiceResult.of(answer)),
                ServiceResult.text(wanted));
    }

    /** The same with a synchronous native that the service has to refuse. */
    void expectSyncRefused(String what, IntSupplier command, int wanted) throws DeskException {
        if (!refusals) {
            return;
        }
        sends();
        int result = command.getAsInt();
        checkTime(what, null);
        checkRefusal(what, null, ServiceResult.text(result), ServiceResult.text(wanted));
    }

    private static String name(BG_TE_DTVSVLIB_RESULT result) {
        return String.valueOf(result).replace("DTVSVLIB_RESULT_", "");
    }

    private void checkRefusal(String what, Class<?> event, String came, String wanted)
            throws DeskException {
        screen.refused(what, came);
        summary.refused(what, came);
        if (!came.equals(wanted)) {
            differ(what, event, "a refusal with " + wanted, came, what + ": refused with " + came
                    + " instead of " + wanted + ".");
        }
    }
}
