package tenrik.desk;

import java.time.Duration;
import java.util.function.Consumer;
import java.util.function.Predicate;
import java.util.function.Supplier;
import java.util.function.ToIntFunction;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** Commands to the service and the events that answer them, one after the other. */
final class Dialogue {
    /** Far longer than the service takes for any reply. */
    private static final Duration REPLY_LIMIT = Duration.ofSeconds(10);

    private final Mailbox mailbox;
    private final Screen screen;
    private int replies;

    Dialogue(Mailbox mailbox, Screen screen) {
        this.mailbox = mailbox;
        this.screen = screen;
    }

    /** How many replies have arrived and said that all is well. */
    int replies() {
        return replies;
    }

    /**
     * Sends a command and waits for its reply.
     *
     * @param what the command, in words
     * @param command sends it
     * @param reply the event that answers it
     * @param result the result in that event
     * @throws DeskException when the command was not taken, or when no reply came in time, or one
     *     that says anything but 0
     */
    <T extends Record> T ask(
            String what, Supplier<BG_TE_DTVSVLIB_RESULT> command, Class<T> reply,
            ToIntFunction<T> result) throws DeskException, InterruptedException {
        send(what, command);
        T answer = await(what, reply, any -> true, REPLY_LIMIT, other -> {});
        if (result.applyAsInt(answer) != 0) {
            throw new DeskException(what + ": the service answered with result "
                    + result.applyAsInt(answer) + ".");
        }
        replies++;
        return answer;
    }

    /** Sends a command without waiting. */
    void send(String what, Supplier<BG_TE_DTVSVLIB_RESULT> command) throws DeskException {
        screen.asked(what);
        BG_TE_DTVSVLIB_RESULT taken = command.get();
        if (taken != BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK) {
            throw new DeskException(what + ": the command was not taken (" + taken + ").");
        }
    }

    /**
     * Waits for an event.
     *
     * @param what the command it belongs to, in words
     * @param others gets the events before it
     * @throws DeskException when it does not come in time
     */
    <T extends Record> T await(
            String what, Class<T> type, Predicate<T> wanted, Duration limit,
            Consumer<Record> others) throws DeskException, InterruptedException {
        return mailbox.await(type, wanted, limit, others).orElseThrow(() -> new DeskException(
                what + ": no " + type.getSimpleName() + " within " + limit.toSeconds()
                + " seconds."));
    }
}
