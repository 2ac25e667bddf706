package tenrik.bench.peers;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;

import jnr.ffi.LibraryLoader;
import jnr.ffi.Pointer;
import jnr.ffi.Runtime;
import jnr.ffi.annotations.Delegate;

import tenrik.bench.CountingListener;

/** JNR-FFI: an interface whose implementation it compiles. */
final class Jnr extends Peer {
    /** Takes an event. */
    public interface OnEvent {
        @Delegate
        void invoke(int id, Pointer record, int size);
    }

    /** Takes two ints. */
    public interface OnInts {
        @Delegate
        void invoke(int a, int b);
    }

    /** The functions of the C library. */
    public interface Functions {
        int peer_sum(int a, int b);

        int peer_send(int id, Pointer record, int size);

        int peer_send_with_surfaces(
                int id, Pointer record, int size, int first, int second, int third);

        int peer_exchange(int id, Pointer record, int size, Pointer reply);

        void peer_listen(OnEvent onEvent, OnInts onInts);
    }

    private final Functions functions = LibraryLoader.create(Functions.class).load(LIBRARY);
    private final ByteBuffer recordBytes = allocate();
    private final ByteBuffer replyBytes = allocate();
    private final Pointer record = Pointer.wrap(Runtime.getRuntime(functions), recordBytes);
    private final Pointer reply = Pointer.wrap(Runtime.getRuntime(functions), replyBytes);
    private final Events events = new Events();
    private final OnEvent onEvent = (id, sent, size) -> {
        sent.get(0, events.bytes(), 0, size);
        events.deliver(id);
    };
    private final OnInts onInts = CountingListener::onInts;

    private static ByteBuffer allocate() {
        return ByteBuffer.allocateDirect(LONGEST).order(ByteOrder.LITTLE_ENDIAN);
    }

    @Override
    int sum(int a, int b) {
        return functions.peer_sum(a, b);
    }

    @Override
    ByteBuffer record() {
        return recordBytes;
    }

    @Override
    ByteBuffer reply() {
        return replyBytes;
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
        functions.peer_listen(onEvent, onInts);
    }
}
