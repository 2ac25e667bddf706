package soak;

import java.util.concurrent.Semaphore;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.atomic.AtomicLong;
import java.util.concurrent.atomic.AtomicLongArray;

/**
 * A session of the service: its commands have the numbers 1, 2, 3 and so on, in the order in which one
 * thread sends them, and each is answered by one event that carries its number.
 */
final class Session {
    /** Commands that may be unanswered at a time. */
    static final int OPEN = 16;

    private static final int SLOTS = 1024;
    private static final int KIND_BITS = 8;
    private static final int EXTRA_BITS = 16;

    final int handle;
    /** Its place among the sessions. */
    final int index;
    private final Semaphore free = new Semaphore(OPEN);
    /** The commands that wait for their answers: number, what the answer says, kind. 0: none. */
    private final AtomicLongArray waiting = new AtomicLongArray(SLOTS);
    private final AtomicLong answers = new AtomicLong();
    private long sent;

    Session(int handle, int index) {
        this.handle = handle;
        this.index = index;
    }

    /**
     * Takes a number for a command, as soon as few enough are unanswered. Called by the session's
     * thread alone.
     *
     * @return false when no answer came for a long time
     */
    boolean begin() throws InterruptedException {
        if (!free.tryAcquire(Failures.LONGEST_SECONDS, TimeUnit.SECONDS)) {
            return false;
        }
        // One answer may be held up on its thread while the others overtake it.
        for (int turn = 0; waiting.get(slot(next())) != 0; turn++) {
            if (turn == Failures.LONGEST_SECONDS * 1000) {
                return false;
            }
            Thread.sleep(1);
        }
        return true;
    }

    /** The number that the next command has. */
    long next() {
        return sent + 1;
    }

    /** The next command is about to be sent; its answer is of this kind and says `extra`. */
    void sends(int kind, int extra) {
        sent++;
        waiting.set(slot(sent), entry(sent, kind, extra));
    }

    /** An event answers the command with this number. */
    void answered(int kind, long number, int extra) {
        long awaited = waiting.getAndSet(slot(number), 0);
        if (awaited != entry(number, kind, extra)) {
            Failures.add("session " + handle + ": event " + number + " of kind " + kind + " with "
                    + extra + (awaited == 0 ? " was not awaited: it came twice, or changed"
                            : " came in the place of event " + (awaited >> KIND_BITS >> EXTRA_BITS)
                                    + " of kind " + (awaited & 0xff) + " with "
                                    + (awaited >> KIND_BITS & 0xffff)));
            return;
        }
        answers.incrementAndGet();
        free.release();
    }

    /** Waits until every command is answered. */
    void settle() throws InterruptedException {
        if (free.tryAcquire(OPEN, Failures.LONGEST_SECONDS, TimeUnit.SECONDS)) {
            free.release(OPEN);
        } else {
            Failures.add("session " + handle + ": " + (sent - answers.get()) + " of " + sent
                    + " commands were never answered");
        }
    }

    long answers() {
        return answers.get();
    }

    private static int slot(long number) {
        return (int) (number % SLOTS);
    }

    private static long entry(long number, int kind, int extra) {
        return (number << EXTRA_BITS | extra) << KIND_BITS | kind;
    }
}
