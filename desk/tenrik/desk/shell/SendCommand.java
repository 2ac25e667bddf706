package tenrik.desk.shell;

import java.util.HashSet;
import java.util.List;
import java.util.Set;
import java.util.concurrent.Callable;

import picocli.CommandLine.Command;
import picocli.CommandLine.Option;
import picocli.CommandLine.Parameters;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.Simulator;
import tenrik.desk.send.NativeCall;
import tenrik.desk.send.Surfaces;

/** Calls any native with any arguments. */
@Command(name = SendCommand.NAME, description = {"Calls a native with any arguments, and shows what"
        + " it returns. An event that answers it is shown when it comes.",
    "",
    "A number is decimal or begins with 0x; TYPE.NAME is the number of a constant, as in"
        + " CONTROL_TYPE.ON, and . is the current session. An object is null, or JSON with the"
        + " names of its components: what is left out is 0 or null, a constant is a name or a"
        + " number, bytes are a list of numbers or a string of hexadecimal digits, a surface is"
        + " \"new\", null, or the address of one that was made before. The TAB key"
        + " shows an example of an argument.",
    "",
    "Example: send SelectChannel . {\"physical_channel\": 63}"})
final class SendCommand implements Callable<Integer> {
    /** The name of the command, whose words are passed on as they were typed. */
    static final String NAME = "send";

    private final RemoteControl remote;
    private final Set<Integer> addresses = new HashSet<>();

    @Option(names = "--list", description = "Shows every native with its parameters.")
    private boolean list;

    @Parameters(index = "0", arity = "0..1", paramLabel = ParameterLabels.NATIVE,
            description = "With or without DtvSvLib_.")
    private String name;

    @Parameters(index = "1..*", paramLabel = ParameterLabels.ARGUMENT)
    private List<String> arguments = List.of();

    SendCommand(RemoteControl remote) {
        this.remote = remote;
    }

    @Override
    public Integer call() throws DeskException {
        if (list) {
            NativeCall.natives().forEach(method -> remote.output().paragraph(
                    NativeCall.signature(method)));
            return 0;
        }
        if (name == null) {
            throw new DeskException("which native? \"send --list\" shows them");
        }
        NativeCall call = NativeCall.parse(name, arguments == null ? List.of() : arguments,
                () -> remote.sessions().current() == null ? null
                        : remote.sessions().current().handle(),
                new MadeSurfaces());
        Object returned = call.invoke(remote.service());
        if (returned instanceof Record answer) {
            remote.sessions().update(answer);
        }
        remote.output().paragraph(call.name() + " returned " + returned);
        return 0;
    }

    private final class MadeSurfaces implements Surfaces {
        @Override
        public int make() {
            int address = Simulator.newSurface();
            addresses.add(address);
            remote.output().paragraph("made a surface at " + address);
            return address;
        }

        @Override
        public boolean has(int address) {
            return addresses.contains(address);
        }
    }
}
