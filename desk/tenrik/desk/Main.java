package tenrik.desk;

import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;

import tenrik.service.dtvserver.BGCallBack;

/**
 * The receiver at the desk: puts the stations of a channel table on the air and uses the bridge as
 * the Java service layer does. Exit status 0 when every reply arrived and said that all is well, 1
 * when not, 2 when it could not start.
 */
public final class Main {
    private static final int FAILED = 1;
    private static final int NOT_STARTED = 2;

    private Main() {}

    /** Runs it; see {@link Arguments}. */
    public static void main(String[] arguments) throws InterruptedException {
        PrintStream out = new PrintStream(
                new FileOutputStream(FileDescriptor.out), true, StandardCharsets.UTF_8);
        PrintStream errors = new PrintStream(
                new FileOutputStream(FileDescriptor.err), true, StandardCharsets.UTF_8);
        int status = run(arguments, out, errors);
        if (status == NOT_STARTED) {
            System.exit(status);
        }
        Simulator.leave(status);
    }

    private static int run(String[] given, PrintStream out, PrintStream errors)
            throws InterruptedException {
        Arguments arguments;
        Path table;
        try {
            arguments = Arguments.parse(given);
            table = new ChannelTables(arguments.tables()).find(arguments.city());
            System.load(arguments.libraries().resolve("libdtv_desk.so").toString());
        } catch (DeskException failure) {
            errors.println("run: " + failure.getMessage());
            return NOT_STARTED;
        }
        Screen screen = new Screen(out, arguments.colour());
        try {
            Simulator.Plan plan = Simulator.start(table.toString(), arguments.guide());
            introduce(screen, arguments, plan);
            System.load(arguments.libraries().resolve("libDtv_jni.so").toString());
        } catch (DeskException failure) {
            errors.println("run: " + failure.getMessage());
            return NOT_STARTED;
        }
        Mailbox mailbox = new Mailbox();
        BGCallBack.setListener(mailbox.listener());
        Dialogue dialogue = new Dialogue(mailbox, screen);
        try {
            new Receiver(dialogue, screen, arguments.tour()).run();
            screen.done("All " + dialogue.replies() + " replies arrived, and all said OK.");
            return 0;
        } catch (DeskException failure) {
            errors.println("run: " + failure.getMessage());
            return FAILED;
        } finally {
            Simulator.stop();
        }
    }

    private static void introduce(Screen screen, Arguments arguments, Simulator.Plan plan) {
        screen.line("On the air: " + arguments.city() + ", " + plan.stations()
                + " UHF stations on channels 13 to 62.");
        screen.line("Left out of its table: " + entries(plan.vhfEntries()) + " of VHF"
                + (plan.beyondEntries() == 0 ? ""
                        : ", " + entries(plan.beyondEntries()) + " beyond channel 62")
                + (plan.unusableEntries() == 0 ? ""
                        : ", " + entries(plan.unusableEntries()) + " that name no channel")
                + ".");
    }

    private static String entries(int count) {
        return count + (count == 1 ? " entry" : " entries");
    }
}
