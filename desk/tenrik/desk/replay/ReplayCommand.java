package tenrik.desk.replay;

import java.math.BigDecimal;
import java.nio.file.Path;
import java.time.Duration;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;

import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.ExitStatus;
import tenrik.desk.core.ProgramVersion;
import tenrik.desk.core.Simulator;
import tenrik.desk.core.StandardStreams;

/**
 * Replays captures. Exit status 0 when each was the same, 1 when one diverged, 2 when one could not
 * be replayed.
 */
@Command(name = "replay", versionProvider = ProgramVersion.class)
public final class ReplayCommand implements Callable<Integer> {
    private static final String SIMULATE = "simulate";
    private static final long MOST_SECONDS = 86_400;

    @Option(names = "--libraries", required = true, hidden = true,
            description = "The folder of libdtv_desk.so and libDtv_jni.so.")
    private Path libraries;

    @Option(names = "--tables", required = true, hidden = true,
            description = "The folder of the channel tables.")
    private Path tables;

    @Option(names = "--guide", required = true, paramLabel = "FILE",
            description = "The programmes of the stations of the simulated service.")
    private Path guide;

    @Option(names = "--output", required = true, hidden = true, paramLabel = "FILE",
            description = "Where native code's standard output goes.")
    private String output;

    @Option(names = "--terminal", hidden = true,
            description = "Standard output is a terminal that shows colours.")
    private boolean terminal;

    @Option(names = "--version", versionHelp = true,
            description = "Shows the version and ends.")
    private boolean shownVersion;

    @Option(names = "--time", paramLabel = "none|recorded|xN", converter = SpeedConverter.class,
            description = "How time passes.")
    private double speed;

    @Option(names = "--wait", paramLabel = "SECONDS", converter = PatienceConverter.class,
            description = "How long the replay waits for what does not come.")
    private Duration patience = Duration.ofSeconds(10);

    @Option(names = "--fill",
            description = "Delivers events of which not all bytes are known, with zeros.")
    private boolean fill;

    @Option(names = "--unknown", paramLabel = "simulate", converter = UnknownConverter.class,
            description = "What takes the commands that the capture does not have.")
    private String unknown;

    @Option(names = "--json", description = "Shows a JSON object for each capture.")
    private boolean json;

    @Parameters(arity = "1..*", paramLabel = "FILE", description = "The captures.")
    private List<Path> captures;

    /** How many captures ended in each way, by the exit status of that way. */
    private final int[] counts = new int[ExitStatus.NOT_STARTED + 1];

    private Player player;

    /** The command before its options are read. */
    public ReplayCommand() {}

    /** Replays the captures one after the other. */
    @Override
    public Integer call() throws InterruptedException {
        System.load(libraries.toAbsolutePath().resolve("libdtv_desk.so").toString());
        int worst = ExitStatus.OK;
        for (Path capture : captures) {
            int status = replay(capture);
            counts[status]++;
            worst = Math.max(worst, status);
        }
        if (captures.size() > 1 && !json) {
            StandardStreams.OUT.println("replay: " + captures.size() + " captures, "
                    + counts[ExitStatus.OK] + " the same, " + counts[ExitStatus.FAILED]
                    + " diverged, " + counts[ExitStatus.NOT_STARTED] + " not replayed");
        }
        return worst;
    }

    private int replay(Path capture) throws InterruptedException {
        try {
            Map<String, String> section = Replay.open(capture);
            String version = section.getOrDefault("version", ProgramVersion.number());
            if (!version.equals(ProgramVersion.number())) {
                StandardStreams.ERRORS.println("run: " + capture + " was taken with version "
                        + version + "; this is " + ProgramVersion.number());
            }
            if (unknown != null) {
                Captures.simulateUnknown(capture, section, tables, guide);
            }
            Replay.start(new Replay.Settings(speed, patience, fill));
            if (player == null) {
                // The bridge is loaded when it has a service.
                Simulator.redirectStandardOutput(output);
                System.load(libraries.toAbsolutePath().resolve("libDtv_jni.so").toString());
                player = new Player();
            }
            player.play();
            StandardStreams.OUT.println(Replay.finish(json));
            int status = Replay.status();
            Replay.disconnect();
            return status;
        } catch (DeskException failure) {
            StandardStreams.ERRORS.println("run: " + failure.getMessage());
            return ExitStatus.NOT_STARTED;
        }
    }

    private static final class SpeedConverter implements CommandLine.ITypeConverter<Double> {
        @Override
        public Double convert(String text) {
            return Speed.parse(text);
        }
    }

    private static final class PatienceConverter implements CommandLine.ITypeConverter<Duration> {
        @Override
        public Duration convert(String text) {
            try {
                BigDecimal seconds = new BigDecimal(text);
                if (seconds.signum() > 0 && seconds.compareTo(BigDecimal.valueOf(MOST_SECONDS)) <= 0) {
                    return Duration.ofNanos(seconds.movePointRight(9).longValue());
                }
            } catch (NumberFormatException notOne) {
                // Reported below.
            }
            throw new CommandLine.TypeConversionException("\"" + text
                    + "\" is not a number of seconds above 0, " + MOST_SECONDS + " at most");
        }
    }

    private static final class UnknownConverter implements CommandLine.ITypeConverter<String> {
        @Override
        public String convert(String text) {
            if (!text.equals(SIMULATE)) {
                throw new CommandLine.TypeConversionException("\"" + text + "\" is not \""
                        + SIMULATE + "\"");
            }
            return text;
        }
    }
}
