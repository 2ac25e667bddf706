package tenrik.service.dtvserver.type;

/**
 * The picture to save.
 *
 * @param src_resource the picture in the document
 * @param filename name of the file
 * @param image_data_size size of the picture in bytes
 * @param overwrite whether a file may be overwritten
 * @param src_resource_size length of src_resource in bytes
 * @param filename_size length of filename in bytes
 */
public record BG_TS_DTVSVLIB_SAVE_PICTURE_REQ(
        String src_resource, String filename, int image_data_size, int overwrite,
        long src_resource_size, long filename_size) {}
