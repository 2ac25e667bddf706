package harness;

import java.io.File;
import java.net.MalformedURLException;
import java.net.URL;
import java.net.URLClassLoader;
import java.util.Arrays;
import java.util.HashSet;
import java.util.Set;

/**
 * The application's class path again, without some of its classes: what the bridge finds when the
 * Java side of the system is older than itself.
 */
public final class HidingClassLoader extends URLClassLoader {
    private final Set<String> hidden;

    /** @param hidden names of classes, with dots */
    public HidingClassLoader(String[] hidden) {
        super(classPath(), ClassLoader.getPlatformClassLoader());
        this.hidden = new HashSet<>(Arrays.asList(hidden));
    }

    @Override
    protected Class<?> loadClass(String name, boolean resolve) throws ClassNotFoundException {
        if (hidden.contains(name)) {
            throw new ClassNotFoundException(name);
        }
        return super.loadClass(name, resolve);
    }

    private static URL[] classPath() {
        String[] entries = System.getProperty("java.class.path").split(File.pathSeparator);
        URL[] urls = new URL[entries.length];
        for (int i = 0; i < entries.length; i++) {
            try {
                urls[i] = new File(entries[i]).toURI().toURL();
            } catch (MalformedURLException e) {
                throw new IllegalArgumentException(entries[i], e);
            }
        }
        return urls;
    }
}
