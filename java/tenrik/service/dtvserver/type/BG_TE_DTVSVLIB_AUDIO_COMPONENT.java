package tenrik.service.dtvserver.type;

/**
 * Which sound stream of the programme is heard. The broadcast service defines the numbers; the
 * names were chosen for the desk.
 */
public enum BG_TE_DTVSVLIB_AUDIO_COMPONENT {
    /** The first sound stream. */
    FIRST(0),
    /** The second sound stream. */
    SECOND(1);

    private final int value;

    BG_TE_DTVSVLIB_AUDIO_COMPONENT(int value) {
        this.value = value;
    }

    /**
     * The number of a constant.
     *
     * @param constant the constant
     * @return the number that the constant is sent as
     */
    public static int getAudioComponentValue(BG_TE_DTVSVLIB_AUDIO_COMPONENT constant) {
        return constant.value;
    }

    /**
     * The constant with a number.
     *
     * @param value the number
     * @return the constant, or null when there is none
     */
    public static BG_TE_DTVSVLIB_AUDIO_COMPONENT of(int value) {
        for (BG_TE_DTVSVLIB_AUDIO_COMPONENT constant : values()) {
            if (constant.value == value) {
                return constant;
            }
        }
        return null;
    }
}
