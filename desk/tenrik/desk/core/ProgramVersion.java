package tenrik.desk.core;

import picocli.CommandLine.IVersionProvider;

/** The program's name and version, which the build has written into the jar's manifest. */
public final class ProgramVersion implements IVersionProvider {
    /** For the parser of the command line. */
    public ProgramVersion() {}

    /** One line, for example "libDtv_jni 1.0". */
    @Override
    public String[] getVersion() {
        Package here = ProgramVersion.class.getPackage();
        return new String[] {here.getImplementationTitle() + " " + here.getImplementationVersion()};
    }
}
