package tenrik.service.dtvserver.type;

/** A fatal error. The service gives no details of it. */
public record BG_TS_DTVSVLIB_VIEW_FATAL_ERROR() {}
