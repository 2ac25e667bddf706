package tenrik.desk.shell;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.channels.FileChannel;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.function.Consumer;

import tenrik.desk.core.DeskException;

/** Shows the lines of the bridge's trace as they are written to their file. */
final class TraceFollower implements AutoCloseable {
    private static final int PERIOD = 50; // milliseconds
    private static final int BLOCK = 8192; // bytes
    private static final int LONGEST_LINE = 65536; // bytes; a longer one is shown in parts

    private final Path file;
    private final Consumer<String> lines;
    private Following following;

    /** @param lines gets the lines, on a thread of its own */
    TraceFollower(Path file, Consumer<String> lines) {
        this.file = file;
        this.lines = lines;
    }

    /**
     * Starts with the lines that are written after this call.
     *
     * @param filter what a line must contain
     * @throws DeskException when the trace cannot be read
     */
    void start(String filter) throws DeskException {
        close();
        if (!Files.isRegularFile(file)) {
            throw new DeskException("the trace goes to " + file + ", which is not a regular file");
        }
        try {
            following = new Following(FileChannel.open(file), filter);
        } catch (IOException failure) {
            throw new DeskException("the trace cannot be read: " + failure.getMessage());
        }
        following.start();
    }

    /** Ends with the lines that were written before this call. */
    @Override
    public void close() {
        if (following != null) {
            following.end();
            following = null;
        }
    }

    private final class Following extends Thread {
        private final FileChannel channel;
        private final String filter;
        private final ByteBuffer block = ByteBuffer.allocate(BLOCK);
        private final ByteArrayOutputStream line = new ByteArrayOutputStream();
        private boolean ended;

        Following(FileChannel channel, String filter) throws IOException {
            super("desk-trace");
            setDaemon(true);
            this.channel = channel;
            this.filter = filter;
            channel.position(channel.size());
        }

        @Override
        public void run() {
            try (channel) {
                follow();
            } catch (InterruptedException end) {
                // Ends the thread; nothing in the program interrupts it.
            } catch (IOException failure) {
                lines.accept("the trace cannot be read any more: " + failure.getMessage());
            }
        }

        private synchronized void follow() throws IOException, InterruptedException {
            while (!ended) {
                read();
                wait(PERIOD);
            }
            read();
        }

        /** Reads up to the present end of the file, so that it also ends while the trace grows. */
        private void read() throws IOException {
            long end = channel.size();
            while (channel.position() < end && channel.read(block.clear()) > 0) {
                for (block.flip(); block.hasRemaining();) {
                    byte next = block.get();
                    if (next != '\n') {
                        line.write(next);
                    }
                    if (next != '\n' && line.size() < LONGEST_LINE) {
                        continue;
                    }
                    String text = line.toString(StandardCharsets.UTF_8);
                    line.reset();
                    if (text.contains(filter)) {
                        lines.accept(text);
                    }
                }
            }
        }

        /** Returns when all that was written has been read. */
        void end() {
            synchronized (this) {
                ended = true;
                notifyAll();
            }
            try {
                join();
            } catch (InterruptedException abandoned) {
                Thread.currentThread().interrupt();
            }
        }
    }
}
