package tenrik.desk;

import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;

/** How a command waits for its answer that has a twin which waits by itself. */
final class SyncWaiting {
    @Mixin
    Waiting waiting = new Waiting();

    @Option(names = "--sync", description = "Calls the native that waits for the answer itself.")
    boolean sync;
}
