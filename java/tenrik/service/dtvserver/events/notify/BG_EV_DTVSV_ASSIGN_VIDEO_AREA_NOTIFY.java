package tenrik.service.dtvserver.events.notify;

/**
 * A drawing destination was given its video area.
 *
 * @param handle the session it belongs to
 * @param drawing_destination which plane
 * @param result the service's result code
 */
public record BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY(
        int handle, int drawing_destination, int result) {}
