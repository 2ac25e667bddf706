package tenrik.desk.shell;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.stream.Stream;

import org.jline.reader.Candidate;
import org.jline.reader.Completer;
import org.jline.reader.LineReader;
import org.jline.reader.ParsedLine;

import picocli.CommandLine;
import picocli.CommandLine.Model.ArgSpec;
import picocli.CommandLine.Model.OptionSpec;
import picocli.CommandLine.Model.PositionalParamSpec;

import tenrik.desk.send.NativeCall;

/**
 * Completes commands, options and values. The type or the label of a parameter determines its
 * values. (picocli's own completion offers the values of all parameters everywhere.)
 */
final class ShellCompleter implements Completer {
    private final CommandLine root;
    private final RemoteControl remote;

    ShellCompleter(CommandLine root, RemoteControl remote) {
        this.root = root;
        this.remote = remote;
    }

    @Override
    public void complete(LineReader reader, ParsedLine line, List<Candidate> candidates) {
        CommandLine command = root;
        ArgSpec option = null; // whose value is the next word
        List<String> values = new ArrayList<>();
        for (String word : line.words().subList(0, line.wordIndex())) {
            if (option != null) {
                option = null;
            } else if (isOption(word) && values.isEmpty()) {
                OptionSpec found = command.getCommandSpec().findOption(word);
                option = found != null && found.arity().min() > 0 ? found : null;
            } else if (values.isEmpty() && command.getSubcommands().containsKey(word)) {
                command = command.getSubcommands().get(word);
            } else {
                values.add(word);
            }
        }
        offer(command, option, values, line.word()).forEach(candidates::add);
    }

    private static boolean isOption(String word) {
        return word.startsWith("-");
    }

    private Stream<Candidate> offer(
            CommandLine command, ArgSpec option, List<String> values, String word) {
        if (option != null) {
            return valuesOf(option, values);
        }
        if (isOption(word)) {
            return command.getCommandSpec().options().stream().map(OptionSpec::longestName)
                    .map(Candidate::new);
        }
        Stream<Candidate> parameters = command.getCommandSpec().positionalParameters().stream()
                .filter(parameter -> parameter.index().contains(values.size()))
                .flatMap(parameter -> valuesOf(parameter, values));
        return values.isEmpty() ? Stream.concat(names(command), parameters) : parameters;
    }

    private static Stream<Candidate> names(CommandLine command) {
        return command.getSubcommands().keySet().stream().map(Candidate::new);
    }

    /** @param before the values of the parameters before this one */
    private Stream<Candidate> valuesOf(ArgSpec parameter, List<String> before) {
        if (parameter.type().isEnum()) {
            return Stream.of(parameter.type().getEnumConstants())
                    .map(constant -> new Candidate(constant.toString().toLowerCase(Locale.ROOT)));
        }
        String label = parameter.paramLabel();
        if (parameter instanceof PositionalParamSpec && label.contains("|")) {
            return Stream.of(label.split("\\|")).filter(word -> !word.equals("FILTER"))
                    .map(Candidate::new);
        }
        return switch (label) {
            case ParameterLabels.CHANNEL -> remote.sessions().stations().stream()
                    .map(station -> labelled(String.valueOf(station.channel()), station.name()));
            case ParameterLabels.COMMAND -> commandsBelow(before);
            case ParameterLabels.NATIVE -> NativeCall.natives().stream()
                    .map(NativeCall::shortName).map(Candidate::new);
            case ParameterLabels.ARGUMENT -> Stream
                    .of(NativeCall.sample(before.get(0), before.size() - 1))
                    .filter(sample -> !sample.isEmpty()).map(Candidate::new);
            case ParameterLabels.PROGRAMME -> remote.sessions().recordings().stream()
                    .map(recording -> labelled(
                            String.valueOf(recording.programme()), recording.title()));
            case ParameterLabels.REQUEST -> Stream.concat(Stream.of("all", "auto"),
                    remote.requests().pending().stream().map(Events::kind)).map(Candidate::new);
            case ParameterLabels.SESSION -> remote.sessions().all().stream()
                    .map(session -> new Candidate(String.valueOf(session.handle())));
            default -> Stream.empty();
        };
    }

    private Stream<Candidate> commandsBelow(List<String> words) {
        CommandLine command = root;
        for (String word : words) {
            command = command.getSubcommands().get(word);
            if (command == null) {
                return Stream.empty();
            }
        }
        return names(command);
    }

    private static Candidate labelled(String value, String name) {
        return new Candidate(value, value, null, name.isEmpty() ? null : name, null, null, true);
    }
}
