#include "vehicles/vehiclesheets.h"

#include <array>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "print/pagedlist.h"
#include "print/pageform.h"
#include "vb/clock.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace vehicles::sheets {

using vb::Err;

namespace {

using Reader = std::string (*)(const vb::Variant&);

struct Line {
    const char* text;
    const char* column;
    Reader read;
};

// The lines of a sheet: the text, then the column's value through NullToStr, NullToDate (a null
// date prints as today) or NullToNum.
const std::array<Line, Lines> SheetLines = {{
    {"Forgalmi rendszám: ", "GkFrsz", print::str},
    {"Típus: ", "GkTipus", print::str},
    {"Forgalomba helyezve: ", "GkForgalombahelyezve", print::date},
    {"Kilométeróra állása: ", "KilometerOraAllasa", print::num},
    {"Hengerűrtartalom: ", "Hengerurtartalom", print::num},
    {"Fogyasztás (liter/100 km): ", "FogyasztásLiter100", print::num},
    {"Járművezető neve: ", "GkVezetoNeve", print::str},
    {"Utolsó szerviz dátuma: ", "UtolsoSzervizDatum", print::date},
    {"Jelenlegi kilométeróra állás: ", "JelenlegiKmAllas", print::num},
    {"Szervizintervallum (nap): ", "SzervizIntervallumNap", print::num},
    {"Szervizintervallum (km): ", "SzervizIntervallumKm", print::num},
    {"Műszaki vizsga lejárat dátuma: ", "MuszakiVizsgaDatum", print::date},
    {"Zöld kártya lejárat (környezetvédelmi) dátuma: ", "ZoldkartyaDatum", print::date},
    {"CASCO havi díja: ", "CascoHaviDija", print::num},
    {"Kötelező biztosítás havi díja: ", "KotelezoHaviDija", print::num},
    {"Önköltség/kilométer: ", "OnkoltsegKm", print::num},
}};
// The inspection print spells the green card's line so.
constexpr const char* GreenCardMisspelled = "Zöld kártya lajárat (környezetvédelmi) dátuma: ";

// Each line on its own with errors resumed: a column that can't be read leaves its line empty.
void fill(print::SheetPageForm& form, db::Recordset& r, bool misspelled) {
    for (int i = 1; i <= Lines; ++i) {
        const Line& l = SheetLines[size_t(i - 1)];
        const char* text = misspelled && i == 13 ? GreenCardMisspelled : l.text;
        vb::resume([&] { form.setLine(i, text, l.read(r.get(l.column))); });
    }
    Err.Clear();
}

db::Recordset* recordset(forms::DataControl* data) {
    db::Recordset* r = data ? data->Recordset() : nullptr;
    return r && !r->closed() ? r : nullptr;
}

print::PagedList allFrom(forms::DataControl* data, bool misspelled) {
    return print::PagedList::sheets(PageFormName, recordset(data), [misspelled](print::SheetPageForm& f,
                                                                              db::Recordset& r) {
        fill(f, r, misspelled);
    });
}

}  // namespace

void registerPageForm() { print::registerSheetForm(PageFormName, PageCaption, PageTitle, Lines); }

void currentVehicle(forms::DataControl* data) { allFrom(data, false).currentOnly().beepWhenEmpty().run(); }

void fromCurrentOn(forms::DataControl* data) {
    allFrom(data, false).fromCurrent().beepWhenEmpty().endAt(print::PagedList::End::Last).run();
}

std::string inspectionSource(vb::Date limit) {
    auto p = vb::dateParts(limit);
    return std::string(InspectionSource) + std::to_string(p.month) + "/" + std::to_string(p.day) + "/" +
           std::to_string(p.year) + "#";
}

void inspectionDue(forms::DataControl* data, forms::DBGrid* grid) {
    if (!data) return;
    // the normal source comes back whatever happens in between
    struct Restore {
        forms::DataControl* data;
        forms::DBGrid* grid;
        ~Restore() {
            data->setRecordSource(NormalSource);
            vb::resume([&] { data->Refresh(); });
            Err.Clear();
            if (grid) grid->Refresh();
            forms::arrow();
        }
    } restore{data, grid};
    vb::Date limit{vb::clock::today().serial - Globals::WarnInspectionDays};
    data->setRecordSource(inspectionSource(limit));
    vb::resume([&] { data->Refresh(); });
    Err.Clear();
    allFrom(data, true).run();
}

}  // namespace vehicles::sheets
