package tenrik.bench.peers;

import com.sun.jna.Memory;
import com.sun.jna.Native;
import com.sun.jna.Pointer;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;

/** JNA with its direct mapping: native methods that JNA binds. */
final class JnaDirect extends Peer {
    static {
        Native.register(JnaDirect.class, LIBRARY);
    }

    private final Memory record = new Memory(LONGEST);
    private final Memory reply = new Memory(LONGEST);
    private final JnaCallbacks callbacks = new JnaCallbacks();

    private static native int peer_sum(int a, int b);

    private static native int peer_send(int id, Pointer record, int size);

    private static native int peer_send_with_surfaces(
            int id, Pointer record, int size, int first, int second, int third);

    private static native int peer_exchange(int id, Pointer record, int size, Pointer reply);

    private static native void peer_listen(
            JnaCallbacks.OnEvent onEvent, JnaCallbacks.OnInts onInts);

    @Override
    int sum(int a, int b) {
        return peer_sum(a, b);
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
        return peer_send(id, record, size);
    }

    @Override
    int sendWithSurfaces(int id, int size, int first, int second, int third) {
        return peer_send_with_surfaces(id, record, size, first, second, third);
    }

    @Override
    int exchange(int id, int size) {
        return peer_exchange(id, record, size, reply);
    }

    @Override
    void listen() {
        peer_listen(callbacks.onEvent, callbacks.onInts);
    }
}
