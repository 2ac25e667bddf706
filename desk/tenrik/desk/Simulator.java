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
     * @param guide what the stations show, an XMLTV file
     * @return what was read of the table
     * @throws DeskException when one of them cannot be read; the message says why
     */
    static Plan start(String table, String guide) throws DeskException {
        int[] counts = startNative(table, guide);
        return new Plan(counts[0], counts[1], counts[2], counts[3]);
    }

    /**
     * Makes a native surface that lasts as long as the process.
     *
     * @return its address, for {@link android.view.Surface}
     */
    static native int newSurface();

    /** Takes the service away and delivers no further event. Final: nothing can start it again. */
    static native void stop();

    /**
     * Ends the process at once. An ordinary exit ends with the bridge's exit handler, which looks
     * for a VM that is no longer there and says so: that is not what a person should read last.
     *
     * @param status the exit status
     */
    static native void leave(int status);

    private static native int[] startNative(String table, String guide) throws DeskException;
}
