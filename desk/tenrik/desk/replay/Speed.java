package tenrik.desk.replay;

import java.math.BigDecimal;

import picocli.CommandLine;

/** How time passes in a replay, as a person writes it. */
final class Speed {
    private Speed() {}

    /**
     * Seconds of the capture in one second of real time; 0 for "none".
     *
     * @throws CommandLine.TypeConversionException when the text is nothing of this
     */
    static double parse(String text) {
        switch (text) {
            case "none":
                return 0;
            case "recorded":
                return 1;
            default:
                break;
        }
        try {
            double factor = text.startsWith("x") ? new BigDecimal(text.substring(1)).doubleValue()
                    : 0;
            if (Double.isFinite(factor) && factor > 0) {
                return factor;
            }
        } catch (NumberFormatException notOne) {
            // Reported below.
        }
        throw new CommandLine.TypeConversionException("\"" + text
                + "\" is not \"none\", \"recorded\" or \"x\" and a number above 0, as \"x10\"");
    }
}
