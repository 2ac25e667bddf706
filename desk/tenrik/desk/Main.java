package tenrik.desk;

import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.concurrent.FutureTask;

import picocli.CommandLine;
import picocli.CommandLine.Command;

/**
 * The receiver at the desk: puts the stations of a channel table on the air and uses the bridge as
 * the Java service layer does.
 */
@Command(name = "run", subcommands = {EveningCommand.class, ShellCommand.class})
public final class Main {
    /** Exit status: something was not answered as it should be. */
    static final int FAILED = 1;
    /** Exit status: it could not start. */
    static final int NOT_STARTED = 2;

    /** Takes UTF-8, whatever the locale. */
    static final PrintStream OUT = stream(FileDescriptor.out);
    static final PrintStream ERRORS = stream(FileDescriptor.err);

    private Main() {}

    /** Runs one of the commands; see {@link DeskOptions} for what they have in common. */
    public static void main(String[] arguments) throws Exception {
        CommandLine commandLine = new CommandLine(new Main())
                .setParameterExceptionHandler((failure, given) -> {
                    ERRORS.println("run: " + words(failure));
                    ERRORS.println("Try ./run --help");
                    return NOT_STARTED;
                });
        // A thread with a name of its own: that of the first one is whatever the VM was started by.
        FutureTask<Integer> run = new FutureTask<>(() -> commandLine.execute(arguments));
        new Thread(run, "desk").start();
        System.exit(run.get());
    }

    /** What is wrong with the arguments, without their places: the run script adds some. */
    private static String words(CommandLine.ParameterException failure) {
        return failure instanceof CommandLine.UnmatchedArgumentException unknown
                ? "unknown argument " + String.join(" ", unknown.getUnmatched())
                : failure.getMessage();
    }

    private static PrintStream stream(FileDescriptor descriptor) {
        return new PrintStream(new FileOutputStream(descriptor), true, StandardCharsets.UTF_8);
    }
}
