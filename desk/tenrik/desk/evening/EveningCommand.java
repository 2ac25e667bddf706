package tenrik.desk.evening;

import java.io.OutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.concurrent.Callable;

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
import tenrik.desk.core.Screen;
import tenrik.desk.core.Simulator;
import tenrik.desk.core.StandardStreams;

/**
 * Plays an evening of television and shows a summary. Exit status 0 when everything was answered as
 * it should be, 1 when not, 2 when it could not start.
 */
@Command(name = "evening", versionProvider = ProgramVersion.class)
public final class EveningCommand implements Callable<Integer> {
    @Mixin
    private DeskOptions options;

    @Option(names = "--live", arity = "0..1", fallbackValue = "1", paramLabel = "SPEED",
            converter = PaceConverter.class,
            description = "Time passes by itself, SPEED times as fast as in life.")
    private Pace pace = Pace.STEPPED;

    @Option(names = "--quiet", description = "Shows the closing table alone.")
    private boolean quiet;

    @Option(names = "--json", description = "Shows the figures of the closing table as JSON.")
    private boolean json;

    @Option(names = "--no-refusals",
            description = "Leaves out the commands that are sent to be refused.")
    private boolean noRefusals;

    @Option(names = "--keep-going",
            description = "Continues after a difference, and lists at the end what differed.")
    private boolean keepGoing;

    /** The command before its options are read. */
    public EveningCommand() {}

    /** Plays the evening. */
    @Override
    public Integer call() throws InterruptedException {
        Screen screen = new Screen(quiet || json
                ? new PrintStream(OutputStream.nullOutputStream(), false, StandardCharsets.UTF_8)
                : StandardStreams.OUT, options.terminal());
        Summary summary = new Summary();
        try (Desk desk = Desk.open(options, pace)) {
            showChannelTable(screen, desk.plan());
            Differences differences = keepGoing ? new Differences() : null;
            boolean complete = play(desk, screen, summary, differences);
            Summary.Result result = summary.result(Simulator.calls(), desk.events().received(),
                    complete, options.city(), options.seed(), Simulator.now() / 1e3,
                    Simulator.mostEventsWaiting());
            showSummary(result, differences);
            return result.ok() ? ExitStatus.OK : ExitStatus.FAILED;
        } catch (DeskException failure) {
            StandardStreams.ERRORS.println("run: " + failure.getMessage());
            return ExitStatus.NOT_STARTED;
        }
    }

    private boolean play(Desk desk, Screen screen, Summary summary, Differences differences)
            throws InterruptedException {
        CheckedCommands commands = new CheckedCommands(desk.events(), pace, screen, summary,
                !noRefusals, differences);
        try {
            boolean complete = new Evening(desk.service(), commands, screen).play();
            if (differences != null && !differences.isEmpty()) {
                summary.failed(DifferenceTable.failure(differences));
            }
            return complete;
        } catch (DeskException failure) {
            summary.failed(failure.getMessage());
            return false;
        }
    }

    private void showChannelTable(Screen screen, Simulator.Plan plan) {
        screen.line("On the air: " + options.city() + ", " + plan.stations()
                + " UHF stations on channels 13 to 62.");
        screen.line("Left out of its table: " + entries(plan.vhfEntries()) + " of VHF"
                + (plan.beyondEntries() == 0 ? ""
                        : ", " + entries(plan.beyondEntries()) + " beyond channel 62")
                + (plan.unusableEntries() == 0 ? ""
                        : ", " + entries(plan.unusableEntries()) + " that name no channel")
                + ".");
    }

    /** @param differences what differed; null when the evening ends with the first difference */
    private void showSummary(Summary.Result result, Differences differences) {
        DifferenceTable table = differences == null ? null
                : new DifferenceTable(differences, Simulator.rules());
        if (json) {
            StandardStreams.OUT.println(table == null ? result.json() : table.json(result));
        } else {
            Screen screen = new Screen(StandardStreams.OUT, options.terminal());
            screen.title("What the evening did");
            result.lines().forEach(screen::line);
            if (table != null) {
                table.lines().forEach(screen::line);
            }
            screen.ended(result.ok(), result.ok() ? "Everything was answered as it should be."
                    : "Not everything was answered as it should be.");
        }
        if (!result.ok()) {
            StandardStreams.ERRORS.println("run: " + result.failure());
        }
    }

    private static final class PaceConverter implements CommandLine.ITypeConverter<Pace> {
        @Override
        public Pace convert(String speed) {
            try {
                return Pace.live(speed);
            } catch (DeskException failure) {
                throw new CommandLine.TypeConversionException(failure.getMessage());
            }
        }
    }

    private static String entries(int count) {
        return count + (count == 1 ? " entry" : " entries");
    }
}
