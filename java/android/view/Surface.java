package android.view;

/**
 * Something to draw on, as the native library sees it. A device brings a class of this name of its
 * own; this one stands in for it at the desk.
 */
public class Surface {
    /** Address of the native surface, 0 for none. The native library reads it by this name. */
    private int mSurface;

    /** A surface with nothing behind it. */
    public Surface() {
        this(0);
    }

    /**
     * A surface in front of a native one, which must outlive every command that is given it.
     *
     * @param nativeSurface address of the native surface, which lies where 32 bits reach
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
