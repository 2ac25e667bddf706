package tenrik.service.dtvserver.type;

/**
 * What the viewer entered when a data-broadcast document asked for a user and a password.
 *
 * @param select_type what was chosen
 * @param pass the password, at most 260 bytes of modified UTF-8
 * @param user the user, at most 132 bytes of modified UTF-8
 * @param task_id identifies the request; the reply returns it
 */
public record BG_TS_DTVSVLIB_AUTH_REPLY(
        BG_TE_DTVSVLIB_AUTH_SELECT_TYPE select_type, String pass, String user, int task_id) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param select_type what was chosen; a number of {@link BG_TE_DTVSVLIB_AUTH_SELECT_TYPE}
     * @param pass the password, at most 260 bytes of modified UTF-8
     * @param user the user, at most 132 bytes of modified UTF-8
     * @param task_id identifies the request; the reply returns it
     */
    public BG_TS_DTVSVLIB_AUTH_REPLY(int select_type, String pass, String user, int task_id) {
        this(BG_TE_DTVSVLIB_AUTH_SELECT_TYPE.of(select_type), pass, user, task_id);
    }
}
