package rows;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.zip.ZipEntry;
import java.util.zip.ZipFile;
import java.util.zip.ZipOutputStream;
import javax.tools.ToolProvider;

/** Makes jars that differ from the service's in one thing, and compares rows with them. */
final class ServiceJars {
    /** The package of the proxy and its callbacks, as a folder. */
    static final String SERVICE = "tenrik/service/dtvserver/";

    private final Path jar;
    private final Path sources;
    private final Path scratch;
    private int count;

    /**
     * @param jar the service's jar
     * @param sources the folder of its sources
     * @param scratch a folder for what is made
     */
    ServiceJars(Path jar, Path sources, Path scratch) {
        this.jar = jar;
        this.sources = sources;
        this.scratch = scratch;
    }

    /** What the program printed, and its status. */
    record Outcome(int status, String out, String err) {}

    static Outcome compare(Path... files) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        ByteArrayOutputStream err = new ByteArrayOutputStream();
        List<String> arguments = new ArrayList<>(List.of("--count"));
        for (Path file : files) {
            arguments.add(file.toString());
        }
        int status = CompareRows.run(arguments.toArray(String[]::new),
                new PrintStream(out, true, StandardCharsets.UTF_8),
                new PrintStream(err, true, StandardCharsets.UTF_8));
        return new Outcome(status, out.toString(StandardCharsets.UTF_8),
                err.toString(StandardCharsets.UTF_8));
    }

    /** The entries of the service's jar. */
    Map<String, byte[]> entries() throws IOException {
        Map<String, byte[]> entries = new LinkedHashMap<>();
        try (ZipFile file = new ZipFile(jar.toFile())) {
            for (ZipEntry entry : file.stream().toList()) {
                entries.put(entry.getName(), file.getInputStream(entry).readAllBytes());
            }
        }
        return entries;
    }

    /** A new jar with these entries. */
    Path jarOf(Map<String, byte[]> entries) throws IOException {
        Path file = scratch.resolve("jar" + count++ + ".jar");
        try (ZipOutputStream out = new ZipOutputStream(Files.newOutputStream(file))) {
            for (Map.Entry<String, byte[]> entry : entries.entrySet()) {
                out.putNextEntry(new ZipEntry(entry.getKey()));
                out.write(entry.getValue());
            }
        }
        return file;
    }

    /** A new file with this text. */
    Path textOf(String text) throws IOException {
        return Files.writeString(scratch.resolve("text" + count++ + ".txt"), text);
    }

    /** The service's jar with one source changed. */
    Path jarWith(String source, String from, String to) throws IOException {
        Map<String, byte[]> entries = entries();
        entries.putAll(compile(Map.of(source, changed(source, from, to))));
        return jarOf(entries);
    }

    /** A source of the service with a text replaced, which it has to hold. */
    String changed(String source, String from, String to) throws IOException {
        String text = Files.readString(sources.resolve(source));
        if (!text.contains(from)) {
            throw new IOException(source + " does not hold: " + from);
        }
        return text.replace(from, to);
    }

    /** The class files of sources, which may use the service's classes. */
    Map<String, byte[]> compile(Map<String, String> texts) throws IOException {
        Path folder = scratch.resolve("sources" + count++);
        Path classes = Files.createDirectories(folder.resolve("classes"));
        List<String> arguments = new ArrayList<>(List.of("--release", "17", "-encoding", "UTF-8",
                "-cp", jar.toString(), "-d", classes.toString()));
        for (Map.Entry<String, String> source : texts.entrySet()) {
            Path file = folder.resolve(source.getKey());
            Files.createDirectories(file.getParent());
            Files.writeString(file, source.getValue());
            arguments.add(file.toString());
        }
        int status = ToolProvider.getSystemJavaCompiler()
                .run(null, null, null, arguments.toArray(String[]::new));
        if (status != 0) {
            throw new IOException("not compiled: " + texts.keySet());
        }
        Map<String, byte[]> compiled = new LinkedHashMap<>();
        try (var files = Files.walk(classes)) {
            for (Path file : files.filter(Files::isRegularFile).toList()) {
                compiled.put(classes.relativize(file).toString(), Files.readAllBytes(file));
            }
        }
        return compiled;
    }
}
