package field;

import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.IOException;
import java.lang.reflect.Proxy;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.FutureTask;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Pace;
import tenrik.desk.core.Simulator;
import tenrik.desk.send.NativeCall;
import tenrik.desk.send.Surfaces;
import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvEventListener;
import tenrik.service.dtvserver.DtvServerProxy;

/**
 * A service layer that does what a file says, whatever comes back. The time is stepped; among the
 * lines of the trace, on standard error, the clock of the service is written: "\001" before time
 * passes, "\001" and its milliseconds after. The steps, one on each line:
 *
 * <ul>
 *   <li>load: loads the bridge; load-old-vm: the same in a VM that refuses its environment
 *   <li>throw CALLBACK N: the N-th call of a callback throws; 0: every one
 *   <li>refuse-text PART: the VM makes no string of a text that contains PART
 *   <li>refuse-threads: the VM attaches no thread of the bridge's
 *   <li>wait MILLISECONDS: lets the service's time pass
 *   <li>thread NAME: the calls come from a thread of this name from now on
 *   <li>NATIVE ARGUMENT...: calls a native; the arguments, separated by "|", are as in the shell
 * </ul>
 */
public final class Session {
    private final Path libraries;
    private final FileOutputStream trace = new FileOutputStream(FileDescriptor.err);
    private final List<Integer> surfaces = new ArrayList<>();
    private String thread = "service";

    private Session(Path libraries) {
        this.libraries = libraries;
    }

    /**
     * Runs the steps and ends the process.
     *
     * @param arguments the folder of the libraries, the library with the faults, the channel table,
     *     the guide, the script or an empty text, the seed, and the file of the steps
     * @throws Exception when the steps are wrong
     */
    public static void main(String[] arguments) throws Exception {
        Path libraries = Path.of(arguments[0]);
        System.load(libraries.resolve("libdtv_desk.so").toString());
        System.load(arguments[1]);
        Simulator.redirectStandardOutput("/dev/null");
        Simulator.start(new Simulator.Settings(Path.of(arguments[2]), Path.of(arguments[3]),
                arguments[4].isEmpty() ? null : Path.of(arguments[4]), Pace.STEPPED,
                Integer.valueOf(arguments[5])));
        Session session = new Session(libraries);
        int status = 0;
        for (String line : Files.readAllLines(Path.of(arguments[6]))) {
            if (!session.onThread(line)) {
                status = 1;
            }
        }
        Simulator.stop();
        System.exit(status);
    }

    /** Does a step on the thread that makes the calls. What it throws is printed. */
    private boolean onThread(String line) throws Exception {
        FutureTask<Boolean> step = new FutureTask<>(() -> {
            try {
                step(line);
                return true;
            } catch (DeskException | IOException wrong) {
                System.err.println("field: " + line + ": " + wrong.getMessage());
                return false;
            } catch (LinkageError unusable) {
                unusable.printStackTrace();
                return true;
            }
        });
        Thread runner = new Thread(step, thread);
        runner.start();
        return step.get();
    }

    private void step(String line) throws DeskException, IOException {
        String[] words = line.split(" ", 3);
        switch (words[0]) {
            case "load" -> load();
            case "load-old-vm" -> {
                Faults.refuseEnvironment(true);
                try {
                    load();
                } finally {
                    Faults.refuseEnvironment(false);
                }
            }
            case "throw" -> BGCallBack.setListener(throwing(words[1], Integer.parseInt(words[2])));
            case "refuse-text" -> Faults.refuseText(line.substring(line.indexOf(' ') + 1));
            case "refuse-threads" -> Faults.refuseThreads();
            case "wait" -> pass(Long.parseLong(words[1]));
            case "thread" -> thread = words[1];
            default -> call(line);
        }
    }

    private void load() {
        System.load(libraries.resolve("libDtv_jni.so").toString());
    }

    private void call(String line) throws DeskException {
        int end = line.indexOf(' ');
        String[] arguments = end < 0 ? new String[0] : line.substring(end + 1).split("\\|");
        NativeCall.parse(end < 0 ? line : line.substring(0, end), List.of(arguments), () -> null,
                new Surfaces() {
                    @Override
                    public int make() {
                        surfaces.add(Simulator.newSurface());
                        return surfaces.get(surfaces.size() - 1);
                    }

                    @Override
                    public boolean has(int address) {
                        return surfaces.contains(address);
                    }
                }).invoke(new DtvServerProxy());
    }

    /** Lets the service do what is due in the next milliseconds. */
    private void pass(long milliseconds) throws IOException {
        long end = Simulator.now() + milliseconds;
        boolean more = true;
        while (more && Simulator.now() < end) {
            mark("");
            more = Simulator.advance();
            mark(String.valueOf(Simulator.now()));
        }
        if (!more) {
            // The service has nothing to do: only the time of those who wait passes.
            mark("");
            mark("+" + (end - Simulator.now()));
        }
    }

    private void mark(String text) throws IOException {
        trace.write(("\001" + text + "\n").getBytes(StandardCharsets.US_ASCII));
    }

    private static DtvEventListener throwing(String callback, int nth) {
        int[] calls = {0};
        return (DtvEventListener) Proxy.newProxyInstance(Session.class.getClassLoader(),
                new Class<?>[] {DtvEventListener.class}, (proxy, method, arguments) -> {
                    if (method.getName().equals(callback) && (nth == 0 || ++calls[0] == nth)) {
                        throw new IllegalStateException("the list of channels is empty");
                    }
                    return null;
                });
    }
}
