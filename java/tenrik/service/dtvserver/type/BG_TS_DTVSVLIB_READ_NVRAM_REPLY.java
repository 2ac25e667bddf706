package tenrik.service.dtvserver.type;

import java.util.Arrays;

/**
 * A block of the broadcaster's memory, as it was read.
 *
 * @param bml_end_type how the request ended
 * @param ts_name name of the transport stream, of which the first 44 bytes of modified UTF-8 are
 *     sent
 * @param nvram_data the block, at most 64 bytes
 */
public record BG_TS_DTVSVLIB_READ_NVRAM_REPLY(
        BG_TE_DTVSVLIB_BML_END_TYPE bml_end_type, String ts_name, byte[] nvram_data) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param bml_end_type how the request ended; a number of {@link BG_TE_DTVSVLIB_BML_END_TYPE}
     * @param ts_name name of the transport stream, of which the first 44 bytes of modified UTF-8
     *     are sent
     * @param nvram_data the block, at most 64 bytes
     */
    public BG_TS_DTVSVLIB_READ_NVRAM_REPLY(int bml_end_type, String ts_name, byte[] nvram_data) {
        this(BG_TE_DTVSVLIB_BML_END_TYPE.of(bml_end_type), ts_name, nvram_data);
    }

    @Override
    public String toString() {
        return "BG_TS_DTVSVLIB_READ_NVRAM_REPLY[bml_end_type=" + bml_end_type
                + ", ts_name=" + ts_name
                + ", nvram_data=" + Arrays.toString(nvram_data)
                + "]";
    }
}
