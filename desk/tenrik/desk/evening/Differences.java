package tenrik.desk.evening;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/** What came otherwise than it should in an evening that is continued all the same. */
final class Differences {
    /**
     * Something that came otherwise.
     *
     * @param part the part of the evening
     * @param what the command, for people
     * @param command the name of the command that was sent last; empty when none was
     * @param event the class of the event that is concerned; empty when none is
     * @param expected what should have come
     * @param came what came
     */
    record Difference(String part, String what, String command, String event, String expected,
            String came) {}

    /**
     * A part of the evening that was not played.
     *
     * @param part its name
     * @param why what it needs, and what was missing
     */
    record LeftOut(String part, String why) {}

    /** The reason why the rest of a part cannot be played. In its own words at the difference. */
    static final class PartLost extends RuntimeException {
        private static final long serialVersionUID = 1L;

        PartLost() {
            super(null, null, false, false);
        }
    }

    private final Map<Difference, Integer> times = new LinkedHashMap<>();
    private final List<LeftOut> leftOut = new ArrayList<>();
    private String part = "";
    private int inPart;

    /** The differences from now on belong to this part. */
    void begin(String name) {
        part = name;
        inPart = 0;
    }

    /** How many differences the part has after which the state of the session is not known. */
    int inPart() {
        return inPart;
    }

    /** Something came otherwise. */
    void add(String what, String command, String event, String expected, String came) {
        addHarmless(what, command, event, expected, came);
        inPart++;
    }

    /** The same, and the session is in the state in which it should be. */
    void addHarmless(String what, String command, String event, String expected, String came) {
        times.merge(new Difference(part, what, command, event, expected, came), 1, Integer::sum);
    }

    /** The part, or the rest of it, is not played. */
    void leaveOut(String name, String why) {
        leftOut.add(new LeftOut(name, why));
    }

    /** The differences, and how often each came, in the order in which they came first. */
    Map<Difference, Integer> all() {
        return times;
    }

    List<LeftOut> leftOut() {
        return leftOut;
    }

    boolean isEmpty() {
        return times.isEmpty() && leftOut.isEmpty();
    }
}
