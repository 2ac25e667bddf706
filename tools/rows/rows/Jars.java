package rows;

import java.io.BufferedInputStream;
import java.io.EOFException;
import java.io.IOException;
import java.io.InputStream;
import java.io.UTFDataFormatException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.zip.ZipEntry;
import java.util.zip.ZipException;
import java.util.zip.ZipFile;

/** The classes of one or more jars. A class that several of them hold is the first one's. */
final class Jars implements AutoCloseable {
    private static final String SUFFIX = ".class";

    private final List<ZipFile> files = new ArrayList<>();
    private final Map<String, ZipFile> holders = new HashMap<>();
    private final Map<String, ClassFile> classes = new HashMap<>();

    /**
     * Adds a jar after those that are there.
     *
     * @throws InputException when it cannot be read or holds no class files
     */
    void add(Path jar) throws InputException {
        if (!Files.isRegularFile(jar)) {
            throw new InputException(jar + ": there is no such file");
        }
        ZipFile file;
        try {
            file = new ZipFile(jar.toFile());
        } catch (ZipException e) {
            throw new InputException(jar + ": this is not a jar: " + e.getMessage());
        } catch (IOException e) {
            throw new InputException(jar + ": cannot be read: " + e.getMessage());
        }
        files.add(file);
        List<String> names = file.stream().map(ZipEntry::getName).toList();
        int found = 0;
        for (String name : names) {
            if (name.endsWith(SUFFIX)) {
                String className = name.substring(0, name.length() - SUFFIX.length());
                holders.putIfAbsent(className, file);
                ++found;
            }
        }
        if (found == 0) {
            boolean dex = names.stream().anyMatch(name -> name.endsWith(".dex"));
            throw new InputException(jar + ": this jar holds no class files"
                    + (dex ? ", only what was converted to .dex; name the jar from before the"
                            + " conversion" : ""));
        }
    }

    /** Whether one of the jars holds this class; the name is internal. */
    boolean holds(String className) {
        return holders.containsKey(className);
    }

    /** The internal names of all classes. */
    Iterable<String> names() {
        return holders.keySet();
    }

    /** The jar and the entry that a class is read from, for messages. */
    String place(String className) {
        ZipFile holder = holders.get(className);
        return (holder == null ? "" : holder.getName()) + "(" + className + SUFFIX + ")";
    }

    /**
     * The class with this internal name; null when no jar holds it.
     *
     * @throws InputException when its file is damaged
     */
    ClassFile find(String className) throws InputException {
        ClassFile known = classes.get(className);
        if (known != null || !holds(className)) {
            return known;
        }
        ZipFile holder = holders.get(className);
        try (InputStream in = new BufferedInputStream(
                holder.getInputStream(holder.getEntry(className + SUFFIX)))) {
            ClassFile read = ClassFile.read(in);
            if (!read.name().equals(className)) {
                throw new IOException("it declares " + read.name());
            }
            classes.put(className, read);
            return read;
        } catch (EOFException e) {
            throw new InputException(place(className) + ": the class file is cut short");
        } catch (UTFDataFormatException e) {
            throw new InputException(place(className) + ": a text of the class file is damaged");
        } catch (IOException e) {
            throw new InputException(place(className) + ": " + e.getMessage());
        }
    }

    @Override
    public void close() throws InputException {
        for (ZipFile file : files) {
            try {
                file.close();
            } catch (IOException e) {
                throw new InputException(file.getName() + ": " + e.getMessage());
            }
        }
    }
}
