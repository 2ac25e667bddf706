package tenrik.bench.peers;

import com.sun.jna.Callback;
import com.sun.jna.Pointer;

import tenrik.bench.CountingListener;

/** What JNA calls. Both ways of mapping have the same callbacks. */
final class JnaCallbacks {
    /** Takes an event. */
    interface OnEvent extends Callback {
        void invoke(int id, Pointer record, int size);
    }

    /** Takes two ints. */
    interface OnInts extends Callback {
        void invoke(int a, int b);
    }

    private final Events events = new Events();

    final OnEvent onEvent = (id, record, size) -> {
        record.read(0, events.bytes(), 0, size);
        events.deliver(id);
    };
    final OnInts onInts = CountingListener::onInts;
}
