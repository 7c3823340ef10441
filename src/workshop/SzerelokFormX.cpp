#include "workshop/SzerelokFormX.h"

#include <QLineEdit>

#include "forms/globals.h"

namespace workshop {

namespace {
Master mechanics() {
    Master m;
    m.name = "SzerelokFormX";
    m.title = "Szerelők adatai - Kerova";
    m.table = "SzervizModulSzerelok";
    m.nameField = "SzerelöNeve";
    m.codeField = "SzerelöKódja";
    m.codeInTextBox = true;
    m.nameCaption = "Szerelő neve:";
    m.codeCaption = "Szerelő kódja:";
    m.columns = {{"Szerelő neve", "SzerelöNeve", 320}, {"Szerelő kódja", "SzerelöKódja", 140}};
    // a name that starts with the typed text, else the exact code
    m.searchKey = "SzerelöNeve";
    m.exactSearchKey = "SzerelöKódja";
    m.logOpen = "Járművekbe belépés";  // a text left over from the vehicle form, kept
    m.logNew = "Szerelők új adat";
    m.logPick = "Szerelő kiválasztás";
    m.logDelete = "Szerelőt töröl";
    m.printTitle = "SZERELŐK ";
    m.printForm = "SzerelokNyomFormX";
    m.printColumns = {{"Szerelő neve", "SzerelöNeve", 3}, {"Szerelő kódja", "SzerelöKódja", 2}};
    return m;
}
}  // namespace

SzerelokFormX::SzerelokFormX() : WorkshopMasterForm(mechanics()) { Text3 = static_cast<QLineEdit*>(secondField); }

void SzerelokFormX::handOver() {
    Globals::PickedMechanicName = current("SzerelöNeve");
    Globals::PickedMechanicCode = current("SzerelöKódja");
}

}  // namespace workshop
