package tenrik.desk.replay;

import java.nio.file.Path;
import java.util.Map;

import tenrik.desk.core.ChannelTables;
import tenrik.desk.core.DeskException;

/** What a capture says of the session that it was taken of. */
public final class Captures {
    private Captures() {}

    /**
     * Lets a simulated service that begins like the recorded one take the commands that the
     * capture does not have.
     *
     * @param capture the file, for messages
     * @param section what its section header says
     * @param tables the folder of the channel tables
     * @param guide the programmes; null when there is no guide
     * @throws DeskException when the header lacks something, or a file cannot be read
     */
    public static void simulateUnknown(
            Path capture, Map<String, String> section, Path tables, Path guide)
            throws DeskException {
        Path table = new ChannelTables(tables).find(value(capture, section, "city"));
        Replay.simulateUnknown(table.toString(), guide != null ? guide.toString() : "",
                number(capture, section, "seed"), number(capture, section, "clock"));
    }

    private static String value(Path capture, Map<String, String> section, String key)
            throws DeskException {
        String value = section.get(key);
        if (value == null) {
            throw new DeskException(capture + ": its section header has no \"" + key
                    + "\", so that no service can be simulated that begins like the recorded one");
        }
        return value;
    }

    private static long number(Path capture, Map<String, String> section, String key)
            throws DeskException {
        String value = value(capture, section, key);
        try {
            return Long.parseLong(value);
        } catch (NumberFormatException notOne) {
            throw new DeskException(capture + ": \"" + key + "\" in its section header is "
                    + value + ", not a number");
        }
    }
}
