package harness;

import java.lang.reflect.InvocationHandler;
import java.lang.reflect.Method;
import java.lang.reflect.Proxy;
import java.util.ArrayList;
import java.util.List;
import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;

/** Takes the place of the application: keeps every callback with its event and its thread. */
public final class EventRecorder implements InvocationHandler {
    private final List<String> callbacks = new ArrayList<>();
    private final List<String> threads = new ArrayList<>();
    private Throwable next;

    private EventRecorder() {}

    /** Makes a new recorder the listener of BGCallBack. */
    public static EventRecorder install() {
        EventRecorder recorder = new EventRecorder();
        BGCallBack.setListener(
                (DtvEventListener)
                        Proxy.newProxyInstance(
                                DtvEventListener.class.getClassLoader(),
                                new Class<?>[] {DtvEventListener.class},
                                recorder));
        return recorder;
    }

    public static void uninstall() {
        BGCallBack.setListener(null);
    }

    @Override
    public Object invoke(Object proxy, Method method, Object[] arguments) throws Throwable {
        if (method.getDeclaringClass() == Object.class) {
            return method.invoke(this, arguments);
        }
        Throwable thrown;
        synchronized (this) {
            StringBuilder line = new StringBuilder(method.getName());
            for (Object argument : arguments == null ? new Object[0] : arguments) {
                line.append(' ').append(Tree.of(argument));
            }
            callbacks.add(line.toString());
            threads.add(Thread.currentThread().getName());
            thrown = next;
            next = null;
            notifyAll();
        }
        if (thrown != null) {
            throw thrown;
        }
        return null;
    }

    /** The next callback is kept and then throws {@code exception}. */
    public synchronized void throwNext(Throwable exception) {
        next = exception;
    }

    /** Waits for {@code count} callbacks to be there; false when the time has passed before. */
    public synchronized boolean await(int count, long milliseconds) throws InterruptedException {
        long end = System.nanoTime() + milliseconds * 1_000_000;
        while (callbacks.size() < count) {
            long left = (end - System.nanoTime()) / 1_000_000;
            if (left <= 0) {
                return false;
            }
            wait(left);
        }
        return true;
    }

    /** Name of the callback and its event, then the name of its thread, for each since the last call. */
    public synchronized String[] take() {
        String[] taken = new String[callbacks.size() * 2];
        for (int i = 0; i < callbacks.size(); i++) {
            taken[2 * i] = callbacks.get(i);
            taken[2 * i + 1] = threads.get(i);
        }
        callbacks.clear();
        threads.clear();
        return taken;
    }
}
