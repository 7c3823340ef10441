package kerova.trips;

/**
 * The program-wide globals of the trip register that the spec describes without names. The trip
 * form (Part 3.1) keeps the id of the group on screen here ({@code Label12} after a double click on
 * its grid); the passenger and document forms (Part 3.5) read it to know which group's rows to show.
 * {@link #reset} puts them back to their state at process start (tests).
 */
public final class TripGlobals {
    private TripGlobals() {
    }

    /** The group id ({@code CsoportAzonositó}) of the group on the trip form; "" when none is set. */
    public static String CurrentGroupID = "";

    public static void reset() {
        CurrentGroupID = "";
    }
}
