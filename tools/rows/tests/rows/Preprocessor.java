package rows;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/**
 * Prints the rows as the build does.
 *
 * @param compiler the C++ compiler
 * @param source the source that prints the rows
 */
record Preprocessor(String compiler, Path source) {
    /** The rows of the tables that are found in these folders, the first that has one. */
    String print(Path... folders) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(List.of(compiler, "-std=c++17", "-E", "-P"));
        for (Path folder : folders) {
            command.add("-I" + folder);
        }
        command.add(source.toString());
        Process process = new ProcessBuilder(command)
                .redirectError(ProcessBuilder.Redirect.INHERIT).start();
        String text =
                new String(process.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        if (process.waitFor() != 0) {
            throw new IOException("the rows cannot be printed: " + command);
        }
        return text;
    }
}
