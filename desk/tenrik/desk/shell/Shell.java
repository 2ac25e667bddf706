package tenrik.desk.shell;

import java.io.IOException;
import java.util.List;

import picocli.CommandLine;
import picocli.CommandLine.ParameterException;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ExitStatus;

/** Reads commands and does them, one after the other. */
final class Shell {
    /** Where commands come from. */
    interface Input {
        /** Waits for the next line; null when no more comes. */
        String next() throws IOException;
    }

    private final RemoteControl remote;
    private final CommandLine commands;
    private volatile Thread working;

    Shell(RemoteControl remote, CommandLine commands) {
        this.remote = remote;
        this.commands = commands;
        commands.setParameterExceptionHandler((failure, words) -> reportUsageError(failure));
        commands.setExecutionExceptionHandler((failure, command, words) -> failed(failure));
    }

    /** Does what comes in; whether all of it could be done. */
    boolean run(Input input) throws IOException {
        boolean well = true;
        while (!remote.hasEnded()) {
            String line = input.next();
            if (line == null) {
                break;
            }
            well &= execute(line);
        }
        return well;
    }

    /** Abandons what a command waits for. On any thread. */
    void interrupt() {
        Thread thread = working;
        if (thread != null) {
            thread.interrupt();
        }
    }

    private boolean execute(String line) {
        List<ShellWords.Word> words = ShellWords.split(line);
        if (words.isEmpty()) {
            return true;
        }
        if (!ShellWords.missing(line).isEmpty()) {
            remote.output().failed("the line lacks a closing " + ShellWords.missing(line));
            return false;
        }
        String name = words.get(0).text();
        if (!commands.getSubcommands().containsKey(name)) {
            remote.output().failed(name + ": no such command. \"help\" shows them.");
            return false;
        }
        boolean raw = name.equals(SendCommand.NAME);
        working = Thread.currentThread();
        try {
            return commands.execute(words.stream()
                    .map(word -> raw ? word.raw() : word.text()).toArray(String[]::new)) == 0;
        } finally {
            working = null;
            Thread.interrupted(); // an interrupt that came too late is about nothing
        }
    }

    private int reportUsageError(ParameterException failure) {
        String command = failure.getCommandLine().getCommandSpec().qualifiedName().strip();
        String message = failure.getMessage();
        remote.output().failed(command + ": " + message + (message.endsWith(".") ? "" : ".")
                + " \"help " + command + "\" says more.");
        return ExitStatus.FAILED;
    }

    private int failed(Exception failure) {
        if (failure instanceof DeskException) {
            remote.output().failed(failure.getMessage());
        } else if (failure instanceof InterruptedException) {
            remote.output().failed("abandoned");
        } else {
            remote.output().failed(failure.toString());
        }
        return ExitStatus.FAILED;
    }
}
