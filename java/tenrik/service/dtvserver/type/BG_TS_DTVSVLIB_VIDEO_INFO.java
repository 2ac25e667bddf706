package tenrik.service.dtvserver.type;

/**
 * The size of the picture.
 *
 * @param size_h width in pixels
 * @param size_v height in pixels
 */
public record BG_TS_DTVSVLIB_VIDEO_INFO(int size_h, int size_v) {}
