package tenrik.bench.peers;

import java.lang.invoke.MethodHandle;
import java.lang.invoke.MethodHandles;
import java.lang.invoke.MethodType;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;

import jdk.incubator.foreign.CLinker;
import jdk.incubator.foreign.FunctionDescriptor;
import jdk.incubator.foreign.MemoryAddress;
import jdk.incubator.foreign.MemoryLayout;
import jdk.incubator.foreign.MemorySegment;
import jdk.incubator.foreign.ResourceScope;
import jdk.incubator.foreign.SymbolLookup;

import tenrik.bench.CountingListener;

/** The foreign interface of JDK 17, an incubating module: method handles for C functions. */
final class Ffm extends Peer {
    private static final MemoryLayout INT = CLinker.C_INT;
    private static final MemoryLayout POINTER = CLinker.C_POINTER;

    static {
        System.load(LIBRARY);
    }

    private static final MethodHandle SUM = function("peer_sum", INT, INT);
    private static final MethodHandle SEND = function("peer_send", INT, POINTER, INT);
    private static final MethodHandle SEND_WITH_SURFACES =
            function("peer_send_with_surfaces", INT, POINTER, INT, INT, INT, INT);
    private static final MethodHandle EXCHANGE =
            function("peer_exchange", INT, POINTER, INT, POINTER);
    private static final MethodHandle LISTEN = function("peer_listen", POINTER, POINTER);

    private static final MemorySegment RECORD =
            MemorySegment.allocateNative(LONGEST, 16, ResourceScope.globalScope());
    private static final MemorySegment REPLY =
            MemorySegment.allocateNative(LONGEST, 16, ResourceScope.globalScope());
    private static final MemoryAddress RECORD_ADDRESS = RECORD.address();
    private static final MemoryAddress REPLY_ADDRESS = REPLY.address();

    private static final Events EVENTS = new Events();
    private static final MemorySegment EVENT_BYTES = MemorySegment.ofArray(EVENTS.bytes());

    private static MethodHandle function(String name, MemoryLayout... parameters) {
        Class<?>[] types = new Class<?>[parameters.length];
        for (int i = 0; i < types.length; ++i) {
            types[i] = parameters[i] == POINTER ? MemoryAddress.class : int.class;
        }
        return CLinker.getInstance()
                .downcallHandle(
                        SymbolLookup.loaderLookup().lookup(name).orElseThrow(),
                        MethodType.methodType(int.class, types),
                        FunctionDescriptor.of(INT, parameters));
    }

    private static void onEvent(int id, MemoryAddress record, int size) {
        EVENT_BYTES.asSlice(0, size).copyFrom(record.asSegment(size, ResourceScope.globalScope()));
        EVENTS.deliver(id);
    }

    @Override
    int sum(int a, int b) {
        try {
            return (int) SUM.invokeExact(a, b);
        } catch (Throwable thrown) {
            throw new IllegalStateException(thrown);
        }
    }

    @Override
    ByteBuffer record() {
        return RECORD.asByteBuffer().order(ByteOrder.LITTLE_ENDIAN);
    }

    @Override
    ByteBuffer reply() {
        return REPLY.asByteBuffer().order(ByteOrder.LITTLE_ENDIAN);
    }

    @Override
    int send(int id, int size) {
        try {
            return (int) SEND.invokeExact(id, RECORD_ADDRESS, size);
        } catch (Throwable thrown) {
            throw new IllegalStateException(thrown);
        }
    }

    @Override
    int sendWithSurfaces(int id, int size, int first, int second, int third) {
        try {
            return (int) SEND_WITH_SURFACES.invokeExact(
                    id, RECORD_ADDRESS, size, first, second, third);
        } catch (Throwable thrown) {
            throw new IllegalStateException(thrown);
        }
    }

    @Override
    int exchange(int id, int size) {
        try {
            return (int) EXCHANGE.invokeExact(id, RECORD_ADDRESS, size, REPLY_ADDRESS);
        } catch (Throwable thrown) {
            throw new IllegalStateException(thrown);
        }
    }

    @Override
    void listen() {
        try {
            MethodHandles.Lookup lookup = MethodHandles.lookup();
            int unused = (int) LISTEN.invokeExact(
                    callback(
                            lookup.findStatic(
                                    Ffm.class, "onEvent",
                                    MethodType.methodType(
                                            void.class, int.class, MemoryAddress.class, int.class)),
                            INT, POINTER, INT),
                    callback(
                            lookup.findStatic(
                                    CountingListener.class, "onInts",
                                    MethodType.methodType(void.class, int.class, int.class)),
                            INT, INT));
        } catch (Throwable thrown) {
            throw new IllegalStateException(thrown);
        }
    }

    private static MemoryAddress callback(MethodHandle target, MemoryLayout... parameters) {
        return CLinker.getInstance()
                .upcallStub(
                        target, FunctionDescriptor.ofVoid(parameters), ResourceScope.globalScope());
    }
}
