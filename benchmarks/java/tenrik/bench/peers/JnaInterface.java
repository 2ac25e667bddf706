package tenrik.bench.peers;

import com.sun.jna.Library;
import com.sun.jna.Memory;
import com.sun.jna.Native;
import com.sun.jna.Pointer;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;

/** JNA with its interface mapping: an interface that JNA implements. */
final class JnaInterface extends Peer {
    /** The functions of the C library. */
    public interface Functions extends Library {
        int peer_sum(int a, int b);

        int peer_send(int id, Pointer record, int size);

        int peer_send_with_surfaces(
                int id, Pointer record, int size, int first, int second, int third);

        int peer_exchange(int id, Pointer record, int size, Pointer reply);

        void peer_listen(JnaCallbacks.OnEvent onEvent, JnaCallbacks.OnInts onInts);
    }

    private final Functions functions = Native.load(LIBRARY, Functions.class);
    private final Memory record = new Memory(LONGEST);
    private final Memory reply = new Memory(LONGEST);
    private final JnaCallbacks callbacks = new JnaCallbacks();

    @Override
    int sum(int a, int b) {
        return functions.peer_sum(a, b);
    }

    @Override
    ByteBuffer record() {
        return record.getByteBuffer(0, LONGEST).order(ByteOrder.LITTLE_ENDIAN);
    }

    @Override
    ByteBuffer reply() {
        return reply.getByteBuffer(0, LONGEST).order(ByteOrder.LITTLE_ENDIAN);
    }

    @Override
    int send(int id, int size) {
        return functions.peer_send(id, record, size);
    }

    @Override
    int sendWithSurfaces(int id, int size, int first, int second, int third) {
        return functions.peer_send_with_surfaces(id, record, size, first, second, third);
    }

    @Override
    int exchange(int id, int size) {
        return functions.peer_exchange(id, record, size, reply);
    }

    @Override
    void listen() {
        functions.peer_listen(callbacks.onEvent, callbacks.onInts);
    }
}
