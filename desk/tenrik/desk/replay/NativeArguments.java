package tenrik.desk.replay;

import android.view.Surface;

import java.lang.reflect.Constructor;
import java.lang.reflect.Method;
import java.lang.reflect.Parameter;
import java.lang.reflect.RecordComponent;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.stream.Stream;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_BML_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_CAP_DRAWING_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;

/**
 * The arguments with which a native sends a certain record: those that Java must have given, as far
 * as the record tells.
 */
final class NativeArguments {
    /** What the numbers were before they took the width of their fields. */
    enum Form {
        /** As they are in the record. */
        PLAIN,
        /** Negative: most limits of the bridge are upper ones, so that any low bits may be sent. */
        NEGATIVE
    }

    /** Makes a value from a record. */
    private interface Maker {
        Object make(CommandRecord record, Form form) throws DeskException;
    }

    /** The records within the records of commands, by what Java has in their place. */
    private static final Map<Class<?>, String> PARTS = Map.of(
            BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO.class, "screen.",
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO.class, "cap.",
            BG_TS_DTVSVLIB_BML_DRAWING_INFO.class, "bml.",
            BG_TS_DTVSVLIB_CAP_DISPLAY_INFO.class, "cap_info.");

    /** The field of the commands that have one value. */
    private static final String ONE_VALUE = "value";

    /** The bridge takes no more bytes of a block of the broadcaster's memory. */
    private static final int NVRAM_BLOCK = 64;

    /** The longest delay that a session may be created with. */
    private static final int LONGEST_DELAY = 999;

    private final CommandRecord.Layout layout;
    private final Surface surface;
    private final List<Maker> makers;

    /**
     * The arguments of a native.
     *
     * @param surface the one that all planes are drawn on
     */
    NativeArguments(Method method, CommandRecord.Layout layout, Surface surface) {
        this.layout = layout;
        this.surface = surface;
        makers = Stream.of(method.getParameters()).map(this::parameter).toList();
    }

    /**
     * The arguments that send a record.
     *
     * @throws DeskException when Java has no value for one of its fields; the message names it
     */
    Object[] make(byte[] bytes, int length, Form form) throws DeskException {
        return make(makers, new CommandRecord(layout, bytes, length), form);
    }

    private static Object[] make(List<Maker> makers, CommandRecord record, Form form)
            throws DeskException {
        Object[] values = new Object[makers.size()];
        for (int index = 0; index < values.length; index++) {
            values[index] = makers.get(index).make(record, form);
        }
        return values;
    }

    private Maker parameter(Parameter parameter) {
        String name = parameter.getName();
        return maker(parameter.getType(), name, "",
                layout.has(name) ? name : ONE_VALUE);
    }

    /** @param part the names before those of the fields of the record that the value is in */
    private Maker maker(Class<?> type, String name, String part, String field) {
        if (type == Surface.class) {
            return (record, form) -> surface;
        }
        if (type == String.class) {
            return (record, form) -> record.text(field);
        }
        if (type == byte[].class) {
            return (record, form) -> record.bytes(field, NVRAM_BLOCK);
        }
        if (type.isEnum()) {
            return constant(type, field);
        }
        if (type.isRecord()) {
            return object(type, part + PARTS.getOrDefault(type, ""));
        }
        return switch (name) {
            case "numerator" -> (record, form) -> PlaySpeed.of(record).numerator();
            case "denominator" -> (record, form) -> PlaySpeed.of(record).denominator();
            // The later delays are measured against it: it is as large as it may have been.
            case "max_delay_time" -> (record, form) -> longestDelay(record.number(field));
            // Is not checked against the text, which has the length that is sent.
            case "title_size" -> (record, form) -> record.number(field);
            // The bridge refuses a negative one.
            case "position_x", "position_y" -> (record, form) -> record.number(field);
            default -> (record, form) -> number(record, field, form);
        };
    }

    private static int longestDelay(int sent) {
        return sent <= LONGEST_DELAY ? sent : sent - (1 << Short.SIZE);
    }

    private static int number(CommandRecord record, String field, Form form) {
        int value = record.number(field);
        int size = record.sizeOf(field);
        return form == Form.PLAIN || size == Integer.BYTES ? value : value | Integer.MIN_VALUE;
    }

    private static Maker constant(Class<?> type, String field) {
        Map<Integer, Object> constants = new HashMap<>();
        for (Object constant : type.getEnumConstants()) {
            constants.putIfAbsent(EnumConstants.number((Enum<?>) constant), constant);
        }
        return (record, form) -> {
            Object constant = constants.get(record.number(field));
            if (constant == null) {
                throw new DeskException(record.number(field) + " of " + field + " is no constant of "
                        + type.getSimpleName());
            }
            return constant;
        };
    }

    private Maker object(Class<?> type, String part) {
        RecordComponent[] components = type.getRecordComponents();
        Class<?>[] types = Arrays.stream(components).map(RecordComponent::getType)
                .toArray(Class<?>[]::new);
        List<Maker> parts = Arrays.stream(components)
                .map(component -> maker(component.getType(), component.getName(), part,
                        part + component.getName()))
                .toList();
        Constructor<?> constructor;
        try {
            constructor = type.getConstructor(types);
        } catch (NoSuchMethodException impossible) {
            throw new IllegalStateException(impossible);
        }
        return (record, form) -> {
            try {
                return constructor.newInstance(make(parts, record, form));
            } catch (ReflectiveOperationException failure) {
                throw new IllegalStateException(type + " cannot be made", failure);
            }
        };
    }
}
