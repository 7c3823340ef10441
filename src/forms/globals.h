// The program's public variables, process-wide, under their own names. Everything starts empty or
// 0; Variant slots start Empty.
#pragma once

#include <cstdint>
#include <string>

#include "vb/variant.h"

namespace Globals {

// Shared by all forms
inline std::string CurrentFormName;  // the calling context, set just before a form is opened
inline std::string HelpTopicName;    // the form whose help page HelpFormX opens
inline int16_t PickDone = 0;         // 1 when a picking form returned a row
inline int16_t PrintCancelled = 0;   // 1 when "Mégse" stopped a printed list (page forms)
inline vb::Variant CurrentVehicleID; // the vehicle handed from the vehicle form to the service module

// Filled by the main form at start-up
inline std::string ProductName;
inline std::string OperatorName;
inline int16_t AccessLevel = 0;
inline int16_t ArticlePickMode = 0;
inline std::string Label3Caption;
inline std::string Label4Caption;

inline int16_t WarnInspectionDays = 0;
inline int16_t WarnGreenCardDays = 0;
inline int16_t WarnTachoCalibrationDays = 0;
inline int16_t WarnTachoPermitDays = 0;
inline int16_t WarnInsuranceCardDays = 0;
inline int32_t WarnInspectionKm = 0;
inline int32_t WarnOilChangeKm = 0;
inline int32_t WarnServiceLogKm = 0;
inline int32_t WarnDrivetrainOilKm = 0;
inline int32_t WarnTimingBeltKm = 0;

inline double FixedAllowance = 0;
inline std::string FixedAllowanceCurrency;
inline std::string InterfacePathValue;
inline std::string PolcrakPathValue;
inline std::string FogastorPathValue;
inline std::string BizonylaPathValue;
inline std::string FixedUnit;

// Hand-over slots between forms
inline double FuelPriceTransfer = 0;
inline vb::Variant CountryPicked;
inline std::string CountryMarkTransfer;
inline std::string CountryNameTransfer;
inline std::string PickedMechanicName;
inline std::string PickedMechanicCode;
inline std::string PickedJobName;
inline vb::Variant ArticlePicked;
inline std::string PickedCode;
inline std::string PickedName;
inline std::string PickedUnit;
inline std::string PickedCurrency;
inline vb::Variant PickedNetPrice;
inline vb::Variant PickedVatRate;
inline vb::Variant PickedDistance;
inline vb::Variant PickedDriverPay;
inline vb::Variant PickedSpecialTrip;
inline vb::Variant PickedCustomerID;

// The vehicle picked in GKTorzsFormX
inline std::string PickedVehiclePlate;   // Text1
inline vb::Variant PickedVehicleID;      // Label24
inline std::string PickedPartnerName;    // Text13
inline vb::Variant PickedPartnerID;      // Label23
inline vb::Variant PickedSubcontractor;  // Check2's value, 0 or 1

// The customer picked in CimzettForm
inline std::string PickedCustomerPostCode;
inline std::string PickedCustomerTown;
inline std::string PickedCustomerStreet;
inline std::string PickedCustomerPhone;
inline std::string PickedCustomerFax;
inline std::string PickedCustomerMobile;
inline std::string PickedCustomerTaxNumber;
inline std::string PickedCustomerBankAccount;
inline std::string PickedCustomerContact;
inline std::string PickedCustomerCountry;
inline int16_t CustomerSubcontractorRequest = 0;  // 1: CimzettForm shows active subcontractors only

// The route passed by GkUtakTavolsagaTorzsFormX ("Adat átadása")
inline int16_t RoutePicked = 0;         // 1 when a row was passed; the form never clears it
inline std::string PickedFromCountry;   // Text4
inline std::string PickedToCountry;     // Text5
inline std::string PickedFrom;          // Text1
inline std::string PickedTo;            // Text2
inline double PickedRouteDistance = 0;  // Text3

// The driver passed by VezetokTorzsFormX ("Adatátadás")
inline std::string PickedDriverName;      // Text1
inline vb::Variant PickedDriverID;        // Label7's number, Empty when the label is empty
inline std::string PickedDriverVehicle;   // Label18
inline std::string PickedDriverEmployer;  // Text8

// The group id of the trip group on the trip form; the passenger and document forms read it
inline std::string CurrentGroupID;

// Back to the state at process start (tests, a new start of the program).
void reset();

}  // namespace Globals
