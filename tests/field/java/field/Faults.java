package field;

/** Faults of the VM, made by the preloaded library. */
final class Faults {
    private Faults() {}

    /**
     * Has the VM make no string of some texts from now on.
     *
     * @param part what such a text contains
     */
    static native void refuseText(String part);

    /**
     * Has the VM refuse its environment to native code, or give it again.
     *
     * @param refuse whether it is refused
     */
    static native void refuseEnvironment(boolean refuse);

    /** Has the VM attach no thread from now on whose native code gives it no name. */
    static native void refuseThreads();
}
