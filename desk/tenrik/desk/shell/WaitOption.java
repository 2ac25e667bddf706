package tenrik.desk.shell;

import picocli.CommandLine.Option;

/** How a command of the remote control waits for its answer. */
final class WaitOption {
    @Option(names = "--no-wait",
            description = "Does not wait for the answer, which is shown as an event.")
    boolean noWait;
}
