package tenrik.service.dtvserver.events.notify;

/**
 * An icon of data broadcasting is to be shown or hidden.
 *
 * @param handle the session it belongs to
 * @param icon_type which icon
 * @param disp_permit whether it is shown
 */
public record BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(int handle, int icon_type, int disp_permit) {}
