package tenrik.desk;

import java.nio.file.Path;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvServerProxy;

/** What is on the desk: a simulated DTV service, the bridge before it, and the events it sends. */
final class Desk implements AutoCloseable {
    private final DtvServerProxy service = new DtvServerProxy();
    private final Simulator.Plan plan;
    private final Mailbox mailbox;

    private Desk(Simulator.Plan plan, Mailbox mailbox) {
        this.plan = plan;
        this.mailbox = mailbox;
    }

    /**
     * Starts the service and loads the bridge. Once in a process.
     *
     * @param pace how the service's time passes
     * @throws DeskException when something is missing or unreadable; the message says what
     */
    static Desk open(DeskOptions options, Pace pace) throws DeskException {
        Path libraries = options.libraries.toAbsolutePath();
        Path table = new ChannelTables(options.tables).find(options.city);
        System.load(libraries.resolve("libdtv_desk.so").toString());
        Simulator.takeStandardOutput(options.output);

        Simulator.Plan plan = Simulator.start(new SimulatedService.Settings(libraries, table,
                options.guide, options.script, pace.speed(), options.seed));
        System.load(libraries.resolve("libDtv_jni.so").toString());
        Mailbox mailbox = new Mailbox(pace);
        BGCallBack.setListener(mailbox.listener());
        return new Desk(plan, mailbox);
    }

    DtvServerProxy service() {
        return service;
    }

    /** What the channel table holds. */
    Simulator.Plan plan() {
        return plan;
    }

    Mailbox mailbox() {
        return mailbox;
    }

    /** Ends the service. No event is delivered afterwards. */
    @Override
    public void close() {
        Simulator.stop();
    }
}
