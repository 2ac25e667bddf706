package tenrik.desk.core;

import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.Arrays;
import java.util.Optional;
import java.util.stream.Collectors;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** Finds constants of the service layer's enumerations by name or number. */
public final class EnumConstants {
    private static final String PREFIX = "BG_TE_DTVSVLIB_";

    private EnumConstants() {}

    /**
     * The constant with a name, in capitals or not, or with a number.
     *
     * @param <E> the enumeration
     * @param type the enumeration
     * @param nameOrNumber the text that a person has typed
     * @return the constant
     * @throws DeskException when there is none; the message lists the constants
     */
    public static <E> E find(Class<E> type, String nameOrNumber) throws DeskException {
        for (E constant : type.getEnumConstants()) {
            if (((Enum<?>) constant).name().equalsIgnoreCase(nameOrNumber)
                    || nameOrNumber.equals(String.valueOf(number((Enum<?>) constant)))) {
                return constant;
            }
        }
        throw new DeskException(nameOrNumber + " is none of " + Arrays.stream(
                type.getEnumConstants())
                .map(constant -> constant + " (" + number((Enum<?>) constant) + ")")
                .collect(Collectors.joining(", ")));
    }

    /**
     * The number that a constant is sent as.
     *
     * @param constant a constant of the service layer
     * @return its number
     * @throws IllegalArgumentException when its enumeration gives it none
     */
    public static int number(Enum<?> constant) {
        try {
            for (Method method : constant.getDeclaringClass().getMethods()) {
                if (Modifier.isStatic(method.getModifiers())
                        && method.getReturnType() == int.class
                        && Arrays.equals(method.getParameterTypes(),
                                new Class<?>[] {constant.getDeclaringClass()})) {
                    return (int) method.invoke(null, constant);
                }
            }
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(constant + " has no number", failure);
        }
        throw new IllegalArgumentException(constant + " has no number");
    }

    /**
     * The number of a constant that is named with its type, for example {@code CONTROL_TYPE.ON}.
     *
     * @param text the text that a person has typed
     * @return the number; empty when the text names no enumeration
     * @throws DeskException when the enumeration has no such constant
     */
    public static Optional<Integer> numberOf(String text) throws DeskException {
        int dot = text.indexOf('.');
        if (dot < 0) {
            return Optional.empty();
        }
        String type = text.substring(0, dot).toUpperCase();
        String name = BG_TE_DTVSVLIB_RESULT.class.getPackageName() + "."
                + (type.startsWith(PREFIX) ? type : PREFIX + type);
        try {
            return Optional.of(number((Enum<?>) find(Class.forName(name),
                    text.substring(dot + 1))));
        } catch (ClassNotFoundException | NoClassDefFoundError unknown) {
            return Optional.empty();
        }
    }
}
