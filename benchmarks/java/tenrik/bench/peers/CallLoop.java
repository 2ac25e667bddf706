package tenrik.bench.peers;

/** Calls a C function in a loop. Defined once for each peer. */
final class CallLoop {
    private final Peer peer;

    CallLoop(Peer peer) {
        this.peer = peer;
    }

    /**
     * Calls a function with two ints.
     *
     * @return how many calls returned what they should
     */
    int sum(int count) {
        int ok = 0;
        for (int i = 0; i < count; ++i) {
            ok += peer.sum(i, 1 - i);
        }
        return ok;
    }
}
