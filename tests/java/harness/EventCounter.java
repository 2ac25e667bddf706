package harness;

import java.lang.invoke.MethodHandle;
import java.lang.invoke.MethodHandles;
import java.lang.invoke.MethodType;
import java.lang.reflect.InvocationHandler;
import java.lang.reflect.Method;
import java.lang.reflect.Proxy;
import java.util.HashMap;
import java.util.Map;
import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;

/**
 * Takes the place of the application where events come by the million: keeps how many have come, and
 * of the last one its callback and its session. All events come on one thread.
 */
public final class EventCounter implements InvocationHandler {
    /** One event in this number is read whole: reading takes longer than the delivery. */
    private static final int READ_WHOLE = 16;

    private static int count;
    private static int lastCallback;
    private static int lastHandle;
    /** What the events hold, so that no compiler leaves out to read them. */
    private static int read;

    private static final Map<String, Integer> NUMBERS = new HashMap<>();
    private static final ClassValue<MethodHandle> HANDLES =
            new ClassValue<>() {
                @Override
                protected MethodHandle computeValue(Class<?> type) {
                    try {
                        return MethodHandles.lookup()
                                .findVirtual(type, "handle", MethodType.methodType(int.class))
                                .asType(MethodType.methodType(int.class, Object.class));
                    } catch (ReflectiveOperationException e) {
                        throw new IllegalStateException(e);
                    }
                }
            };

    private EventCounter() {}

    /**
     * Makes a counter the listener of BGCallBack.
     *
     * @param callbacks the callbacks' names: the number of each is its place
     */
    static void install(String[] callbacks) {
        for (int i = 0; i < callbacks.length; i++) {
            NUMBERS.put(callbacks[i], i);
        }
        BGCallBack.setListener(
                (DtvEventListener)
                        Proxy.newProxyInstance(
                                DtvEventListener.class.getClassLoader(),
                                new Class<?>[] {DtvEventListener.class},
                                new EventCounter()));
    }

    @Override
    public Object invoke(Object proxy, Method method, Object[] arguments) throws Throwable {
        if (method.getDeclaringClass() == Object.class) {
            return method.invoke(this, arguments);
        }
        count++;
        lastCallback = NUMBERS.getOrDefault(method.getName(), -1);
        Object event = arguments[0];
        lastHandle = (int) HANDLES.get(event.getClass()).invokeExact(event);
        if (count % READ_WHOLE == 0) {
            read += event.hashCode();
        }
        return null;
    }

    /** What the events that were read whole hold, in one number. */
    static int read() {
        return read;
    }
}
