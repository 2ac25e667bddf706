package tenrik.desk.shell;

import java.util.List;
import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.RequestAnswerer;

/** Commands about the requests of data-broadcast documents. */
final class RequestCommands {
    private static final String ALL = "all";
    private static final String AUTO = "auto";

    private RequestCommands() {}

    @Command(name = "requests", description = "Shows the open requests of documents.")
    static final class Show implements Runnable {
        private final RemoteControl remote;

        Show(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public void run() {
            List<Record> pending = remote.requests().pending();
            for (Record request : pending) {
                remote.output().paragraph("[" + Events.handle(request) + "] "
                        + Events.kind(request) + ": " + RequestAnswerer.text(request));
            }
            if (pending.isEmpty()) {
                remote.output().screen().reported("there is no request");
            }
        }
    }

    @Command(name = "answer", description = {"Answers requests of documents.",
        "\"answer auto on\" answers all requests automatically, until \"answer auto off\"."})
    static final class Answer implements Callable<Integer> {
        private final RemoteControl remote;

        @Option(names = "--refuse", description = "Refuses the requests.")
        private boolean refuse;

        @Parameters(arity = "0..*", paramLabel = ParameterLabels.REQUEST,
                description = "Kinds of requests, as \"requests\" names them; all when left out.")
        private List<String> kinds = List.of();

        Answer(RemoteControl remote) {
            this.remote = remote;
        }

        @Override
        public Integer call() throws DeskException {
            List<String> wanted = kinds == null ? List.of() : kinds;
            if (!wanted.isEmpty() && wanted.get(0).equals(AUTO)) {
                automatically(wanted);
            } else if (wanted.isEmpty() || wanted.equals(List.of(ALL))) {
                answer(remote.requests().pending());
            } else {
                for (String kind : wanted) {
                    answer(remote.requests().pending().stream()
                            .filter(request -> Events.kind(request).equalsIgnoreCase(kind))
                            .toList());
                }
            }
            return 0;
        }

        private void automatically(List<String> wanted) throws DeskException {
            if (!wanted.equals(List.of(AUTO, "on")) && !wanted.equals(List.of(AUTO, "off"))) {
                throw new DeskException("\"answer auto\" takes on or off");
            }
            boolean on = wanted.get(1).equals("on");
            remote.requests().setAutomatic(on, !refuse);
            if (on && !remote.requests().pending().isEmpty()) {
                answer(remote.requests().pending());
            }
        }

        private void answer(List<Record> requests) throws DeskException {
            if (requests.isEmpty()) {
                throw new DeskException("there is no such request");
            }
            for (Record request : requests) {
                remote.requests().answer(request, !refuse);
            }
        }
    }
}
