package tenrik.desk.evening;

import java.util.ArrayList;
import java.util.List;
import java.util.Map;

import com.google.gson.Gson;
import com.google.gson.JsonArray;
import com.google.gson.JsonObject;

import tenrik.desk.core.Simulator;

/** Shows what differed in an evening that was continued, and which rules of the script took effect. */
final class DifferenceTable {
    /** Differences that are shown to people; JSON has all. */
    private static final int SHOWN = 20;

    private final Differences differences;
    private final List<Simulator.RuleCount> rules;

    /** @param rules of the script; none without a script */
    DifferenceTable(Differences differences, List<Simulator.RuleCount> rules) {
        this.differences = differences;
        this.rules = rules;
    }

    /** What failed, in one line. */
    static String failure(Differences differences) {
        Map.Entry<Differences.Difference, Integer> first =
                differences.all().entrySet().stream().findFirst().orElse(null);
        if (first == null) {
            return counted(differences.leftOut().size(), "part") + " left out";
        }
        Differences.Difference difference = first.getKey();
        return counted(differences.all().size(), "difference") + ", the first: " + difference.what()
                + ": " + difference.expected() + " should have come, and " + difference.came()
                + " came.";
    }

    private static String counted(int count, String what) {
        return count + " " + what + (count == 1 ? "" : "s");
    }

    /** Lines for the closing table. */
    List<String> lines() {
        List<String> lines = new ArrayList<>();
        lines.add("what differed           " + differences.all().size()
                + (differences.all().isEmpty() ? "" : ":"));
        differences.all().entrySet().stream().limit(SHOWN)
                .forEach(entry -> add(lines, entry.getKey(), entry.getValue()));
        if (differences.all().size() > SHOWN) {
            lines.add("    and " + (differences.all().size() - SHOWN)
                    + " more, which --json shows");
        }
        differences.leftOut().forEach(left -> {
            lines.add("    left out: " + left.part());
            lines.add("        " + left.why());
        });
        if (!rules.isEmpty()) {
            long acted = rules.stream().filter(rule -> rule.acted() > 0).count();
            lines.add("rules that took effect  " + acted + " of " + rules.size() + ":");
            rules.forEach(rule -> lines.add("    " + rule.rule()
                    + (rule.message().equals("-") ? "" : " " + rule.message()) + ": "
                    + (rule.acted() == 0 ? "never"
                            : rule.acted() == 1 ? "once" : rule.acted() + " times")));
        }
        return lines;
    }

    private static void add(List<String> lines, Differences.Difference difference, int times) {
        lines.add("    " + difference.part() + ": " + difference.what()
                + (difference.command().isEmpty() ? "" : " (" + difference.command() + ")")
                + (times == 1 ? "" : ", " + times + " times"));
        if (!difference.event().isEmpty() && !difference.expected().equals(difference.event())) {
            lines.add("        " + difference.event());
        }
        lines.add("        expected " + difference.expected());
        lines.add("        came     " + difference.came());
    }

    /** The figures of the evening, and these, as a JSON object. */
    String json(Summary.Result result) {
        Gson writer = Summary.Result.writer();
        JsonObject object = writer.toJsonTree(result).getAsJsonObject();
        JsonArray all = new JsonArray();
        differences.all().forEach((difference, times) -> {
            JsonObject one = writer.toJsonTree(difference).getAsJsonObject();
            one.addProperty("times", times);
            all.add(one);
        });
        object.add("differences", all);
        object.add("left_out", writer.toJsonTree(differences.leftOut()));
        object.add("rules", writer.toJsonTree(rules));
        return writer.toJson(object);
    }
}
