// The printed lists of the partner module, 22 lines a page: partners on BeszallitoNyomFormX (the
// first page headed "BESZÁLLÍTÓK-PARTNEREK", every later one "BESZÁLLÍTÓK-BERAKTÁROZÓK") and
// customers on CimzettNyomFormX ("CÍMZETTEK-VÁSÁRLÓK").
#pragma once

namespace forms {
class DataControl;
}

namespace partners {

inline constexpr int ListLines = 22;

// Registers the two page forms with the forms runtime.
void registerPrintForms();
// The partner list over the rows of Beraktarozok in its order; at the end the last row.
void printPartners(forms::DataControl* Beraktarozok);
// The customer list over the rows of CimzettData in its order; at the end the last row.
void printCustomers(forms::DataControl* CimzettData);

}  // namespace partners
