package rows;

import java.io.DataInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.util.ArrayList;
import java.util.List;

/**
 * What a class file declares: its name, its superclass, its fields and methods. The file is only
 * read; no class is loaded, so it may be one that this VM cannot run.
 *
 * @param name the internal name, parts separated by slashes
 * @param superName the internal name of the superclass; null for java/lang/Object
 * @param fields its own fields, without inherited ones
 * @param methods its own methods and constructors, without inherited ones
 */
record ClassFile(String name, String superName, List<Member> fields, List<Member> methods) {
    private static final int MAGIC = 0xCAFEBABE;

    /**
     * A field or a method.
     *
     * @param access its access flags
     * @param name its name; a constructor's is {@code <init>}
     * @param descriptor its type, or its parameters and result
     */
    record Member(int access, String name, String descriptor) {
        private static final int STATIC = 0x0008;
        private static final int NATIVE = 0x0100;

        boolean isStatic() {
            return (access & STATIC) != 0;
        }

        boolean isNative() {
            return (access & NATIVE) != 0;
        }
    }

    /**
     * Reads a class file.
     *
     * @param stream the file's bytes; the caller closes it
     * @throws IOException when the bytes are not a whole class file
     */
    static ClassFile read(InputStream stream) throws IOException {
        DataInputStream in = new DataInputStream(stream);
        int magic = in.readInt();
        if (magic != MAGIC) {
            throw new IOException(
                    String.format("no class file: it begins with 0x%08X", magic));
        }
        in.readUnsignedShort(); // minor version
        in.readUnsignedShort(); // major version: what is read here is the same in all
        ConstantPool pool = ConstantPool.read(in);
        in.readUnsignedShort(); // access flags
        String name = pool.className(in.readUnsignedShort());
        int superIndex = in.readUnsignedShort();
        String superName = superIndex == 0 ? null : pool.className(superIndex);
        skip(in, 2L * in.readUnsignedShort()); // interfaces
        List<Member> fields = readMembers(in, pool);
        List<Member> methods = readMembers(in, pool);
        return new ClassFile(name, superName, fields, methods);
    }

    private static List<Member> readMembers(DataInputStream in, ConstantPool pool)
            throws IOException {
        int count = in.readUnsignedShort();
        List<Member> members = new ArrayList<>(count);
        for (int i = 0; i < count; ++i) {
            int access = in.readUnsignedShort();
            String name = pool.text(in.readUnsignedShort());
            String descriptor = pool.text(in.readUnsignedShort());
            members.add(new Member(access, name, descriptor));
            int attributes = in.readUnsignedShort();
            for (int j = 0; j < attributes; ++j) {
                in.readUnsignedShort(); // the attribute's name
                skip(in, in.readInt() & 0xFFFFFFFFL);
            }
        }
        return members;
    }

    private static void skip(DataInputStream in, long bytes) throws IOException {
        in.skipNBytes(bytes);
    }
}
