package tenrik.desk.shell;

import java.io.PrintWriter;
import java.io.StringWriter;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.TimeUnit;

import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.ITypeConverter;
import picocli.CommandLine.Parameters;
import picocli.CommandLine.ParentCommand;
import picocli.CommandLine.TypeConversionException;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_AUDIO_COMPONENT;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_CAP_LANG;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_DUALMONO;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEYCODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_KEY_EVENT_TYPE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_MODE;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_SCREEN_ROTATE;

/** The list of all commands; and the commands that are about the shell itself. */
@Command(name = "", addMethodSubcommands = false)
final class ShellCommands {
    private static final int WIDTH = 80;
    private static final List<Class<? extends Enum<?>>> CONSTANTS = List.of(
            BG_TE_DTVSVLIB_AUDIO_COMPONENT.class, BG_TE_DTVSVLIB_CAP_LANG.class,
            BG_TE_DTVSVLIB_DUALMONO.class, BG_TE_DTVSVLIB_KEYCODE.class,
            BG_TE_DTVSVLIB_KEY_EVENT_TYPE.class, BG_TE_DTVSVLIB_RECORDING_MEDIUM.class,
            BG_TE_DTVSVLIB_SCREEN_MODE.class, BG_TE_DTVSVLIB_SCREEN_ROTATE.class);

    private final RemoteControl remote;
    private final TraceFollower trace;

    private ShellCommands(RemoteControl remote, TraceFollower trace) {
        this.remote = remote;
        this.trace = trace;
    }

    /** The commands, in the order in which they are listed. */
    static CommandLine create(RemoteControl remote, TraceFollower trace) {
        CommandLine root = new CommandLine(new ShellCommands(remote, trace));
        for (Object command : List.of(
                new SessionCommands.Create(remote), new SessionCommands.Show(remote),
                new SessionCommands.Use(remote), new SessionCommands.Release(remote),
                new TuningCommands.Scan(remote), new TuningCommands.Channels(remote),
                new ReceptionCommands.Select(remote), new TuningCommands.Search(remote),
                new ReceptionCommands.Stop(remote), new ReceptionCommands.Guide(remote),
                new DisplayCommands(remote), new DecodeCommands(remote),
                new CaptionCommands(remote), new SoundCommands(remote),
                new SignalCommands(remote), new DataCommands(remote),
                new RequestCommands.Show(remote), new RequestCommands.Answer(remote),
                new RecordCommands(remote), new RecordCommands.Show(remote),
                new PlayCommands.Play(remote), new PlayCommands.Speed(remote),
                new PlayCommands.Pause(remote), new PlayCommands.Resume(remote),
                new PlayCommands.Skip(remote), new PlayCommands.Slide(remote),
                new PlayCommands.Move(remote), new PlayCommands.End(remote),
                new SendCommand(remote), new Help())) {
            root.addSubcommand(command);
        }
        root.getCommandSpec().addMethodSubcommands();
        CONSTANTS.forEach(type -> register(root, type));
        root.setCaseInsensitiveEnumValuesAllowed(true);
        root.setExpandAtFiles(false);
        root.setUsageHelpWidth(WIDTH);
        root.setColorScheme(CommandLine.Help.defaultColorScheme(CommandLine.Help.Ansi.OFF));
        // Arguments of a native may begin with a minus sign.
        root.getSubcommands().get(SendCommand.NAME).setStopAtPositional(true);
        return root;
    }

    @SuppressWarnings("unchecked")
    private static <E> void register(CommandLine root, Class<? extends Enum<?>> type) {
        ITypeConverter<E> converter = text -> {
            try {
                return EnumConstants.find((Class<E>) type, text);
            } catch (DeskException unknown) {
                throw new TypeConversionException(unknown.getMessage());
            }
        };
        root.registerConverter((Class<E>) type, converter);
    }

    @Command(description = "Chooses which events are shown.")
    void events(
            @Parameters(paramLabel = "some|all|none", description = "some, by their meaning; all,"
                    + " also periodic ones and answers, with all their components; or none.")
                    EventPrinter.Choice choice) {
        remote.printer().choose(choice);
    }

    @Command(description = "Shows the bridge's trace as it is written.")
    void trace(@Parameters(paramLabel = "on|off|FILTER", description = "Any word other than on and"
            + " off: only lines that contain it.") String choice) throws DeskException {
        if (choice.equals("off")) {
            trace.close();
        } else {
            trace.start(choice.equals("on") ? "" : choice);
        }
    }

    @Command(name = "wait", description = "Waits.")
    void pause(@Parameters(paramLabel = "SECONDS", description = "How long.") double seconds)
            throws DeskException, InterruptedException {
        if (!Double.isFinite(seconds) || seconds < 0) {
            throw new DeskException("not a time: " + seconds);
        }
        TimeUnit.NANOSECONDS.sleep((long) (seconds * TimeUnit.SECONDS.toNanos(1)));
    }

    @Command(aliases = "quit", description = "Leaves the shell, as Ctrl-D does.")
    void exit() {
        remote.end();
    }

    @Command(name = "help", description = "Shows all commands, or what one of them does.")
    static final class Help implements Callable<Integer> {
        @ParentCommand
        private ShellCommands shell;

        @CommandLine.Spec
        private CommandLine.Model.CommandSpec spec;

        @Parameters(arity = "0..*", paramLabel = ParameterLabels.COMMAND)
        private List<String> words = List.of();

        @Override
        public Integer call() throws DeskException {
            CommandLine command = spec.parent().commandLine();
            for (String word : words == null ? List.<String>of() : words) {
                command = command.getSubcommands().get(word);
                if (command == null) {
                    throw new DeskException(String.join(" ", words) + ": no such command");
                }
            }
            shell.remote.output().lines(command.getParent() == null ? overview(command)
                    : usage(command));
            return 0;
        }

        private static List<String> overview(CommandLine root) {
            List<String> lines = new ArrayList<>(root.getHelp().commandList().lines().toList());
            lines.add("The TAB key completes what is typed. \"help COMMAND\" says more.");
            return lines;
        }

        private static List<String> usage(CommandLine command) {
            StringWriter text = new StringWriter();
            command.usage(new PrintWriter(text));
            return text.toString().replaceFirst("Usage: +", "Usage: ").lines()
                    .map(String::stripTrailing).toList();
        }
    }
}
