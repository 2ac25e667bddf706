package tenrik.desk.send;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.lang.reflect.Parameter;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.function.Supplier;
import java.util.stream.Collectors;

import tenrik.desk.core.DeskException;
import tenrik.service.dtvserver.DtvServerProxy;

/** A call of one of the bridge's natives, with arguments that were parsed from text. */
public final class NativeCall {
    private static final String PREFIX = "DtvSvLib_";

    private final Method method;
    private final Object[] arguments;

    private NativeCall(Method method, Object[] arguments) {
        this.method = method;
        this.arguments = arguments;
    }

    /**
     * Parses a call. A number is decimal or begins with 0x; a dot denotes the current session, and
     * TYPE.NAME the number of a constant. An object is null, or JSON with the names of its
     * components.
     *
     * @param name the native, with or without DtvSvLib_, in capitals or not
     * @param texts its arguments
     * @param session gives the handle of the current session; null when there is none
     * @param surfaces those that arguments may use
     * @return a call that can be made any number of times
     * @throws DeskException when there is no such native, or when the arguments do not fit; the
     *     message shows those that do
     */
    public static NativeCall parse(
            String name, List<String> texts, Supplier<Integer> session,
            Surfaces surfaces) throws DeskException {
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
                arguments[index] = argument.parse(parameters[index].getType(), texts.get(index));
            } catch (DeskException unsuitable) {
                throw new DeskException(parameters[index].getName() + ": "
                        + unsuitable.getMessage() + ": " + signature(method));
            }
        }
        return new NativeCall(method, arguments);
    }

    /**
     * The native's name.
     *
     * @return the name without DtvSvLib_
     */
    public String name() {
        return shortName(method);
    }

    /**
     * Calls the native.
     *
     * @param service the bridge
     * @return what it returned, which need not be of the class that it declares
     * @throws DeskException when it throws; the message holds the exception
     */
    public Object invoke(DtvServerProxy service) throws DeskException {
        try {
            return method.invoke(service, arguments);
        } catch (InvocationTargetException thrown) {
            throw new DeskException(name() + " threw " + thrown.getCause());
        } catch (IllegalAccessException impossible) {
            throw new IllegalStateException(impossible);
        }
    }

    /**
     * All natives of the bridge.
     *
     * @return the methods, sorted by name
     */
    public static List<Method> natives() {
        return Arrays.stream(DtvServerProxy.class.getDeclaredMethods())
                .filter(method -> Modifier.isNative(method.getModifiers()))
                .sorted(Comparator.comparing(Method::getName)).toList();
    }

    /**
     * The name of a native.
     *
     * @param method the native
     * @return the name without DtvSvLib_
     */
    public static String shortName(Method method) {
        return method.getName().substring(PREFIX.length());
    }

    /**
     * A native with its parameters.
     *
     * @param method the native
     * @return its name, and types and names of the parameters
     */
    public static String signature(Method method) {
        return shortName(method) + "(" + Arrays.stream(method.getParameters())
                .map(parameter -> NativeArgument.typeName(parameter.getType()) + " "
                        + parameter.getName())
                .collect(Collectors.joining(", ")) + ")";
    }

    /**
     * An example of an argument, for completion.
     *
     * @param name the native, as for {@link #parse}
     * @param index the place of the argument, from 0
     * @return the example; empty when there is no such argument
     */
    public static String sample(String name, int index) {
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
