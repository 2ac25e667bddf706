package tenrik.bench.peers;

import java.io.IOException;
import java.io.InputStream;
import java.lang.invoke.MethodHandles;
import java.lang.reflect.Constructor;

import tenrik.service.dtvserver.DtvServerProxy;

/** Makes the peers by their class names, as not every machine has what they need. */
public final class Peers {
    private Peers() {}

    /**
     * Makes a peer.
     *
     * @param name its class in this package
     * @return the peer
     * @throws ReflectiveOperationException when the class or something that it needs is missing
     */
    public static Object make(String name) throws ReflectiveOperationException {
        return Class.forName("tenrik.bench.peers." + name).getDeclaredConstructor().newInstance();
    }

    /**
     * Has the C library call a peer from now on.
     *
     * @param peer the peer
     */
    public static void listen(Object peer) {
        ((Peer) peer).listen();
    }

    /**
     * Makes the commands of a peer.
     *
     * @param peer the peer
     * @return the commands, in a class of their own
     */
    public static DtvServerProxy proxy(Object peer)
            throws IOException, ReflectiveOperationException {
        return (DtvServerProxy) make(PeerProxy.class, peer);
    }

    /**
     * Makes the loop of a peer.
     *
     * @param peer the peer
     * @return a CallLoop of a class of its own
     */
    public static Object callLoop(Object peer) throws IOException, ReflectiveOperationException {
        return make(CallLoop.class, peer);
    }

    private static Object make(Class<?> original, Object peer)
            throws IOException, ReflectiveOperationException {
        try (InputStream bytes =
                original.getResourceAsStream(original.getSimpleName() + ".class")) {
            Constructor<?> made =
                    MethodHandles.lookup()
                            .defineHiddenClass(bytes.readAllBytes(), true)
                            .lookupClass()
                            .getDeclaredConstructor(Peer.class);
            return made.newInstance(peer);
        }
    }
}
