package kerova.trips;

/**
 * The hand-over of the driver master (Part 3.4, "Adatátadás"): program-wide globals that the spec
 * describes without names ("driver's name, the number from {@code Label7}, the text from
 * {@code Label18}, and the employer's text"). They live beside the form that fills them; the trip
 * form and the kilometre log (Parts 3.1, 3.6) read them after {@code PickDone} is 1. {@link #reset}
 * puts them back to their state at process start (tests).
 */
public final class DriverGlobals {
    private DriverGlobals() {
    }

    /** The driver's name ({@code Text1}, {@code VezetöNeve}). */
    public static String PickedDriverName = "";
    /** The driver's key for the assigned list ({@code Label7}, {@code PartnerID}); null when empty. */
    public static Object PickedDriverID;
    /** The registration of the assigned vehicle on screen ({@code Label18}, {@code Rendszám}). */
    public static String PickedDriverVehicle = "";
    /** The employer's name ({@code Text8}, {@code Munkáltató}). */
    public static String PickedDriverEmployer = "";

    public static void reset() {
        PickedDriverName = "";
        PickedDriverID = null;
        PickedDriverVehicle = "";
        PickedDriverEmployer = "";
    }
}
