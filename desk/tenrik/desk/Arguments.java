package tenrik.desk;

import java.nio.file.Path;

/**
 * What the program is told.
 *
 * @param libraries the folder of libdtv_desk.so and libDtv_jni.so
 * @param tables the folder of the channel tables
 * @param city the name of a channel table
 * @param guide the file of the programme guide
 * @param tour whether the rest of the receiver is shown as well
 * @param colour whether standard output shows colours
 */
record Arguments(Path libraries, Path tables, String city, String guide, boolean tour, boolean colour) {
    /** Reads the options that the run script hands over. */
    static Arguments parse(String[] given) throws DeskException {
        Path libraries = null;
        Path tables = null;
        String city = null;
        String guide = null;
        boolean tour = false;
        boolean colour = false;
        for (int index = 0; index < given.length; index++) {
            String option = given[index];
            if (option.equals("--colour")) {
                colour = true;
                continue;
            }
            if (option.equals("--tour")) {
                tour = true;
                continue;
            }
            if (++index == given.length) {
                throw new DeskException(option + " needs a value");
            }
            switch (option) {
                case "--libraries" -> libraries = Path.of(given[index]).toAbsolutePath();
                case "--tables" -> tables = Path.of(given[index]);
                case "--city" -> city = given[index];
                case "--guide" -> guide = given[index];
                default -> throw new DeskException("unknown option " + option);
            }
        }
        if (libraries == null || tables == null || city == null || guide == null) {
            throw new DeskException("--libraries, --tables, --city and --guide are needed");
        }
        return new Arguments(libraries, tables, city, guide, tour, colour);
    }
}
