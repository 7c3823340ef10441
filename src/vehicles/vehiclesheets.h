// The three prints of the vehicle form, each a sheet per vehicle on the page form GKTorzsNyomFormX:
// the current vehicle, every vehicle from the current one on, and the vehicles whose technical
// inspection is due. Each works on the vehicle form's Data control, so walking the vehicles moves
// the form's bound controls too.
#pragma once

#include <string>

#include "vb/variant.h"

namespace forms {
class DataControl;
class DBGrid;
}  // namespace forms

namespace vehicles::sheets {

inline constexpr const char* PageFormName = "GKTorzsNyomFormX";
inline constexpr const char* PageCaption = "Gépjármű adatlap";
inline constexpr const char* PageTitle = "GÉPJÁRMŰ ADATLAP";
inline constexpr int Lines = 16;
inline constexpr const char* InspectionSource = "select * from jarmuvek where MuszakiVizsgaDatum <= #";
inline constexpr const char* NormalSource = "select * from Jarmuvek order by recordID";

// The page form, registered with the forms runtime.
void registerPageForm();

// "Aktuális lap nyomtatása": the sheet of the current vehicle; the cursor stays.
void currentVehicle(forms::DataControl* data);
// "Aktuális laptól minden adat  nyomtatása": a sheet for each vehicle from the current one to the
// end; "Mégse" stops; then the last vehicle.
void fromCurrentOn(forms::DataControl* data);
// "Műszaki viszga szükségesség nyomtatása": the vehicles whose inspection date is on or before
// today minus WarnInspectionDays; the normal source comes back, and the grid is refreshed.
void inspectionDue(forms::DataControl* data, forms::DBGrid* grid);

// The statement of the inspection print for a limit date: "... <= #11/3/2026#".
std::string inspectionSource(vb::Date limit);

}  // namespace vehicles::sheets
