package tenrik.desk.core;

/** The width of texts on a terminal, where some characters are two columns wide. */
public final class Columns {
    private Columns() {}

    /**
     * The width of a text.
     *
     * @param text the text
     * @return columns
     */
    public static int width(String text) {
        return text.codePoints().map(Columns::width).sum();
    }

    /**
     * A text of an exact width: filled up with blanks, or cut with an ellipsis.
     *
     * @param text the text
     * @param columns the width
     * @return the text of that width
     */
    public static String fit(String text, int columns) {
        String clipped = clip(text, columns);
        return clipped + " ".repeat(columns - width(clipped));
    }

    /**
     * A text of a limited width.
     *
     * @param text the text
     * @param columns the greatest width
     * @return the text, cut with an ellipsis when it is wider
     */
    public static String clip(String text, int columns) {
        if (width(text) <= columns) {
            return text;
        }
        StringBuilder clipped = new StringBuilder();
        int used = 1;
        for (int character : text.codePoints().toArray()) {
            used += width(character);
            if (used > columns) {
                break;
            }
            clipped.appendCodePoint(character);
        }
        return clipped.append('\u2026').toString();
    }

    private static int width(int character) {
        return switch (Character.getType(character)) {
            case Character.NON_SPACING_MARK, Character.ENCLOSING_MARK, Character.FORMAT,
                    Character.CONTROL -> 0;
            default -> isWide(character) ? 2 : 1;
        };
    }

    /** Ideographs, kana, hangul, their punctuation, and the full-width forms. */
    private static boolean isWide(int character) {
        return character >= 0x1100 && character <= 0x115F
                || character >= 0x2E80 && character <= 0xA4CF && character != 0x303F
                || character >= 0xAC00 && character <= 0xD7A3
                || character >= 0xF900 && character <= 0xFAFF
                || character >= 0xFE30 && character <= 0xFE6F
                || character >= 0xFF00 && character <= 0xFF60
                || character >= 0xFFE0 && character <= 0xFFE6
                || character >= 0x1F300 && character <= 0x1FAFF
                || character >= 0x20000 && character <= 0x3FFFD;
    }
}
