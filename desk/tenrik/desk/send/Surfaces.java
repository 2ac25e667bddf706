package tenrik.desk.send;

/** The native surfaces that arguments of natives may use. */
public interface Surfaces {
    /**
     * Makes a surface.
     *
     * @return its address
     */
    int make();

    /**
     * Whether a surface was made.
     *
     * @param address an address
     * @return true when {@link #make} has returned it
     */
    boolean has(int address);
}
