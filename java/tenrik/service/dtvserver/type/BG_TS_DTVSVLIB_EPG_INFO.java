package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * The programmes of a service: the one that runs, the next, and those after it.
 *
 * @param svc_id the service
 * @param cur_prg_info the programme that runs
 * @param next_prg_info the next
 * @param after_prg_infoCnt how many follow, at most 8
 * @param after_prg_info those that follow
 */
public record BG_TS_DTVSVLIB_EPG_INFO(
        int svc_id, BG_TS_DTVSVLIB_PRG_INFO cur_prg_info, BG_TS_DTVSVLIB_PRG_INFO next_prg_info,
        int after_prg_infoCnt, BG_TS_DTVSVLIB_PRG_INFO[] after_prg_info) {
    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_EPG_INFO[svc_id=" + svc_id
                + ", cur_prg_info=" + cur_prg_info
                + ", next_prg_info=" + next_prg_info
                + ", after_prg_infoCnt=" + after_prg_infoCnt
                + ", after_prg_info=" + Arrays.toString(after_prg_info)
                + "]";
    }
}
