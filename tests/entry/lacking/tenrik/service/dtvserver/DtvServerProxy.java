package tenrik.service.dtvserver;

import tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT;

/** A proxy older than the bridge: of the natives that are registered it has only the first two. */
public final class DtvServerProxy {
    public DtvServerProxy() {}

    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_Create(int start_type, int max_delay_time);

    public native BG_TE_DTVSVLIB_RESULT DtvSvLib_Release(int handle);
}
