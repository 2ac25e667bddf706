package tenrik.service.dtvserver.type;

/** A fatal error. The service tells no more than that it happened. */
public record BG_TS_DTVSVLIB_VIEW_FATAL_ERROR() {}
