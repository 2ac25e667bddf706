package tenrik.desk.shell;

import java.io.IOException;
import java.util.List;

import picocli.CommandLine;
import picocli.CommandLine.ParameterException;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ExitStatus;

/** Reads commands and carries them out, one after the other. */
final class Shell {
    /** Where commands come from. */
    interface Input {
        /** Waits for the next line; null at the end. */
        String next() throws IOException;
    }

    private final RemoteControl remote;
    private final CommandLine commands;
    private volatile Thread working;

    Shell(RemoteControl remote, CommandLine commands) {
        this.remote = remote;
        this.commands = commands;
        commands.setParameterExceptionHandler((failure, words) -> reportUsageError(failure));
        commands.setExecutionExceptionHandler((failure, command, words) -> reportFailure(failure));
    }

    /** Carries out all commands of the input. False when one of them failed. */
    boolean run(Input input) throws IOException {
        boolean allDone = true;
        while (!remote.hasEnded()) {
            String line = input.next();
            if (line == null) {
                break;
            }
            allDone &= execute(line);
        }
        return allDone;
    }

    /** Ends the wait of the running command. May be called on any thread. */
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
            Thread.interrupted(); // one that came after the command has ended
        }
    }

    private int reportUsageError(ParameterException failure) {
        String command = failure.getCommandLine().getCommandSpec().qualifiedName().strip();
        String message = failure.getMessage();
        remote.output().failed(command + ": " + message + (message.endsWith(".") ? "" : ".")
                + " \"help " + command + "\" says more.");
        return ExitStatus.FAILED;
    }

    private int reportFailure(Exception failure) {
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
