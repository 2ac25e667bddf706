package rows;

import java.util.Collection;
import java.util.Locale;

/** Finds what a misspelt name was meant to be. */
final class NearName {
    /** How many letters may differ. */
    private static final int LARGEST_DISTANCE = 2;

    private NearName() {}

    /** The candidate that is most like the name; null when none is like it. */
    static String of(String name, Collection<String> candidates) {
        String best = null;
        int bestDistance = LARGEST_DISTANCE + 1;
        for (String candidate : candidates) {
            int distance = candidate.toLowerCase(Locale.ROOT).equals(name.toLowerCase(Locale.ROOT))
                    ? 0 : distance(name, candidate);
            if (distance < bestDistance) {
                best = candidate;
                bestDistance = distance;
            }
        }
        return best;
    }

    /** How many letters have to be put in, left out or changed to make one name the other. */
    private static int distance(String from, String to) {
        if (Math.abs(from.length() - to.length()) > LARGEST_DISTANCE) {
            return LARGEST_DISTANCE + 1;
        }
        int[] above = new int[to.length() + 1];
        for (int column = 0; column <= to.length(); ++column) {
            above[column] = column;
        }
        for (int row = 1; row <= from.length(); ++row) {
            int[] line = new int[to.length() + 1];
            line[0] = row;
            for (int column = 1; column <= to.length(); ++column) {
                int changed = from.charAt(row - 1) == to.charAt(column - 1) ? 0 : 1;
                line[column] = Math.min(above[column - 1] + changed,
                        1 + Math.min(above[column], line[column - 1]));
            }
            above = line;
        }
        return above[to.length()];
    }
}
