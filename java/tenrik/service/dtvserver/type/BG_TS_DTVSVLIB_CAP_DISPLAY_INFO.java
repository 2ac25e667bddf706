package tenrik.service.dtvserver.type;

/**
 * How the captions are laid out.
 *
 * @param font_size size of a character, 0 to 255
 * @param characters_num characters in a line, 0 to 255
 * @param lines_num lines, 0 to 255
 * @param separator_size space between lines, 0 to 255
 * @param position_x left edge in pixels, not negative
 * @param position_y upper edge in pixels, not negative
 * @param background_color background colour of the text
 * @param background_alpha whether the background shows through
 */
public record BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(
        int font_size, int characters_num, int lines_num, int separator_size, int position_x,
        int position_y, BG_TE_DTVSVLIB_BACKGROUND_COLOR background_color,
        BG_TE_DTVSVLIB_ONOFF background_alpha) {
    /**
     * The same with the enumerated values as the numbers they are sent as. A number that no
     * constant has leaves that value null, which a command refuses as an argument it cannot read.
     *
     * @param font_size size of a character, 0 to 255
     * @param characters_num characters in a line, 0 to 255
     * @param lines_num lines, 0 to 255
     * @param separator_size space between lines, 0 to 255
     * @param position_x left edge in pixels, not negative
     * @param position_y upper edge in pixels, not negative
     * @param background_color background colour of the text; a number of {@link
     *     BG_TE_DTVSVLIB_BACKGROUND_COLOR}
     * @param background_alpha whether the background shows through; a number of {@link
     *     BG_TE_DTVSVLIB_ONOFF}
     */
    public BG_TS_DTVSVLIB_CAP_DISPLAY_INFO(
            int font_size, int characters_num, int lines_num, int separator_size, int position_x,
            int position_y, int background_color, int background_alpha) {
        this(
                font_size, characters_num, lines_num, separator_size, position_x, position_y,
                BG_TE_DTVSVLIB_BACKGROUND_COLOR.of(background_color),
                BG_TE_DTVSVLIB_ONOFF.of(background_alpha));
    }
}
