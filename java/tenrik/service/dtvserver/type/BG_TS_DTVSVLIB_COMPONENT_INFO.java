package tenrik.service.dtvserver.type;

/**
 * Which components a programme carries.
 *
 * @param cap_exist_flg whether there are captions
 * @param bml_exist_flg whether there is data broadcasting
 * @param audio_es_num number of sound streams
 */
public record BG_TS_DTVSVLIB_COMPONENT_INFO(
        int cap_exist_flg, int bml_exist_flg, int audio_es_num) {}
