package rows;

import java.io.DataInputStream;
import java.io.IOException;

/** The constants of a class file, as far as its names need them. */
final class ConstantPool {
    private final String[] texts;
    /** Of a class constant the index of its name; else 0. */
    private final int[] names;

    private ConstantPool(int count) {
        texts = new String[count];
        names = new int[count];
    }

    /**
     * Reads the constants, from their count on.
     *
     * @throws IOException when the stream ends too early or a constant is of an unknown kind
     */
    static ConstantPool read(DataInputStream in) throws IOException {
        int count = in.readUnsignedShort();
        ConstantPool pool = new ConstantPool(count);
        int index = 1;
        while (index < count) {
            index += pool.readConstant(in, index);
        }
        return pool;
    }

    /** Reads one constant. Returns how many indices it takes. */
    private int readConstant(DataInputStream in, int index) throws IOException {
        int tag = in.readUnsignedByte();
        switch (tag) {
            case 1: // Utf8
                texts[index] = in.readUTF();
                return 1;
            case 7: // Class
                names[index] = in.readUnsignedShort();
                return 1;
            case 8: // String
            case 16: // MethodType
            case 19: // Module
            case 20: // Package
                in.skipNBytes(2);
                return 1;
            case 15: // MethodHandle
                in.skipNBytes(3);
                return 1;
            case 3: // Integer
            case 4: // Float
            case 9: // Fieldref
            case 10: // Methodref
            case 11: // InterfaceMethodref
            case 12: // NameAndType
            case 17: // Dynamic
            case 18: // InvokeDynamic
                in.skipNBytes(4);
                return 1;
            case 5: // Long
            case 6: // Double
                in.skipNBytes(8);
                return 2; // the format gives the next index to no constant
            default:
                throw new IOException("constant " + index + " is of the unknown kind " + tag);
        }
    }

    /** The text with this index. */
    String text(int index) throws IOException {
        if (index >= texts.length || texts[index] == null) {
            throw new IOException("constant " + index + " is no text");
        }
        return texts[index];
    }

    /** The internal name of the class constant with this index. */
    String className(int index) throws IOException {
        if (index >= names.length || names[index] == 0) {
            throw new IOException("constant " + index + " is no class");
        }
        return text(names[index]);
    }
}
