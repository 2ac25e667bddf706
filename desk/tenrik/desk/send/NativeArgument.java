package tenrik.desk.send;

import android.view.Surface;

import com.google.gson.JsonArray;
import com.google.gson.JsonElement;
import com.google.gson.JsonNull;
import com.google.gson.JsonObject;
import com.google.gson.JsonParseException;
import com.google.gson.JsonParser;

import java.lang.reflect.RecordComponent;
import java.util.Arrays;
import java.util.HexFormat;
import java.util.Set;
import java.util.TreeSet;
import java.util.function.Supplier;
import java.util.stream.Collectors;

import tenrik.desk.core.DeskException;
import tenrik.desk.core.EnumConstants;

/**
 * Parses arguments of natives. A number is decimal or begins with 0x; a dot is the
 * current session, and TYPE.NAME the number of a constant. An object is JSON with the names of
 * its components: those that are left out are 0 or null, a constant is named or numbered, bytes are
 * a list of numbers or a string of hexadecimal digits, a surface is "new", null, or the address of
 * one that was made before.
 */
final class NativeArgument {
    /** Denotes the handle of the current session. */
    static final String SESSION = ".";

    private static final String NEW_SURFACE = "new";
    private static final long UNSIGNED_INT = 0xFFFF_FFFFL;
    private static final int UNSIGNED_BYTE = 0xFF;
    private static final int HEXADECIMAL = 16;

    private final Supplier<Integer> session;
    private final Surfaces surfaces;

    /** @param session the handle of the current session; null when there is none */
    NativeArgument(Supplier<Integer> session, Surfaces surfaces) {
        this.session = session;
        this.surfaces = surfaces;
    }

    /**
     * Parses an argument.
     *
     * @throws DeskException when the text is no value of this type
     */
    Object parse(Class<?> type, String text) throws DeskException {
        if (text.equals(SESSION) && type == int.class) {
            Integer handle = session.get();
            if (handle == null) {
                throw new DeskException("there is no current session for \".\"");
            }
            return handle;
        }
        if (type == int.class) {
            return number(text);
        }
        if (type.isEnum() && !text.startsWith("\"") && !text.equals("null")) {
            return EnumConstants.find(type, text);
        }
        try {
            return parse(type, JsonParser.parseString(text));
        } catch (JsonParseException broken) {
            throw new DeskException(text + " is no " + typeName(type) + " in JSON");
        }
    }

    private Object parse(Class<?> type, JsonElement value) throws DeskException {
        if (type == int.class && value.isJsonPrimitive()) {
            return number(value.getAsString());
        }
        if (value.isJsonNull() && !type.isPrimitive()) {
            return null;
        }
        if (type.isRecord() && value.isJsonObject()) {
            return object(type, value.getAsJsonObject());
        }
        if (type == byte[].class) {
            return value.isJsonArray() ? bytes(value.getAsJsonArray()) : bytes(value);
        }
        if (!value.isJsonPrimitive()) {
            throw new DeskException(value + " is no " + typeName(type));
        }
        String text = value.getAsString();
        if (type == String.class) {
            return text;
        }
        if (type.isEnum()) {
            return EnumConstants.find(type, text);
        }
        if (type == Surface.class) {
            return new Surface(text.equals(NEW_SURFACE) ? surfaces.make() : address(text));
        }
        throw new DeskException(text + " is no " + typeName(type));
    }

    /** Accepts only 0 and addresses of surfaces: the bridge uses any other address unchecked. */
    private int address(String text) throws DeskException {
        int address = number(text);
        if (address != 0 && !surfaces.has(address)) {
            throw new DeskException("no surface that \"new\" made is at " + text);
        }
        return address;
    }

    private Object object(Class<?> type, JsonObject values) throws DeskException {
        RecordComponent[] components = type.getRecordComponents();
        Set<String> unknown = new TreeSet<>(values.keySet());
        Object[] arguments = new Object[components.length];
        for (int index = 0; index < components.length; index++) {
            String name = components[index].getName();
            Class<?> of = components[index].getType();
            unknown.remove(name);
            JsonElement value = values.has(name) ? values.get(name) : JsonNull.INSTANCE;
            if (!values.has(name) && of == int.class) {
                arguments[index] = 0;
                continue;
            }
            try {
                arguments[index] = parse(of, value);
            } catch (DeskException unsuitable) {
                throw new DeskException(name + ": " + unsuitable.getMessage());
            }
        }
        if (!unknown.isEmpty()) {
            throw new DeskException("no component " + String.join(", ", unknown) + " in "
                    + sample(type));
        }
        try {
            return type.getConstructor(Arrays.stream(components).map(RecordComponent::getType)
                    .toArray(Class<?>[]::new)).newInstance(arguments);
        } catch (ReflectiveOperationException failure) {
            throw new IllegalArgumentException(type + " cannot be made", failure);
        }
    }

    private static byte[] bytes(JsonArray values) throws DeskException {
        byte[] bytes = new byte[values.size()];
        for (int index = 0; index < bytes.length; index++) {
            int value = values.get(index).isJsonPrimitive()
                    ? number(values.get(index).getAsString()) : UNSIGNED_BYTE + 1;
            if (value < Byte.MIN_VALUE || value > UNSIGNED_BYTE) {
                throw new DeskException(values.get(index) + " is no byte");
            }
            bytes[index] = (byte) value;
        }
        return bytes;
    }

    private static byte[] bytes(JsonElement digits) throws DeskException {
        try {
            return HexFormat.of().parseHex(digits.isJsonPrimitive()
                    ? digits.getAsString().replace(" ", "") : "?");
        } catch (IllegalArgumentException broken) {
            throw new DeskException(digits + " is neither a list of bytes nor hexadecimal digits");
        }
    }

    /** Numbers of 32 bits, with a sign or, written with 0x, without. */
    private static int number(String text) throws DeskException {
        var constant = EnumConstants.numberOf(text);
        if (constant.isPresent()) {
            return constant.get();
        }
        try {
            boolean hexadecimal = text.startsWith("0x") || text.startsWith("0X");
            long value = hexadecimal ? Long.parseLong(text.substring(2), HEXADECIMAL)
                    : Long.parseLong(text);
            if (value >= Integer.MIN_VALUE
                    && value <= (hexadecimal ? UNSIGNED_INT : Integer.MAX_VALUE)) {
                return (int) value;
            }
        } catch (NumberFormatException notOne) {
            // Reported below.
        }
        throw new DeskException(text + " is no int");
    }

    /** The name of a type without the prefix that all types have. */
    static String typeName(Class<?> type) {
        return type.getSimpleName().replaceFirst("^BG_T[ES]_DTVSVLIB_", "");
    }

    /** An example of a value, as it is typed. */
    static String sample(Class<?> type) {
        if (type == int.class) {
            return "0";
        }
        if (type == Surface.class) {
            return "\"" + NEW_SURFACE + "\"";
        }
        if (type.isEnum()) {
            return "\"" + type.getEnumConstants()[0] + "\"";
        }
        if (type.isRecord()) {
            return Arrays.stream(type.getRecordComponents())
                    .map(component -> "\"" + component.getName() + "\": "
                            + sample(component.getType()))
                    .collect(Collectors.joining(", ", "{", "}"));
        }
        return "\"\"";
    }
}
