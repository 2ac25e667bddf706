package tenrik.desk.shell;

import picocli.CommandLine.Option;

/** The option of commands that wait for an answer. */
final class WaitOption {
    @Option(names = "--no-wait",
            description = "Does not wait for the answer, which is shown as an event.")
    boolean noWait;
}
