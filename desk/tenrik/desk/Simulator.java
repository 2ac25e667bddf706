package tenrik.desk;

/**
 * The simulated DTV service behind libDtv. The library {@code libdtv_desk.so} must have been
 * loaded. There is one simulator at a time in a process.
 */
final class Simulator {
    private Simulator() {}

    /**
     * What a channel table holds for the receiver.
     *
     * @param stations UHF stations on channels 13 to 62
     * @param vhfEntries entries left out because they are VHF
     * @param beyondEntries UHF entries left out because no receiver scans their channel
     * @param unusableEntries entries left out because they name no ISDB-T channel
     */
    record Plan(int stations, int vhfEntries, int beyondEntries, int unusableEntries) {}

    /**
     * Starts the service with what a channel table puts on the air.
     *
     * @param table a channel table in the DVBv5 format
     * @return what was read of the table
     * @throws DeskException when the table cannot be read; the message says why
     */
    static Plan start(String table) throws DeskException {
        int[] counts = startNative(table);
        return new Plan(counts[0], counts[1], counts[2], counts[3]);
    }

    /** Takes the service away and delivers no further event. Final: nothing can start it again. */
    static native void stop();

    private static native int[] startNative(String table) throws DeskException;
}
