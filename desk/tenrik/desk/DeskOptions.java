package tenrik.desk;

import java.nio.file.Path;

import picocli.CommandLine.Option;

/** What is put on the desk. */
final class DeskOptions {
    @Option(names = "--libraries", required = true, hidden = true,
            description = "The folder of libdtv_desk.so and libDtv_jni.so.")
    Path libraries;

    @Option(names = "--tables", required = true, hidden = true,
            description = "The folder of the channel tables.")
    Path tables;

    @Option(names = "--city", defaultValue = "br-sp-SaoPaulo", paramLabel = "NAME",
            description = "Whose stations are on the air.")
    String city;

    @Option(names = "--guide", required = true, paramLabel = "FILE",
            description = "What the stations show.")
    Path guide;

    @Option(names = "--script", paramLabel = "FILE",
            description = "How the service's behaviour is bent.")
    Path script;

    @Option(names = "--seed", paramLabel = "NUMBER",
            description = "What chance begins with: the same number, the same run.")
    Integer seed;

    @Option(names = "--output", required = true, hidden = true, paramLabel = "FILE",
            description = "Where native code's standard output goes.")
    String output;

    @Option(names = "--terminal", hidden = true,
            description = "Standard output is a terminal that shows colours.")
    boolean terminal;
}
