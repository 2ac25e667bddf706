package tenrik.service.dtvserver.type;

/**
 * The page that a browser is asked for.
 *
 * @param app_id which application
 * @param permit_av whether picture and sound continue
 * @param browser_info which browser
 * @param full_screen whether it fills the screen
 * @param return_uri where to return to
 * @param combrowser_uri the page
 */
public record BG_TS_DTVSVLIB_BROWSER_REQ(
        int app_id, int permit_av, int browser_info, int full_screen, String return_uri,
        String combrowser_uri) {}
