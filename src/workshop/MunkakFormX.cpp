#include "workshop/MunkakFormX.h"

#include <QLabel>

#include "forms/globals.h"

namespace workshop {

namespace {
Master jobs() {
    Master m;
    m.name = "MunkakFormX";
    m.title = "Munkák törzs - Kerova";
    m.table = "SzervizModulMunkak";
    m.nameField = "MunkaMegnevezés";
    m.codeField = "MunkaKód";
    m.nameCaption = "Munka megnevezése:";
    m.codeCaption = "Munkakód:";
    m.columns = {{"MunkaMegnevezés", "MunkaMegnevezés", 420}, {"MunkaKód", "MunkaKód", 120}};
    m.searchKey = "MunkaMegnevezés";
    // no opening text is given for this form, and its delete logs "as its own form": its name
    m.logOpen = "MunkakFormX";
    m.logNew = "Munkatörzs új adat";
    m.logPick = "Munka kiválasztás";
    m.logDelete = "MunkakFormX";
    m.printTitle = "MUNKÁK TÖRZS ";
    m.printForm = "MunkakNyomFormX";
    m.printColumns = {{"Munka megnevezése", "MunkaMegnevezés", 4}, {"Munkakód", "MunkaKód", 1}};
    return m;
}
}  // namespace

MunkakFormX::MunkakFormX() : WorkshopMasterForm(jobs()) { Label4 = static_cast<QLabel*>(secondField); }

void MunkakFormX::handOver() { Globals::PickedJobName = current("MunkaMegnevezés"); }

}  // namespace workshop
