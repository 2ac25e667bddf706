package harness;

import java.lang.reflect.Array;
import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.lang.reflect.RecordComponent;
import java.util.StringJoiner;

/** Renders any object with all that it holds as one line, so that a test's expectation is a literal. */
public final class Tree {
    private Tree() {}

    /**
     * {@code BG_EV_X(3, 4294967295L, "text", bytes[1, -2], ints[7], [a, b], null, ENUM.CONSTANT)}:
     * records by their components in order, other classes by their instance fields in order.
     */
    public static String of(Object value) {
        if (value == null) {
            return "null";
        }
        if (value instanceof String text) {
            return quoted(text);
        }
        if (value instanceof Enum<?> constant) {
            return constant.getDeclaringClass().getSimpleName() + "." + constant.name();
        }
        if (value instanceof Long) {
            return value + "L";
        }
        if (value instanceof Character c) {
            return "'" + c + "'";
        }
        if (value instanceof Number || value instanceof Boolean) {
            return value.toString();
        }
        if (value instanceof Throwable) {
            return value.toString();
        }
        if (value.getClass().isArray()) {
            return array(value);
        }
        try {
            return value.getClass().isRecord() ? record(value) : fields(value);
        } catch (ReflectiveOperationException e) {
            throw new IllegalStateException("cannot render a " + value.getClass().getName(), e);
        }
    }

    private static String array(Object value) {
        Class<?> of = value.getClass().getComponentType();
        StringJoiner elements = new StringJoiner(", ", (of.isPrimitive() ? of + "s[" : "["), "]");
        for (int i = 0; i < Array.getLength(value); i++) {
            elements.add(of(Array.get(value, i)));
        }
        return elements.toString();
    }

    private static String record(Object value) throws ReflectiveOperationException {
        Class<?> of = value.getClass();
        StringJoiner components = new StringJoiner(", ", of.getSimpleName() + "(", ")");
        for (RecordComponent component : of.getRecordComponents()) {
            // The field and not the accessor: an accessor may copy or convert.
            components.add(of(read(of.getDeclaredField(component.getName()), value)));
        }
        return components.toString();
    }

    private static String fields(Object value) throws ReflectiveOperationException {
        Class<?> of = value.getClass();
        if (of.getName().startsWith("java.")) {
            return of.getSimpleName();
        }
        StringJoiner fields = new StringJoiner(", ", of.getSimpleName() + "(", ")");
        for (Field field : of.getDeclaredFields()) {
            if (!Modifier.isStatic(field.getModifiers())) {
                fields.add(of(read(field, value)));
            }
        }
        return fields.toString();
    }

    private static Object read(Field field, Object value) throws ReflectiveOperationException {
        field.setAccessible(true);
        return field.get(value);
    }

    private static String quoted(String text) {
        StringBuilder line = new StringBuilder("\"");
        for (char c : text.toCharArray()) {
            if (c == '"' || c == '\\') {
                line.append('\\').append(c);
            } else if (c >= ' ' && c <= '~') {
                line.append(c);
            } else {
                line.append(String.format("\\u%04x", (int) c));
            }
        }
        return line.append('"').toString();
    }
}
