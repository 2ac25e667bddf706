package tenrik.desk.replay;

import tenrik.desk.core.DeskException;

/**
 * A play speed as Java gave it. Its record has the lower halves of both numbers, and the bridge has
 * checked that the whole ones divide out to a speed that there is.
 */
record PlaySpeed(int numerator, int denominator) {
    private static final int[] SPEEDS = {2, 10, 30, 120};
    private static final int HALF = 1 << Short.SIZE;

    static PlaySpeed of(CommandRecord record) throws DeskException {
        int numerator = record.number("numerator");
        int denominator = record.number("denominator") == 0 ? HALF : record.number("denominator");
        for (int speed : SPEEDS) {
            if (speed * denominator % HALF == numerator) {
                return new PlaySpeed(speed * denominator, denominator);
            }
        }
        throw new DeskException(numerator + " / " + record.number("denominator")
                + " is no play speed");
    }
}
