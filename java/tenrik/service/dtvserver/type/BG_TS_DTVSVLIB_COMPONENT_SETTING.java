package tenrik.service.dtvserver.type;

/**
 * What is shown and heard first when a channel is received, and where.
 *
 * @param cap_lang the language of the captions
 * @param dualmono which kind of dual mono it is
 * @param audio_component the sound stream
 * @param cap_start_type whether captions start, OFF or ON
 * @param bml_start_type whether data broadcasting starts, OFF or ON
 * @param video_drawing_info where the picture is drawn
 * @param cap_drawing_info where the captions are drawn
 * @param bml_drawing_info where data broadcasting is drawn
 */
public record BG_TS_DTVSVLIB_COMPONENT_SETTING(
        BG_TE_DTVSVLIB_CAP_LANG cap_lang, BG_TE_DTVSVLIB_DUALMONO dualmono,
        BG_TE_DTVSVLIB_AUDIO_COMPONENT audio_component, BG_TE_DTVSVLIB_CONTROL_TYPE cap_start_type,
        BG_TE_DTVSVLIB_CONTROL_TYPE bml_start_type,
        BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO video_drawing_info,
        BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap_drawing_info,
        BG_TS_DTVSVLIB_BML_DRAWING_INFO bml_drawing_info) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param cap_lang the language of the captions; a number of {@link BG_TE_DTVSVLIB_CAP_LANG}
     * @param dualmono which kind of dual mono it is; a number of {@link BG_TE_DTVSVLIB_DUALMONO}
     * @param audio_component the sound stream; a number of {@link BG_TE_DTVSVLIB_AUDIO_COMPONENT}
     * @param cap_start_type whether captions start, OFF or ON; a number of {@link
     *     BG_TE_DTVSVLIB_CONTROL_TYPE}
     * @param bml_start_type whether data broadcasting starts, OFF or ON; a number of {@link
     *     BG_TE_DTVSVLIB_CONTROL_TYPE}
     * @param video_drawing_info where the picture is drawn
     * @param cap_drawing_info where the captions are drawn
     * @param bml_drawing_info where data broadcasting is drawn
     */
    public BG_TS_DTVSVLIB_COMPONENT_SETTING(
            int cap_lang, int dualmono, int audio_component, int cap_start_type, int bml_start_type,
            BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO video_drawing_info,
            BG_TS_DTVSVLIB_CAP_DRAWING_INFO cap_drawing_info,
            BG_TS_DTVSVLIB_BML_DRAWING_INFO bml_drawing_info) {
        this(
                BG_TE_DTVSVLIB_CAP_LANG.of(cap_lang), BG_TE_DTVSVLIB_DUALMONO.of(dualmono),
                BG_TE_DTVSVLIB_AUDIO_COMPONENT.of(audio_component),
                BG_TE_DTVSVLIB_CONTROL_TYPE.of(cap_start_type),
                BG_TE_DTVSVLIB_CONTROL_TYPE.of(bml_start_type), video_drawing_info,
                cap_drawing_info, bml_drawing_info);
    }
}
