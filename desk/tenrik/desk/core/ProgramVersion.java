package tenrik.desk.core;

import picocli.CommandLine.IVersionProvider;

/** The program's name and version, which the build has written into the jar's manifest. */
public final class ProgramVersion implements IVersionProvider {
    /** For the parser of the command line. */
    public ProgramVersion() {}

    /** One line, for example "libDtv_jni 1.0". */
    @Override
    public String[] getVersion() {
        return new String[] {
            ProgramVersion.class.getPackage().getImplementationTitle() + " " + number()
        };
    }

    /**
     * The number alone.
     *
     * @return for example "1.0"
     */
    public static String number() {
        return ProgramVersion.class.getPackage().getImplementationVersion();
    }
}
