package tenrik.bench.peers;

import java.nio.ByteBuffer;

/** The bare call of a native method, to compare the peers' calls with. It carries no records. */
final class Jni extends Peer {
    @Override
    native int sum(int a, int b);

    @Override
    ByteBuffer record() {
        return ByteBuffer.allocate(0);
    }

    @Override
    ByteBuffer reply() {
        return ByteBuffer.allocate(0);
    }

    @Override
    int send(int id, int size) {
        throw new UnsupportedOperationException();
    }

    @Override
    int sendWithSurfaces(int id, int size, int first, int second, int third) {
        throw new UnsupportedOperationException();
    }

    @Override
    int exchange(int id, int size) {
        throw new UnsupportedOperationException();
    }

    @Override
    void listen() {}
}
