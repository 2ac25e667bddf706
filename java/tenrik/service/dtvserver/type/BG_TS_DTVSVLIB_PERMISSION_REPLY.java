package tenrik.service.dtvserver.type;

/**
 * What the viewer chose when a data-broadcast document asked for a permission.
 *
 * @param select_type what was chosen
 * @param task_id identifies the request; the reply returns it
 */
public record BG_TS_DTVSVLIB_PERMISSION_REPLY(
        BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE select_type, int task_id) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param select_type what was chosen; a number of {@link BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE}
     * @param task_id identifies the request; the reply returns it
     */
    public BG_TS_DTVSVLIB_PERMISSION_REPLY(int select_type, int task_id) {
        this(BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE.of(select_type), task_id);
    }
}
