package tenrik.desk.shell;

import java.io.BufferedReader;
import java.io.IOException;
import java.io.InputStreamReader;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.concurrent.Callable;
import java.util.concurrent.atomic.AtomicReference;

import org.jline.reader.EndOfFileException;
import org.jline.reader.History;
import org.jline.reader.LineReader;
import org.jline.reader.UserInterruptException;
import org.jline.reader.impl.history.DefaultHistory;
import org.jline.terminal.Terminal;
import org.jline.terminal.TerminalBuilder;

import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;

import tenrik.desk.core.Desk;
import tenrik.desk.core.DeskException;
import tenrik.desk.core.DeskOptions;
import tenrik.desk.core.ExitStatus;
import tenrik.desk.core.Pace;
import tenrik.desk.core.ProgramVersion;
import tenrik.desk.core.StandardStreams;

/**
 * Drives the bridge by hand. On a terminal lines are edited, and the exit status is 0; otherwise
 * commands are read line by line, and the exit status is 1 when one of them failed. It is 2 when
 * the shell could not start.
 */
@Command(name = "shell", versionProvider = ProgramVersion.class)
public final class ShellCommand implements Callable<Integer> {
    @Mixin
    private DeskOptions options;

    @Option(names = "--history", hidden = true, paramLabel = "FILE",
            description = "The history of the lines that were typed.")
    private Path history;

    /** The command before its options are read. */
    public ShellCommand() {}

    /** Runs the shell until its input ends. */
    @Override
    public Integer call() throws IOException {
        // There is a console when both input and output are terminals.
        return System.console() != null ? onTerminal() : onPipe();
    }

    private int onTerminal() throws IOException {
        try (Terminal terminal = TerminalBuilder.builder().system(true).jna(false).jansi(false)
                .encoding(StandardCharsets.UTF_8.name()).build()) {
            AtomicReference<RemoteControl> control = new AtomicReference<>();
            LineEditor editor = new LineEditor(terminal, options.terminal(),
                    () -> prompt(control.get()));
            ShellOutput output = new ShellOutput(text -> {
                terminal.writer().print(text);
                terminal.flush();
            }, editor::above, options.terminal());
            return run(output, (shell, commands, remote) -> {
                control.set(remote);
                terminal.handle(Terminal.Signal.INT, signal -> shell.interrupt());
                configure(editor, new ShellCompleter(commands, remote));
                output.screen().line("\"help\" shows what can be done. The TAB key completes.");
                shell.run(() -> readLine(editor));
                save(editor.getHistory());
                return true;
            });
        }
    }

    /** The prompt, which names the current session. */
    private static String prompt(RemoteControl remote) {
        SessionState session = remote.sessions().current();
        return session == null ? "desk> " : "desk " + session.handle() + "> ";
    }

    private int onPipe() throws IOException {
        ShellOutput output = new ShellOutput(StandardStreams.OUT::print, print -> {
            synchronized (StandardStreams.OUT) {
                print.run();
                StandardStreams.OUT.flush();
            }
        }, options.terminal());
        BufferedReader lines = new BufferedReader(
                new InputStreamReader(System.in, StandardCharsets.UTF_8));
        return run(output, (shell, commands, remote) -> shell.run(() -> readLine(lines)));
    }

    /** Reads a line: null at the end, and when the output of commands can no longer be written. */
    private static String readLine(BufferedReader lines) throws IOException {
        try {
            return StandardStreams.outputFailure().isPresent() ? null : lines.readLine();
        } catch (IOException failure) {
            throw new IOException("standard input: " + failure.getMessage(), failure);
        }
    }

    /** Runs a shell. False when a command failed. */
    private interface Runner {
        boolean run(Shell shell, CommandLine commands, RemoteControl remote) throws IOException;
    }

    private int run(ShellOutput output, Runner runner) throws IOException {
        try (Desk desk = Desk.open(options, Pace.REAL_TIME);
                RemoteControl remote = new RemoteControl(desk, output);
                TraceFollower trace = new TraceFollower(Path.of(options.output()), output::trace)) {
            CommandLine commands = ShellCommands.create(remote, trace);
            return runner.run(new Shell(remote, commands), commands, remote) ? ExitStatus.OK
                    : ExitStatus.FAILED;
        } catch (DeskException failure) {
            StandardStreams.ERRORS.println("run: " + failure.getMessage());
            return ExitStatus.NOT_STARTED;
        }
    }

    private void configure(LineEditor editor, ShellCompleter completer) {
        editor.setParser(new ShellWords());
        editor.setCompleter(completer);
        editor.setOpt(LineReader.Option.CASE_INSENSITIVE);
        editor.setOpt(LineReader.Option.DISABLE_EVENT_EXPANSION);
        DefaultHistory lines = new DefaultHistory();
        if (history != null) {
            editor.setVariable(LineReader.HISTORY_FILE, history);
        }
        editor.setHistory(lines);
        try {
            lines.attach(editor);
        } catch (RuntimeException unreadable) {
            StandardStreams.ERRORS.println("run: " + history + " is no history of typed lines");
        }
    }

    /** Reads a line: empty when it was abandoned, null at the end. */
    private static String readLine(LineEditor editor) {
        try {
            return editor.readLine();
        } catch (UserInterruptException abandoned) {
            return "";
        } catch (EndOfFileException end) {
            return null;
        }
    }

    private void save(History lines) {
        try {
            lines.save();
        } catch (IOException failure) {
            StandardStreams.ERRORS.println(
                    "run: the history cannot be written: " + failure.getMessage());
        }
    }
}
