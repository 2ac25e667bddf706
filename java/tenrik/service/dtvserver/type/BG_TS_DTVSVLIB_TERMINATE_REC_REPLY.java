package tenrik.service.dtvserver.type;

/**
 * Where an ended recording is kept.
 *
 * @param program_no number of the programme
 * @param object_no number of the object in it
 */
public record BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(int program_no, int object_no) {}
