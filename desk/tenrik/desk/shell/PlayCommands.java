package tenrik.desk.shell;

import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Mixin;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.DtvServerProxy;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_PAUSE_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_RESTART_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_SKIP_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_START_PLAY_REPLY;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_TERMINATE_PLAY_REPLY;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_ONOFF;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_PLAY_DIRECTION;
import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RECORDING_MEDIUM;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SKIP_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SPECIAL_PLAY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_START_PLAY;

/** Commands about playback. */
final class PlayCommands {
    private static final int STATUS_PERIOD = 1; // seconds

    private PlayCommands() {}

    /** A command that is about the playback of the current session. */
    abstract static class Playing implements Callable<Integer> {
        @Mixin
        WaitOption waiting = new WaitOption();

        private final RemoteControl remote;

        Playing(RemoteControl remote) {
            this.remote = remote;
        }

        RemoteControl remote() {
            return remote;
        }

        DtvServerProxy service() {
            return remote.service();
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            send();
            return 0;
        }

        abstract void send() throws DeskException, InterruptedException;
    }

    /** A command that has a direction. */
    abstract static class Moving extends Playing {
        @Option(names = "--back", description = "Backwards.")
        private boolean back;

        Moving(RemoteControl remote) {
            super(remote);
        }

        BG_TE_DTVSVLIB_PLAY_DIRECTION direction() {
            return back ? BG_TE_DTVSVLIB_PLAY_DIRECTION.BACKWARD
                    : BG_TE_DTVSVLIB_PLAY_DIRECTION.FORWARD;
        }
    }

    private static BG_TE_DTVSVLIB_ONOFF onOff(boolean on) {
        return on ? BG_TE_DTVSVLIB_ONOFF.ON : BG_TE_DTVSVLIB_ONOFF.OFF;
    }

    @Command(name = "play", description = "Plays a recording. Nothing is received meanwhile.")
    static final class Play extends Playing {
        @Parameters(paramLabel = ParameterLabels.PROGRAMME, description = "Its number.")
        private int programme;

        @Option(names = "--resume", description = "Continues at the position where it was ended.")
        private boolean resume;

        @Option(names = "--paused", description = "Starts paused.")
        private boolean paused;

        @Option(names = "--card", description = "A recording on the card.")
        private boolean card;

        Play(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            BG_TS_DTVSVLIB_START_PLAY start = new BG_TS_DTVSVLIB_START_PLAY(
                    card ? BG_TE_DTVSVLIB_RECORDING_MEDIUM.CARD
                            : BG_TE_DTVSVLIB_RECORDING_MEDIUM.INTERNAL, programme, onOff(resume),
                    STATUS_PERIOD, onOff(paused));
            remote().ask(waiting, paused ? "paused" : "playing", session ->
                            service().DtvSvLib_StartPlay(session.handle(), start),
                    BG_EV_DTVSV_START_PLAY_REPLY.class);
        }
    }

    @Command(name = "speed", description = "Changes the speed of playback.")
    static final class Speed extends Moving {
        @Parameters(paramLabel = "N[/M]", description = "Times the recorded speed: 2, 10, 30"
                + " or 120.")
        private String speed;

        Speed(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            if (!speed.matches("\\d{1,9}(/\\d{1,9})?")) {
                throw new DeskException(speed + " is no speed: a number, or two with / between");
            }
            String[] parts = speed.split("/");
            int numerator = Integer.parseInt(parts[0]);
            int denominator = parts.length == 1 ? 1 : Integer.parseInt(parts[1]);
            remote().ask(waiting, "speed " + speed, session ->
                            service().DtvSvLib_ChangePlaySpeed(session.handle(),
                                    new BG_TS_DTVSVLIB_SPECIAL_PLAY(direction(), numerator,
                                            denominator)),
                    BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY.class);
        }
    }

    @Command(name = "pause", description = "Pauses playback.")
    static final class Pause extends Playing {
        Pause(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            remote().ask(waiting, "paused", session -> service().DtvSvLib_PausePlay(
                    session.handle()), BG_EV_DTVSV_PAUSE_PLAY_REPLY.class);
        }
    }

    @Command(name = "resume", description = "Continues playback, at the recorded speed.")
    static final class Resume extends Playing {
        Resume(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            remote().ask(waiting, "playing", session -> service().DtvSvLib_ReStartPlay(
                    session.handle()), BG_EV_DTVSV_RESTART_PLAY_REPLY.class);
        }
    }

    @Command(name = "skip", description = "Skips a part of the recording.")
    static final class Skip extends Moving {
        @Parameters(paramLabel = "SECONDS", description = "How much.")
        private int seconds;

        Skip(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            remote().ask(waiting, "skipped", session -> service().DtvSvLib_SkipPlay(
                            session.handle(), new BG_TS_DTVSVLIB_SKIP_PLAY(direction(), seconds)),
                    BG_EV_DTVSV_SKIP_PLAY_REPLY.class);
        }
    }

    @Command(name = "slide", description = "Moves a paused playback by one picture.")
    static final class Slide extends Moving {
        Slide(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            remote().ask(waiting, "moved", session -> service().DtvSvLib_FrameSlidePlay(
                            session.handle(), EnumConstants.number(direction())),
                    BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY.class);
        }
    }

    @Command(name = "move", description = "Moves the position of a paused playback.")
    static final class Move extends Moving {
        Move(RemoteControl remote) {
            super(remote);
        }

        @Override
        void send() throws DeskException, InterruptedException {
            remote().ask(waiting, "moved", session -> service().DtvSvLib_MovePausePosition(
                            session.handle(), EnumConstants.number(direction())),
                    BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY.class);
        }
    }

    @Command(name = "end", description = "Ends playback.")
    static final class End implements Callable<Integer> {
        private final RemoteControl remote;

        @Mixin
        private SyncOption waiting;

        End(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException, InterruptedException {
            remote.ask(waiting, "ended", session -> remote.service().DtvSvLib_TerminatePlay(
                            session.handle()), BG_EV_DTVSV_TERMINATE_PLAY_REPLY.class,
                    session -> remote.service().DtvSvLib_TerminatePlay_Sync(session.handle()));
            return 0;
        }
    }
}
