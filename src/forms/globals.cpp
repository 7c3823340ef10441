#include "forms/globals.h"

namespace Globals {

void reset() {
    CurrentFormName.clear();
    HelpTopicName.clear();
    PickDone = 0;
    PrintCancelled = 0;
    CurrentVehicleID = vb::Empty{};
    ProductName.clear();
    OperatorName.clear();
    AccessLevel = 0;
    ArticlePickMode = 0;
    Label3Caption.clear();
    Label4Caption.clear();
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
    FixedAllowanceCurrency.clear();
    InterfacePathValue.clear();
    PolcrakPathValue.clear();
    FogastorPathValue.clear();
    BizonylaPathValue.clear();
    FixedUnit.clear();
    FuelPriceTransfer = 0;
    CountryPicked = vb::Empty{};
    CountryMarkTransfer.clear();
    CountryNameTransfer.clear();
    PickedMechanicName.clear();
    PickedMechanicCode.clear();
    PickedJobName.clear();
    ArticlePicked = vb::Empty{};
    PickedCode.clear();
    PickedName.clear();
    PickedUnit.clear();
    PickedCurrency.clear();
    PickedNetPrice = vb::Empty{};
    PickedVatRate = vb::Empty{};
    PickedDistance = vb::Empty{};
    PickedDriverPay = vb::Empty{};
    PickedSpecialTrip = vb::Empty{};
    PickedCustomerID = vb::Empty{};
    PickedVehiclePlate.clear();
    PickedVehicleID = vb::Empty{};
    PickedPartnerName.clear();
    PickedPartnerID = vb::Empty{};
    PickedSubcontractor = vb::Empty{};
    PickedCustomerPostCode.clear();
    PickedCustomerTown.clear();
    PickedCustomerStreet.clear();
    PickedCustomerPhone.clear();
    PickedCustomerFax.clear();
    PickedCustomerMobile.clear();
    PickedCustomerTaxNumber.clear();
    PickedCustomerBankAccount.clear();
    PickedCustomerContact.clear();
    PickedCustomerCountry.clear();
    CustomerSubcontractorRequest = 0;
    RoutePicked = 0;
    PickedFromCountry.clear();
    PickedToCountry.clear();
    PickedFrom.clear();
    PickedTo.clear();
    PickedRouteDistance = 0;
    PickedDriverName.clear();
    PickedDriverID = vb::Empty{};
    PickedDriverVehicle.clear();
    PickedDriverEmployer.clear();
    CurrentGroupID.clear();
}

}  // namespace Globals
