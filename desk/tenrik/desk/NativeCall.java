package tenrik.desk;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.lang.reflect.Parameter;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.function.Supplier;
import java.util.stream.Collectors;

import tenrik.service.dtvserver.DtvServerProxy;

/** A call of one of the bridge's natives, with its arguments made from text. */
final class NativeCall {
    private static final String PREFIX = "DtvSvLib_";

    private final Method method;
    private final Object[] arguments;

    private NativeCall(Method method, Object[] arguments) {
        this.method = method;
        this.arguments = arguments;
    }

    /**
     * Makes a call.
     *
     * @param name of the native, with or without DtvSvLib_, in capitals or not
     * @param texts its arguments; see {@link NativeArgument}
     * @param session the handle that a dot stands for; null when there is none
     * @param surfaces those that arguments may name
     * @throws DeskException when there is no such native, or when the arguments do not suit it; the
     *     message shows what does
     */
    static NativeCall of(
            String name, List<String> texts, Supplier<Integer> session,
            NativeArgument.Surfaces surfaces) throws DeskException {
        Method method = find(name);
        Parameter[] parameters = method.getParameters();
        if (texts.size() != parameters.length) {
            throw new DeskException(texts.size() + (texts.size() == 1 ? " argument" : " arguments")
                    + " given, of " + parameters.length + ": " + signature(method));
        }
        NativeArgument argument = new NativeArgument(session, surfaces);
        Object[] arguments = new Object[parameters.length];
        for (int index = 0; index < parameters.length; index++) {
            try {
                arguments[index] = argument.of(parameters[index].getType(), texts.get(index));
            } catch (DeskException unsuitable) {
                throw new DeskException(parameters[index].getName() + ": "
                        + unsuitable.getMessage() + ": " + signature(method));
            }
        }
        return new NativeCall(method, arguments);
    }

    /** The native's name, without DtvSvLib_. */
    String name() {
        return shortName(method);
    }

    /**
     * Calls it.
     *
     * @return what it returned, which need not be of the class that it declares
     */
    Object on(DtvServerProxy service) throws DeskException {
        try {
            return method.invoke(service, arguments);
        } catch (InvocationTargetException thrown) {
            throw new DeskException(name() + " threw " + thrown.getCause());
        } catch (IllegalAccessException impossible) {
            throw new IllegalStateException(impossible);
        }
    }

    /** Every native, by name. */
    static List<Method> natives() {
        return Arrays.stream(DtvServerProxy.class.getDeclaredMethods())
                .filter(method -> Modifier.isNative(method.getModifiers()))
                .sorted(Comparator.comparing(Method::getName)).toList();
    }

    /** The name of a native, without DtvSvLib_. */
    static String shortName(Method method) {
        return method.getName().substring(PREFIX.length());
    }

    /** A native with the types and names of its parameters. */
    static String signature(Method method) {
        return shortName(method) + "(" + Arrays.stream(method.getParameters())
                .map(parameter -> NativeArgument.typeName(parameter.getType()) + " "
                        + parameter.getName())
                .collect(Collectors.joining(", ")) + ")";
    }

    /** What an argument may look like, for completion; empty when there is no such argument. */
    static String sample(String name, int index) {
        try {
            Parameter[] parameters = find(name).getParameters();
            return index >= parameters.length ? ""
                    : parameters[index].getName().equals("handle") ? NativeArgument.SESSION
                    : NativeArgument.sample(parameters[index].getType());
        } catch (DeskException unknown) {
            return "";
        }
    }

    private static Method find(String name) throws DeskException {
        return natives().stream()
                .filter(method -> method.getName().equalsIgnoreCase(name)
                        || shortName(method).equalsIgnoreCase(name))
                .findFirst().orElseThrow(() -> new DeskException(
                        name + ": no such native. \"send --list\" shows them."));
    }
}
