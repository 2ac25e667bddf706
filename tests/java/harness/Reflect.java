package harness;

import java.lang.invoke.MethodType;
import java.lang.reflect.Constructor;
import java.lang.reflect.Method;
import java.lang.reflect.RecordComponent;
import java.util.Arrays;

/** Finds descriptors, so that a test need not write them. */
public final class Reflect {
    private Reflect() {}

    /** The descriptor of the only method of that name that {@code of} declares. */
    public static String methodDescriptor(Class<?> of, String name) {
        Method[] found =
                Arrays.stream(of.getDeclaredMethods())
                        .filter(m -> m.getName().equals(name))
                        .toArray(Method[]::new);
        if (found.length != 1) {
            throw new IllegalArgumentException(found.length + " methods " + of.getName() + "." + name);
        }
        return MethodType.methodType(found[0].getReturnType(), found[0].getParameterTypes())
                .toMethodDescriptorString();
    }

    /** The descriptor of a record's canonical constructor, or of a class's only one. */
    public static String constructorDescriptor(Class<?> of) {
        if (of.isRecord()) {
            Class<?>[] components =
                    Arrays.stream(of.getRecordComponents())
                            .map(RecordComponent::getType)
                            .toArray(Class<?>[]::new);
            return MethodType.methodType(void.class, components).toMethodDescriptorString();
        }
        Constructor<?>[] found = of.getDeclaredConstructors();
        if (found.length != 1) {
            throw new IllegalArgumentException(found.length + " constructors of " + of.getName());
        }
        return MethodType.methodType(void.class, found[0].getParameterTypes())
                .toMethodDescriptorString();
    }

    /** The descriptor of the type of a field that {@code of} declares. */
    public static String fieldDescriptor(Class<?> of, String name) throws NoSuchFieldException {
        return of.getDeclaredField(name).getType().descriptorString();
    }
}
