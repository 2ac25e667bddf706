package tenrik.desk.shell;

import java.util.ArrayList;
import java.util.List;

import org.jline.reader.ParsedLine;
import org.jline.reader.Parser;

/**
 * Divides a line of the shell into words. Blanks separate them, except between double quotes, where
 * a backslash keeps the next character as it is, and in a word that begins with a bracket, which
 * ends with its closing bracket. A word that begins with # and all that follows it is a comment.
 */
final class ShellWords implements Parser {
    /**
     * A word.
     *
     * @param raw as it was typed
     * @param text without its quotes; a word with brackets is left as it was typed
     * @param start where it begins in the line
     */
    record Word(String raw, String text, int start) {
        int end() {
            return start + raw.length();
        }
    }

    /** The words of a line; a quote or bracket that is left open ends with it. */
    static List<Word> split(String line) {
        List<Word> words = new ArrayList<>();
        int place = 0;
        while (true) {
            while (place < line.length() && Character.isWhitespace(line.charAt(place))) {
                place++;
            }
            if (place == line.length() || line.charAt(place) == '#') {
                return words;
            }
            Word word = new Reading(line, place).word();
            words.add(word);
            place = word.end();
        }
    }

    /** Which closing quote or bracket a line lacks; empty when none. */
    static String missing(String line) {
        List<Word> words = split(line);
        return words.isEmpty() ? "" : new Reading(line, words.get(words.size() - 1).start())
                .missing();
    }

    /** The reading of one word. */
    private static final class Reading {
        private final String line;
        private final int start;
        private final boolean bracketed;
        private final StringBuilder text = new StringBuilder();
        private boolean quoted;
        private int depth;
        private int place;

        Reading(String line, int start) {
            this.line = line;
            this.start = start;
            bracketed = "{[".indexOf(line.charAt(start)) >= 0;
            for (place = start; place < line.length() && !ends(line.charAt(place)); place++) {
                take(line.charAt(place));
            }
        }

        private boolean ends(char character) {
            return !quoted && depth == 0 && Character.isWhitespace(character);
        }

        private void take(char character) {
            if (quoted && character == '\\' && place + 1 < line.length()) {
                place++;
                text.append(line.charAt(place));
            } else if (character == '"') {
                quoted = !quoted;
            } else {
                text.append(character);
                if (bracketed && !quoted) {
                    depth += "{[".indexOf(character) >= 0 ? 1 : "}]".indexOf(character) >= 0 ? -1
                            : 0;
                }
            }
        }

        Word word() {
            String raw = line.substring(start, place);
            return new Word(raw, bracketed ? raw : text.toString(), start);
        }

        String missing() {
            return quoted ? "\"" : depth > 0 ? "bracket" : "";
        }
    }

    /** A line for the completion: its words as they were typed, and where the cursor is. */
    private record Line(
            String line, int cursor, List<String> words, int wordIndex, int wordCursor)
            implements ParsedLine {
        @Override
        public String word() {
            return words.get(wordIndex);
        }
    }

    @Override
    public ParsedLine parse(String line, int cursor, ParseContext context) {
        List<String> raw = new ArrayList<>();
        int index = -1;
        int within = 0;
        for (Word word : split(line)) {
            if (index < 0 && cursor < word.start()) {
                index = raw.size();
                raw.add("");
            } else if (index < 0 && cursor <= word.end()) {
                index = raw.size();
                within = cursor - word.start();
            }
            raw.add(word.raw());
        }
        if (index < 0) {
            index = raw.size();
            raw.add("");
        }
        return new Line(line, cursor, raw, index, within);
    }
}
