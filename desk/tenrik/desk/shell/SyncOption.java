package tenrik.desk.shell;

import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;

/** How a command waits for its answer that has a twin which waits by itself. */
final class SyncOption {
    @Mixin
    WaitOption waiting = new WaitOption();

    @Option(names = "--sync", description = "Calls the native that waits for the answer itself.")
    boolean sync;
}
