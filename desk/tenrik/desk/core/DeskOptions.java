package tenrik.desk.core;

import java.nio.file.Path;

import picocli.CommandLine.Option;

/** The options that all commands have in common: those of the simulated service. */
public final class DeskOptions {
    @Option(names = "--libraries", required = true, hidden = true,
            description = "The folder of libdtv_desk.so and libDtv_jni.so.")
    private Path libraries;

    @Option(names = "--tables", required = true, hidden = true,
            description = "The folder of the channel tables.")
    private Path tables;

    @Option(names = "--city", defaultValue = "br-sp-SaoPaulo", paramLabel = "NAME",
            description = "The channel table, and so the stations on the air.")
    private String city;

    @Option(names = "--guide", required = true, paramLabel = "FILE",
            description = "The programmes of the stations.")
    private Path guide;

    @Option(names = "--script", paramLabel = "FILE",
            description = "How the service's behaviour is modified.")
    private Path script;

    @Option(names = "--seed", paramLabel = "NUMBER",
            description = "The seed of the random numbers: the same number, the same run.")
    private Integer seed;

    @Option(names = "--output", required = true, hidden = true, paramLabel = "FILE",
            description = "Where native code's standard output goes.")
    private String output;

    @Option(names = "--terminal", hidden = true,
            description = "Standard output is a terminal that shows colours.")
    private boolean terminal;

    @Option(names = "--version", versionHelp = true,
            description = "Shows the version and ends.")
    private boolean version;

    /** Options without values, for the parser of the command line. */
    public DeskOptions() {}

    /**
     * The folder of the native libraries.
     *
     * @return an absolute path
     */
    public Path libraries() {
        return libraries.toAbsolutePath();
    }

    /**
     * The folder of the channel tables.
     *
     * @return a path
     */
    public Path tables() {
        return tables;
    }

    /**
     * The name of the channel table.
     *
     * @return a file name, for example br-sp-SaoPaulo
     */
    public String city() {
        return city;
    }

    /**
     * The programme guide.
     *
     * @return an XMLTV file
     */
    public Path guide() {
        return guide;
    }

    /**
     * The script that modifies the service's behaviour.
     *
     * @return a JSON file; null when there is none
     */
    public Path script() {
        return script;
    }

    /**
     * The seed of the random numbers.
     *
     * @return a number; null when each run is different
     */
    public Integer seed() {
        return seed;
    }

    /**
     * The file of native code's standard output, and of the trace where one is kept.
     *
     * @return a path
     */
    public String output() {
        return output;
    }

    /**
     * Whether standard output is a terminal that shows colours.
     *
     * @return true when it is
     */
    public boolean terminal() {
        return terminal;
    }
}
