package tenrik.desk.shell;

import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;

/** The options of commands that also have a synchronous native. */
final class SyncOption {
    @Mixin
    WaitOption waiting = new WaitOption();

    @Option(names = "--sync", description = "Calls the synchronous native.")
    boolean sync;
}
