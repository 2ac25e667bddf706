package soak;

/** The kinds of answers, by which a session knows whether the event is that of its command. */
final class Kind {
    static final int SELECT = 1;
    static final int LNA = 2;
    static final int SET_LOG = 3;
    static final int LOG_STATUS = 4;
    static final int SCREEN = 5;
    static final int RELEASE_DISPLAY = 6;
    static final int DISPLAY_MODE = 7;
    static final int SHOW_SCREEN = 8;
    static final int DECODE_AUDIO = 9;
    static final int DUAL_MONO = 10;
    static final int PAUSE = 11;
    static final int SKIP = 12;
    static final int CAPTIONS = 13;
    static final int CAPTION_LANGUAGE = 14;
    static final int START_REC = 15;
    static final int TERMINATE_REC = 16;
    static final int DATA = 17;
    static final int CAP_DISPLAY = 18;
    static final int START_RECEIVING = 19;
    static final int END_RECEIVING = 20;
    static final int START_SCAN = 21;

    private Kind() {}
}
