package tenrik.desk.replay;

import java.io.ByteArrayInputStream;
import java.io.DataInputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.Map;

import tenrik.desk.core.DeskException;

/** The record of a command, read by the names of its fields. */
final class CommandRecord {
    private static final int BITS = 8;
    // Bytes of a character in modified UTF-8.
    private static final int FIRST_CONTINUATION = 0x80;
    private static final int LAST_CONTINUATION = 0xBF;
    private static final int CONTINUATION_MASK = 0xC0;
    private static final int FIRST_OF_TWO = 0xC0;
    private static final int FIRST_OF_THREE = 0xE0;
    private static final int LONGEST_CHARACTER = 3;

    /** Where a field is. */
    private record Field(int offset, int size, String kind) {}

    /** The fields of a command's record. */
    static final class Layout {
        private final Map<String, Field> fields = new LinkedHashMap<>();
        private int size;

        /** @param lines as {@link Replay#fieldsOf} gives them */
        Layout(String[] lines) {
            for (String line : lines) {
                String[] words = line.split(" ");
                Field field = new Field(Integer.parseInt(words[1]), Integer.parseInt(words[2]),
                        words[3]);
                fields.put(words[0], field);
                size = Math.max(size, field.offset() + field.size());
            }
        }

        boolean has(String name) {
            return fields.containsKey(name);
        }
    }

    private final Layout layout;
    private final byte[] bytes;

    /**
     * A record.
     *
     * @param bytes those of the record, and any others after them
     * @param length how many they are
     * @throws DeskException when it has not all fields
     */
    CommandRecord(Layout layout, byte[] bytes, int length) throws DeskException {
        if (length < layout.size || length > bytes.length) {
            throw new DeskException("its record has " + length + " bytes, not " + layout.size);
        }
        this.layout = layout;
        this.bytes = bytes;
    }

    /** The number of bytes of a field. */
    int sizeOf(String name) {
        return layout.fields.get(name).size();
    }

    /** A whole number. */
    int number(String name) {
        Field field = layout.fields.get(name);
        int value = 0;
        for (int index = field.size() - 1; index >= 0; index--) {
            value = value << BITS | Byte.toUnsignedInt(bytes[field.offset() + index]);
        }
        int unused = Integer.SIZE - field.size() * BITS;
        return field.kind().equals("signed") ? value << unused >> unused : value;
    }

    /** The first bytes of a field. */
    byte[] bytes(String name, int most) {
        Field field = layout.fields.get(name);
        return Arrays.copyOfRange(bytes, field.offset(),
                field.offset() + Math.min(most, field.size()));
    }

    /**
     * A text in modified UTF-8. The bridge may have cut it within a character at the end of the
     * field: it is completed, so that it is cut there again.
     */
    String text(String name) throws DeskException {
        Field field = layout.fields.get(name);
        int length = 0;
        while (length < field.size() && bytes[field.offset() + length] != 0) {
            length++;
        }
        byte[] completing = length == field.size() ? completing(field) : new byte[0];
        ByteBuffer text = ByteBuffer.allocate(Short.BYTES + length + completing.length)
                .putShort((short) (length + completing.length))
                .put(bytes, field.offset(), length)
                .put(completing);
        DataInputStream input = new DataInputStream(new ByteArrayInputStream(text.array()));
        try {
            return input.readUTF();
        } catch (IOException broken) {
            throw new DeskException(name + " is no modified UTF-8");
        }
    }

    /** The bytes that the last character of a full field lacks; any that make one of that length. */
    private byte[] completing(Field field) {
        for (int back = 1; back <= LONGEST_CHARACTER && back <= field.size(); back++) {
            int value = Byte.toUnsignedInt(bytes[field.offset() + field.size() - back]);
            if ((value & CONTINUATION_MASK) == FIRST_CONTINUATION) {
                continue;
            }
            boolean isLong = value >= FIRST_OF_THREE;
            int length = isLong ? LONGEST_CHARACTER : value >= FIRST_OF_TWO ? 2 : 1;
            byte[] rest = new byte[Math.max(length - back, 0)];
            Arrays.fill(rest, (byte) (isLong ? LAST_CONTINUATION : FIRST_CONTINUATION));
            return rest;
        }
        return new byte[0];
    }
}
