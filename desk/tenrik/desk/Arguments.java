package tenrik.desk;

import java.nio.file.Path;

/**
 * What the program is told.
 *
 * @param libraries the folder of libdtv_desk.so and libDtv_jni.so
 * @param tables the folder of the channel tables
 * @param city the name of a channel table
 * @param colour whether standard output shows colours
 */
record Arguments(Path libraries, Path tables, String city, boolean colour) {
    /** Reads the options that the run script hands over. */
    static Arguments parse(String[] given) throws DeskException {
        Path libraries = null;
        Path tables = null;
        String city = null;
        boolean colour = false;
        for (int index = 0; index < given.length; index++) {
            String option = given[index];
            if (option.equals("--colour")) {
                colour = true;
                continue;
            }
            if (++index == given.length) {
                throw new DeskException(option + " needs a value");
            }
            switch (option) {
                case "--libraries" -> libraries = Path.of(given[index]).toAbsolutePath();
                case "--tables" -> tables = Path.of(given[index]);
                case "--city" -> city = given[index];
                default -> throw new DeskException("unknown option " + option);
            }
        }
        if (libraries == null || tables == null || city == null) {
            throw new DeskException("--libraries, --tables and --city are needed");
        }
        return new Arguments(libraries, tables, city, colour);
    }
}
