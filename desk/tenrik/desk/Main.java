package tenrik.desk;

import java.io.IOException;
import java.io.PrintWriter;
import java.util.Optional;
import java.util.concurrent.FutureTask;

import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;

import tenrik.desk.core.DeskOptions;
import tenrik.desk.core.ExitStatus;
import tenrik.desk.core.ProgramVersion;
import tenrik.desk.core.StandardStreams;
import tenrik.desk.evening.EveningCommand;
import tenrik.desk.replay.ReplayCommand;
import tenrik.desk.shell.ShellCommand;

/**
 * The receiver at the desk: puts the stations of a channel table on the air and uses the bridge as
 * the Java service layer does.
 */
@Command(name = "run", subcommands = {EveningCommand.class, ShellCommand.class, ReplayCommand.class},
        versionProvider = ProgramVersion.class)
public final class Main {
    @Option(names = "--version", versionHelp = true,
            description = "Shows the version and ends.")
    private boolean version;

    private Main() {}

    /**
     * Runs one of the commands and ends the process.
     *
     * @param arguments the command and its options; see {@link DeskOptions} for what the commands
     *     have in common
     * @throws Exception when the program itself is wrong
     */
    public static void main(String[] arguments) throws Exception {
        CommandLine commandLine = new CommandLine(new Main())
                .setOut(new PrintWriter(StandardStreams.OUT, true))
                .setErr(new PrintWriter(StandardStreams.ERRORS, true))
                .setParameterExceptionHandler((failure, given) -> {
                    StandardStreams.ERRORS.println("run: " + message(failure));
                    StandardStreams.ERRORS.println("Try ./run --help");
                    return ExitStatus.NOT_STARTED;
                })
                .setExecutionExceptionHandler((failure, command, given) -> {
                    if (!(failure instanceof IOException)) {
                        throw failure;
                    }
                    StandardStreams.ERRORS.println("run: " + failure.getMessage());
                    return ExitStatus.FAILED;
                });
        // A thread with a name of its own: that of the first one is whatever the VM was started by.
        FutureTask<Integer> run = new FutureTask<>(() -> commandLine.execute(arguments));
        new Thread(run, "desk").start();
        System.exit(status(run.get()));
    }

    /** The exit status of a command that has ended: output that was lost is a failure. */
    private static int status(int ended) {
        Optional<String> failure = StandardStreams.outputFailure();
        failure.ifPresent(why -> StandardStreams.ERRORS.println("run: standard output: " + why));
        return failure.isPresent() ? Math.max(ended, ExitStatus.FAILED) : ended;
    }

    /** What is wrong with the arguments, without their places: the run script adds some. */
    private static String message(CommandLine.ParameterException failure) {
        return failure instanceof CommandLine.UnmatchedArgumentException unknown
                ? "unknown argument " + String.join(" ", unknown.getUnmatched())
                : failure.getMessage();
    }
}
