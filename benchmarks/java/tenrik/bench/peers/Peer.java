package tenrik.bench.peers;

import java.nio.ByteBuffer;

/**
 * A technology that reaches native code without a bridge of its own: Java packs the records of the
 * commands and reads those of the events, and the technology carries them to and from a C library.
 */
abstract class Peer {
    /** Bytes of the longest record. */
    static final int LONGEST = 8192;

    /** The C library. */
    static final String LIBRARY = System.getProperty("tenrik.bench.peers", "");

    /**
     * A call of a C function with two ints.
     *
     * @return their sum
     */
    abstract int sum(int a, int b);

    /** Where the record of a command is packed, little-endian; native memory. */
    abstract ByteBuffer record();

    /** Where the reply of a synchronous command is found, little-endian; native memory. */
    abstract ByteBuffer reply();

    /**
     * Sends the record.
     *
     * @return 0 when it was taken
     */
    abstract int send(int id, int size);

    /** The same beside three surfaces, by their addresses. */
    abstract int sendWithSurfaces(int id, int size, int first, int second, int third);

    /** Sends the record, and waits for the reply. */
    abstract int exchange(int id, int size);

    /** Has the library call {@link Events} from now on. */
    abstract void listen();
}
