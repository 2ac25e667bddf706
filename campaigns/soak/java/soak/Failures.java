package soak;

import java.util.ArrayList;
import java.util.List;

/** What went wrong, the first few only. */
final class Failures {
    /** How long anything is waited for. */
    static final int LONGEST_SECONDS = 60;

    private static final int KEPT = 8;
    private static final List<String> KNOWN = new ArrayList<>();
    private static volatile boolean any;

    private Failures() {}

    static void add(String what) {
        synchronized (KNOWN) {
            if (KNOWN.size() < KEPT) {
                KNOWN.add(what);
            }
            any = true;
        }
    }

    static boolean any() {
        return any;
    }

    /** All of them, one a line; empty when there is none. They are dropped. */
    static String take() {
        synchronized (KNOWN) {
            String text = String.join("\n", KNOWN);
            KNOWN.clear();
            any = false;
            return text;
        }
    }
}
