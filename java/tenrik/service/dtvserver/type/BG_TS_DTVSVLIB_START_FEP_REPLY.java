package tenrik.service.dtvserver.type;

/**
 * The text that the viewer entered. The text's size is sent as it is given here.
 *
 * @param end_type how the input ended
 * @param data_size the text's size in bytes
 * @param data the text, at most 1924 bytes of modified UTF-8
 */
public record BG_TS_DTVSVLIB_START_FEP_REPLY(
        BG_TE_DTVSVLIB_FEP_END_TYPE end_type, int data_size, String data) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param end_type how the input ended; a number of {@link BG_TE_DTVSVLIB_FEP_END_TYPE}
     * @param data_size the text's size in bytes
     * @param data the text, at most 1924 bytes of modified UTF-8
     */
    public BG_TS_DTVSVLIB_START_FEP_REPLY(int end_type, int data_size, String data) {
        this(BG_TE_DTVSVLIB_FEP_END_TYPE.of(end_type), data_size, data);
    }
}
