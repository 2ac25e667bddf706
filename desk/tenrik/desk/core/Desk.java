package tenrik.desk.core;

import java.nio.file.Path;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.DtvServerProxy;

/** A simulated DTV service, the bridge that is connected to it, and the events that it sends. */
public final class Desk implements AutoCloseable {
    private final DtvServerProxy service = new DtvServerProxy();
    private final Simulator.Plan plan;
    private final EventQueue events;

    private Desk(Simulator.Plan plan, EventQueue events) {
        this.plan = plan;
        this.events = events;
    }

    /**
     * Starts the service and loads the bridge. Once in a process.
     *
     * @param options the files of the service
     * @param pace how the service's time passes
     * @return the running service; the caller closes it
     * @throws DeskException when something is missing or unreadable; the message names it
     */
    public static Desk open(DeskOptions options, Pace pace) throws DeskException {
        Path table = new ChannelTables(options.tables()).find(options.city());
        System.load(options.libraries().resolve("libdtv_desk.so").toString());
        Simulator.redirectStandardOutput(options.output());

        Simulator.Plan plan = Simulator.start(new Simulator.Settings(table, options.guide(),
                options.script(), pace, options.seed()));
        System.load(options.libraries().resolve("libDtv_jni.so").toString());
        EventQueue events = new EventQueue(pace);
        BGCallBack.setListener(events.listener());
        return new Desk(plan, events);
    }

    /**
     * The bridge.
     *
     * @return the same object each time
     */
    public DtvServerProxy service() {
        return service;
    }

    /**
     * The contents of the channel table.
     *
     * @return counts of stations and entries
     */
    public Simulator.Plan plan() {
        return plan;
    }

    /**
     * The events of the service.
     *
     * @return the same object each time
     */
    public EventQueue events() {
        return events;
    }

    /** Ends the service. No event is delivered afterwards. */
    @Override
    public void close() {
        Simulator.stop();
    }
}
