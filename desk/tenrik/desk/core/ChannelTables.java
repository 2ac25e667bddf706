package tenrik.desk.core;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.text.Normalizer;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.function.Function;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/** The channel tables of a folder, one file for each city. */
public final class ChannelTables {
    private static final int SUGGESTIONS = 6;

    private final Path folder;

    /**
     * The tables of a folder.
     *
     * @param folder where they are; read when a table is not found
     */
    public ChannelTables(Path folder) {
        this.folder = folder;
    }

    /**
     * The table of a city.
     *
     * @param name the file's name, for example br-sp-SaoPaulo
     * @return its path
     * @throws DeskException when there is none; the message lists those with similar names
     */
    public Path find(String name) throws DeskException {
        // The folder is listed only when it has to be: an emulated machine may not be able to.
        if (!name.contains("/") && Files.isRegularFile(folder.resolve(name))) {
            return folder.resolve(name);
        }
        throw new DeskException("no channel table is called \"" + name + "\" in " + folder
                + "\nDid you mean one of these?\n  "
                + String.join("\n  ", nearest(name, names())));
    }

    private List<String> names() throws DeskException {
        try (Stream<Path> files = Files.list(folder)) {
            return files.filter(Files::isRegularFile)
                    .map(file -> file.getFileName().toString())
                    .sorted()
                    .toList();
        } catch (IOException | java.io.UncheckedIOException failure) {
            throw new DeskException("cannot list the channel tables in " + folder + ": "
                    + failure.getMessage());
        }
    }

    /** The names that are most similar to a wanted one, the most similar first. */
    static List<String> nearest(String wanted, List<String> names) {
        String plainWanted = plain(wanted);
        Map<String, Integer> distances = names.stream().collect(Collectors.toMap(
                Function.identity(), name -> distance(plainWanted, plain(name))));
        List<String> sorted = new ArrayList<>(names);
        sorted.sort(Comparator.<String>comparingInt(distances::get)
                .thenComparing(Comparator.naturalOrder()));
        return sorted.subList(0, Math.min(SUGGESTIONS, sorted.size()));
    }

    /** How many letters differ; the wanted name may lack the country and the state. */
    private static int distance(String wanted, String name) {
        int whole = edits(wanted, name);
        int place = edits(wanted, name.substring(name.lastIndexOf('-') + 1));
        return Math.min(whole, place);
    }

    /** Letters without accents and case, and the hyphens that divide a table's name. */
    private static String plain(String text) {
        return Normalizer.normalize(text, Normalizer.Form.NFD)
                .toLowerCase(Locale.ROOT)
                .replaceAll("[^a-z0-9-]", "");
    }

    /** How many letters have to be changed, added or taken away. */
    private static int edits(String from, String to) {
        int[] above = new int[to.length() + 1];
        for (int column = 0; column <= to.length(); column++) {
            above[column] = column;
        }
        for (int row = 1; row <= from.length(); row++) {
            int[] here = new int[to.length() + 1];
            here[0] = row;
            for (int column = 1; column <= to.length(); column++) {
                int change = from.charAt(row - 1) == to.charAt(column - 1) ? 0 : 1;
                here[column] = Math.min(above[column - 1] + change,
                        Math.min(above[column], here[column - 1]) + 1);
            }
            above = here;
        }
        return above[to.length()];
    }
}
