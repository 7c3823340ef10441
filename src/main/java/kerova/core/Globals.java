package kerova.core;

/**
 * The public variables of the spec, process-wide, under the spec's names. All start empty or 0
 * (Part 1.2). Slots whose type the spec leaves open (VB Variants) are Objects, null being Empty.
 */
public final class Globals {
    private Globals() {
    }

    // ---- Part 1.3: shared by all forms ----
    /** The calling context, set just before a form is opened. */
    public static String CurrentFormName = "";
    /** The form whose help page HelpFormX opens (Part 8.2). */
    public static String HelpTopicName = "";
    /** 1 when a picking form returned a row, else 0. */
    public static short PickDone;
    /** The vehicle the vehicle form hands to the service module (Parts 2.1, 6.1). */
    public static Object CurrentVehicleID;

    // ---- Part 1.2: filled by KerovaX ----
    public static String ProductName = "";
    public static String OperatorName = "";
    public static short AccessLevel;
    public static short ArticlePickMode;
    /** Captions of KerovaX's Label3 and Label4, kept at Form_Load. */
    public static String Label3Caption = "";
    public static String Label4Caption = "";

    public static short WarnInspectionDays;
    public static short WarnGreenCardDays;
    public static short WarnTachoCalibrationDays;
    public static short WarnTachoPermitDays;
    public static short WarnInsuranceCardDays;
    public static int WarnInspectionKm;
    public static int WarnOilChangeKm;
    public static int WarnServiceLogKm;
    public static int WarnDrivetrainOilKm;
    public static int WarnTimingBeltKm;

    public static double FixedAllowance;
    public static String FixedAllowanceCurrency = "";
    public static String InterfacePathValue = "";
    public static String PolcrakPathValue = "";
    public static String FogastorPathValue = "";
    public static String BizonylaPathValue = "";
    public static String FixedUnit = "";

    // ---- hand-over slots (Overview) ----
    public static double FuelPriceTransfer;
    public static Object CountryPicked;
    public static String CountryMarkTransfer = "";
    public static String CountryNameTransfer = "";
    public static String PickedMechanicName = "";
    public static String PickedMechanicCode = "";
    public static String PickedJobName = "";
    public static Object ArticlePicked;
    public static String PickedCode = "";
    public static String PickedName = "";
    public static String PickedUnit = "";
    public static String PickedCurrency = "";
    public static Object PickedNetPrice;
    public static Object PickedVatRate;
    public static Object PickedDistance;
    public static Object PickedDriverPay;
    public static Object PickedSpecialTrip;
    public static Object PickedCustomerID;

    // ---- Part 2.1: the vehicle picked in GKTorzsFormX ----
    /** The plate (`Text1`). */
    public static String PickedVehiclePlate = "";
    /** The vehicle's key (`Label24`). */
    public static Object PickedVehicleID;
    /** The owner's name (`Text13`). */
    public static String PickedPartnerName = "";
    /** The owner's key (`Label23`). */
    public static Object PickedPartnerID;
    /** The subcontractor mark (`Check2`'s value, 0 or 1). */
    public static Object PickedSubcontractor;

    // ---- Part 4.5: the customer picked in CimzettForm (AtadaS) ----
    // The name (`Text2`) goes to PickedName and the key (`Text1`, as a 32-bit integer) to
    // PickedCustomerID; the Part hands over `Text3` to `Text11` and `Label14` besides, into these.
    public static String PickedCustomerPostCode = "";
    public static String PickedCustomerTown = "";
    public static String PickedCustomerStreet = "";
    public static String PickedCustomerPhone = "";
    public static String PickedCustomerFax = "";
    public static String PickedCustomerMobile = "";
    public static String PickedCustomerTaxNumber = "";
    public static String PickedCustomerBankAccount = "";
    public static String PickedCustomerContact = "";
    public static String PickedCustomerCountry = "";
    /** The caller's subcontractor request (1: CimzettForm shows active subcontractors only). */
    public static short CustomerSubcontractorRequest;

    /** Back to the state at process start (tests). */
    public static void reset() {
        CurrentFormName = "";
        HelpTopicName = "";
        PickDone = 0;
        CurrentVehicleID = null;
        ProductName = "";
        OperatorName = "";
        AccessLevel = 0;
        ArticlePickMode = 0;
        Label3Caption = "";
        Label4Caption = "";
        WarnInspectionDays = 0;
        WarnGreenCardDays = 0;
        WarnTachoCalibrationDays = 0;
        WarnTachoPermitDays = 0;
        WarnInsuranceCardDays = 0;
        WarnInspectionKm = 0;
        WarnOilChangeKm = 0;
        WarnServiceLogKm = 0;
        WarnDrivetrainOilKm = 0;
        WarnTimingBeltKm = 0;
        FixedAllowance = 0;
        FixedAllowanceCurrency = "";
        InterfacePathValue = "";
        PolcrakPathValue = "";
        FogastorPathValue = "";
        BizonylaPathValue = "";
        FixedUnit = "";
        FuelPriceTransfer = 0;
        CountryPicked = null;
        CountryMarkTransfer = "";
        CountryNameTransfer = "";
        PickedMechanicName = "";
        PickedMechanicCode = "";
        PickedJobName = "";
        ArticlePicked = null;
        PickedCode = "";
        PickedName = "";
        PickedUnit = "";
        PickedCurrency = "";
        PickedNetPrice = null;
        PickedVatRate = null;
        PickedDistance = null;
        PickedDriverPay = null;
        PickedSpecialTrip = null;
        PickedCustomerID = null;
        PickedVehiclePlate = "";
        PickedVehicleID = null;
        PickedPartnerName = "";
        PickedPartnerID = null;
        PickedSubcontractor = null;
        PickedCustomerPostCode = "";
        PickedCustomerTown = "";
        PickedCustomerStreet = "";
        PickedCustomerPhone = "";
        PickedCustomerFax = "";
        PickedCustomerMobile = "";
        PickedCustomerTaxNumber = "";
        PickedCustomerBankAccount = "";
        PickedCustomerContact = "";
        PickedCustomerCountry = "";
        CustomerSubcontractorRequest = 0;
    }
}
