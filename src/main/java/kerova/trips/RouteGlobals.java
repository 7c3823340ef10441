package kerova.trips;

/**
 * The hand-over of the route master (Part 3.3, "Adat átadása"): program-wide globals that the spec
 * describes without names. They live beside the form that fills them; {@link #reset} puts them back
 * to their state at process start (tests).
 */
public final class RouteGlobals {
    private RouteGlobals() {
    }

    /** The selected-flag: 1 when a row was passed (16-bit, never cleared by the form). */
    public static short RoutePicked;
    /** The country code of the start ({@code Text4}, {@code HonnanOrszág}). */
    public static String PickedFromCountry = "";
    /** The country code of the end ({@code Text5}, {@code HovaOrszág}). */
    public static String PickedToCountry = "";
    /** The place of start ({@code Text1}, {@code Honnan}). */
    public static String PickedFrom = "";
    /** The place of end ({@code Text2}, {@code Hova}). */
    public static String PickedTo = "";
    /** The distance in km ({@code Text3}, {@code TávolságKm}). */
    public static double PickedRouteDistance;

    public static void reset() {
        RoutePicked = 0;
        PickedFromCountry = "";
        PickedToCountry = "";
        PickedFrom = "";
        PickedTo = "";
        PickedRouteDistance = 0;
    }
}
