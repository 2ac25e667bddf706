package tenrik.desk.replay;

import java.nio.file.Path;
import java.time.Duration;
import java.util.LinkedHashMap;
import java.util.Map;

import tenrik.desk.core.DeskException;

/**
 * The DTV service that is a capture, to which libDtv is connected. The library
 * {@code libdtv_desk.so} must have been loaded. There is one replay at a time in a process, and any
 * number of them one after the other.
 */
public final class Replay {
    private Replay() {}

    /**
     * How a replay goes.
     *
     * @param speed seconds of the capture in one second of real time; 0 when no message waits for
     *     its time
     * @param patience how long it waits for what does not come from the Java side
     * @param fill whether events of which not all bytes are known are delivered, with zeros
     */
    public record Settings(double speed, Duration patience, boolean fill) {}

    /**
     * Reads a capture. The replay that was there before ends.
     *
     * @param capture the file
     * @return what its section header says, by key
     * @throws DeskException when it cannot be replayed; the message names the file and says why
     */
    public static Map<String, String> open(Path capture) throws DeskException {
        disconnect();
        String[] notes = read(capture.toString());
        Map<String, String> section = new LinkedHashMap<>();
        for (int index = 0; index < notes.length; index += 2) {
            section.putIfAbsent(notes[index], notes[index + 1]);
        }
        return section;
    }

    /**
     * Takes the place of the DTV service, with the capture that was opened last.
     *
     * @param settings how the replay goes
     */
    public static void start(Settings settings) {
        begin(settings.speed(), settings.patience().toMillis(), settings.fill());
    }

    /**
     * Lets a simulated service take the commands that the capture does not have. Between open and
     * start.
     *
     * @param table the channel table of the service
     * @param guide its programmes, or an empty text
     * @param seed the seed of its random numbers
     * @param clock its time of day at its beginning, seconds since 1970
     * @throws DeskException when a file cannot be read; the message says why
     */
    static native void simulateUnknown(String table, String guide, long seed, long clock)
            throws DeskException;

    /**
     * Waits until all messages have passed, or until nothing comes any more.
     *
     * @param json whether the report is a JSON object on one line
     * @return the report, of one line or more
     */
    public static native String finish(boolean json);

    /**
     * The exit status of the replay that has finished.
     *
     * @return 0 when it was the same, 1 when it diverged, 2 when nothing of it was replayed
     */
    public static native int status();

    /** Ends the replay: the commands that come afterwards have no service. */
    public static native void disconnect();

    /** Numbers of the recorded threads whose commands are not those of callbacks. */
    static native int[] senders();

    static native String nameOf(int thread);

    /** The calling thread sends the commands of a recorded one from now on. */
    static native void enter(int thread);

    /**
     * Waits for the turn of the next recorded command of the calling thread.
     *
     * @param record gets its record, as far as there is room
     * @param about gets its number and the length of its record in bytes
     * @return its place in the capture; -1 when another message comes first on this thread
     */
    static native int next(byte[] record, int[] about);

    /** Whether the command of that place has been sent. */
    static native boolean hasCome(int entry);

    static native void giveUp(int entry, String reason);

    static native String[] commandNames();

    /** The numbers of the commands, in the order of {@link #commandNames}. */
    static native int[] commandIds();

    /** The fields of a command's record: "cap.cap_info.font_size 8 1 unsigned". */
    static native String[] fieldsOf(int command);

    private static native String[] read(String file) throws DeskException;

    private static native void begin(double speed, long patience, boolean fill);
}
