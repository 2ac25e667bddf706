package tenrik.desk.core;

import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.FilterOutputStream;
import java.io.IOException;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.Optional;

/** Standard output and standard error in UTF-8, whatever the locale. */
public final class StandardStreams {
    private static final Descriptor OUTPUT = new Descriptor(FileDescriptor.out);

    /** Standard output. Once a write has failed, {@link #outputFailure} says why. */
    public static final PrintStream OUT = new PrintStream(OUTPUT, true, StandardCharsets.UTF_8);
    /** Standard error. */
    public static final PrintStream ERRORS = new PrintStream(
            new Descriptor(FileDescriptor.err), true, StandardCharsets.UTF_8);

    private StandardStreams() {}

    /**
     * Why standard output does not hold all that was written to it.
     *
     * @return the message of the first failure; empty when there was none
     */
    public static Optional<String> outputFailure() {
        return OUT.checkError() ? Optional.of(String.valueOf(OUTPUT.failure)) : Optional.empty();
    }

    /** A descriptor that keeps the first failure, which a print stream drops. */
    private static final class Descriptor extends FilterOutputStream {
        private volatile String failure;

        Descriptor(FileDescriptor descriptor) {
            super(new FileOutputStream(descriptor));
        }

        @Override
        public void write(byte[] bytes, int offset, int length) throws IOException {
            try {
                out.write(bytes, offset, length);
            } catch (IOException failed) {
                failure = failure == null ? failed.getMessage() : failure;
                throw failed;
            }
        }

        @Override
        public void write(int value) throws IOException {
            write(new byte[] {(byte) value}, 0, 1);
        }
    }
}
