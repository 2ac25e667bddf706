package tenrik.bench;

import java.io.IOException;
import java.io.InputStream;
import java.lang.invoke.MethodHandles;
import java.lang.reflect.Constructor;

import tenrik.service.dtvserver.DtvServerProxy;

/** Makes what each variant of a bridge has of its own on the Java side. */
final class Variants {
    private Variants() {}

    /**
     * Loads the bridge, which finds its classes through the loader of this class.
     *
     * @param file the library
     */
    static void load(String file) {
        System.load(file);
    }

    /**
     * Names the VM.
     *
     * @return its name, version and architecture
     */
    static String vm() {
        return System.getProperty("java.vm.name")
                + " " + Runtime.version()
                + ", " + System.getProperty("os.arch");
    }

    /**
     * Measures the heap.
     *
     * @return how many bytes of it are in use after a collection
     */
    static long usedHeap() {
        System.gc();
        Runtime runtime = Runtime.getRuntime();
        return runtime.totalMemory() - runtime.freeMemory();
    }

    /**
     * Makes the proxy of a hand-written bridge.
     *
     * @return an object of a new class, whose natives are not bound
     */
    static Object handProxy() throws IOException, ReflectiveOperationException {
        return define(HandProxy.class).getDeclaredConstructor().newInstance();
    }

    /**
     * Makes the proxy of the bridge.
     *
     * @return the proxy
     */
    static Object bridgeProxy() {
        return new DtvServerProxy();
    }

    /**
     * Makes the loops over the commands of a proxy.
     *
     * @param proxy whose commands are called
     * @param nativeSurface address of a surface
     * @return a CommandLoop of a class of its own
     */
    static Object commandLoop(Object proxy, int nativeSurface)
            throws IOException, ReflectiveOperationException {
        Constructor<?> loop =
                define(CommandLoop.class).getDeclaredConstructor(DtvServerProxy.class, int.class);
        return loop.newInstance(proxy, nativeSurface);
    }

    /** Defines a class once more from the bytes of an existing one. */
    private static Class<?> define(Class<?> original) throws IOException, IllegalAccessException {
        try (InputStream bytes =
                original.getResourceAsStream(original.getSimpleName() + ".class")) {
            return MethodHandles.lookup()
                    .defineHiddenClass(bytes.readAllBytes(), true)
                    .lookupClass();
        }
    }
}
