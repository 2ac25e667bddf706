package tenrik.desk.replay;

import android.view.Surface;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Proxy;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Simulator;
import tenrik.desk.send.NativeCall;
import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.DtvServerProxy;

/**
 * The Java side of a replay where nobody brings his own: it sends the recorded commands, each on a
 * thread of its own for a recorded one, and those of callbacks in the callbacks.
 */
public final class Player {
    /** More than the record of any command is long. */
    private static final int ROOM = 4096;

    private final DtvServerProxy service = new DtvServerProxy();
    private final Map<Integer, Native> natives = new HashMap<>();
    private final ThreadLocal<Buffers> buffers = ThreadLocal.withInitial(Buffers::new);

    private record Native(Method method, NativeArguments arguments) {}

    private static final class Buffers {
        private final byte[] record = new byte[ROOM];
        private final int[] about = new int[2];
    }

    /** A player that gets the events of the bridge from now on. The bridge must have been loaded. */
    public Player() {
        Surface surface = new Surface(Simulator.newSurface());
        Map<String, Method> methods = new HashMap<>();
        NativeCall.natives().forEach(
                method -> methods.put(NativeCall.shortName(method), method));
        String[] names = Replay.commandNames();
        int[] ids = Replay.commandIds();
        for (int index = 0; index < ids.length; index++) {
            Method method = methods.get(names[index]);
            natives.put(ids[index], new Native(method, new NativeArguments(method,
                    new CommandRecord.Layout(Replay.fieldsOf(ids[index])), surface)));
        }
        BGCallBack.setListener((DtvEventListener) Proxy.newProxyInstance(
                DtvEventListener.class.getClassLoader(), new Class<?>[] {DtvEventListener.class},
                (proxy, method, arguments) -> callBack(proxy, method, arguments)));
    }

    /**
     * Sends the commands of the replay that was started last, and returns when all were sent or the
     * replay has ended.
     *
     * @throws InterruptedException when the thread is interrupted meanwhile
     */
    public void play() throws InterruptedException {
        List<Thread> threads = new ArrayList<>();
        for (int sender : Replay.senders()) {
            Thread thread = new Thread(() -> {
                Replay.enter(sender);
                sendCommands();
            }, Replay.nameOf(sender));
            threads.add(thread);
            thread.start();
        }
        for (Thread thread : threads) {
            thread.join();
        }
    }

    /** What a callback sent when it was recorded. */
    private Object callBack(Object proxy, Method method, Object[] arguments) {
        if (method.getDeclaringClass() == Object.class) {
            return switch (method.getName()) {
                case "equals" -> proxy == arguments[0];
                case "hashCode" -> System.identityHashCode(proxy);
                default -> "Player";
            };
        }
        sendCommands();
        return null;
    }

    /** Sends the commands of the calling thread up to the next message that is none. */
    private void sendCommands() {
        Buffers mine = buffers.get();
        for (int entry = Replay.next(mine.record, mine.about); entry >= 0;
                entry = Replay.next(mine.record, mine.about)) {
            try {
                send(entry, mine.about[0], mine.record, mine.about[1]);
            } catch (DeskException unsuitable) {
                Replay.giveUp(entry, unsuitable.getMessage());
            }
        }
    }

    private void send(int entry, int id, byte[] record, int length) throws DeskException {
        Native command = natives.get(id);
        if (command == null) {
            throw new DeskException("no native sends it");
        }
        for (NativeArguments.Form form : NativeArguments.Form.values()) {
            Object[] arguments = command.arguments().make(record, length, form);
            try {
                command.method().invoke(service, arguments);
            } catch (InvocationTargetException thrown) {
                throw new DeskException("the native threw " + thrown.getCause());
            } catch (IllegalAccessException impossible) {
                throw new IllegalStateException(impossible);
            }
            if (Replay.hasCome(entry)) {
                return;
            }
        }
        throw new DeskException("the bridge refuses its arguments");
    }
}
