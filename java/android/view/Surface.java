package android.view;

/**
 * A surface that the native library draws on. A device has its own class of this name; this one
 * replaces it at the desk.
 */
public class Surface {
    /** Address of the native surface, 0 for none. The native library reads it by this name. */
    private int mSurface;

    /** A surface without a native surface. */
    public Surface() {
        this(0);
    }

    /**
     * A surface for a native one, which must exist for as long as a command uses it.
     *
     * @param nativeSurface address of the native surface, which must fit into 32 bits
     */
    public Surface(int nativeSurface) {
        mSurface = nativeSurface;
    }

    /**
     * Which native surface is drawn on.
     *
     * @return its address, 0 for none
     */
    public int nativeSurface() {
        return mSurface;
    }
}
