package rows;

import java.util.ArrayList;
import java.util.List;

/** What was found to differ, in the order in which it was found. */
final class Findings {
    private final List<String> lines = new ArrayList<>();

    /** Adds one line, in the form of a compiler's error. */
    void add(String place, String text) {
        lines.add(place + ": error: " + text);
    }

    List<String> lines() {
        return List.copyOf(lines);
    }
}
